#ifndef VTRUTILS_GALLERY_TEXT_LANGUAGE_H
#define VTRUTILS_GALLERY_TEXT_LANGUAGE_H

#include <initializer_list>
#include <string>
#include <vector>

/// The gallery's texts in the language that the user chose. One thread at a time.

namespace gallery {

/// Tells the library where the language table is: in the folder "languages" beside the program.
/// Chooses its default language.
void OpenLanguages();

/// The names in the table's order.
std::vector<std::string> Languages();

/// Every text is in this language from now on. False when the table does not name it.
bool ChooseLanguage(const std::string& name);
const std::string& ChosenLanguage();

/// What the language calls itself, in its own letters.
std::wstring OwnName(const std::string& language);

/// The code page of its texts; that of the system for the table's 0.
unsigned CodePageOf(const std::string& language);

/// The library takes narrow paths for those of this language until the end of the scope. One thread
/// at a time.
class LanguageScope {
public:
    explicit LanguageScope(const std::string& language);
    LanguageScope(const LanguageScope&) = delete;
    LanguageScope& operator=(const LanguageScope&) = delete;
    ~LanguageScope();
};

/// What fonts must be made for to show the language.
unsigned char Charset();

/// The text for a key, or the key itself when neither the language nor the default one has it.
std::wstring Text(const char* key);

/// The same with the values in the places of "%1", "%2" and so on.
std::wstring Text(const char* key, std::initializer_list<std::wstring> values);

/// What the library gives for a key, and where it comes from.
struct FoundText {
    enum class Source { language, backup, key };
    std::wstring text;
    Source source;
    std::wstring kept; ///< what a look-up that names no file gives, now and until the program ends
};
FoundText LookUp(const std::string& key);

} // namespace gallery

#endif
