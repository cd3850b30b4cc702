#ifndef VTRUTILS_TESTS_SUPPORT_TESTKEY_H
#define VTRUTILS_TESTS_SUPPORT_TESTKEY_H

#include <map>
#include <string>
#include <windows.h>

/// A fresh key in the registry, or one at a place of the test's choosing, removed with everything
/// in it.
class TestKey {
public:
    TestKey();
    /// The key must not exist yet; its missing parents stay.
    explicit TestKey(std::string subKey, HKEY root = HKEY_CURRENT_USER);
    TestKey(const TestKey&) = delete;
    TestKey& operator=(const TestKey&) = delete;
    ~TestKey();

    HKEY Root() const { return root; }
    const char* SubKey() const { return subKey.c_str(); }

    void Set(const char* name, const std::string& bytes, DWORD kind = REG_SZ) const;
    void SetText(const char* name, const std::string& text) const;

    /// Name to text of every value; one that is not a terminated string fails the test.
    std::map<std::string, std::string> Texts() const;

private:
    HKEY root;
    std::string subKey;
    HKEY key = nullptr;
};

#endif
