#ifndef VTRUTILS_GALLERY_APP_SETTINGS_H
#define VTRUTILS_GALLERY_APP_SETTINGS_H

#include <string>
#include <vector>

namespace gallery {

/// What is remembered from one run to the next, each as a text or as numbers with a name, in a key
/// of the registry. One thread at a time.
class Settings {
public:
    /// A key below HKEY_CURRENT_USER, which need not exist.
    explicit Settings(std::string newKey) : key(std::move(newKey)) {}

    /// "" for what is not remembered.
    std::string Text(const char* name) const;
    void SetText(const char* name, const std::string& text);

    /// Empty for what is not remembered or is not a row of numbers.
    std::vector<int> Numbers(const std::string& name) const;
    void SetNumbers(const std::string& name, const std::vector<int>& numbers);

    const std::string& Key() const { return key; }

private:
    std::string key;
};

} // namespace gallery

#endif
