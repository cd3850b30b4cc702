#include "gallery/text/Language.h"

#include "gallery/text/Text.h"
#include "utilities/text/language/LanguageStrings.h"

#include <algorithm>
#include <map>
#include <mbctype.h>
#include <windows.h>

namespace gallery {

namespace {

/// The columns of the table that name the gallery's string file and that of the library's own
/// texts.
constexpr StringFileFields galleryStrings = StringFileColumn2;
constexpr StringFileFields libraryStrings = StringFileColumn3;

std::string chosen;

/// The library keeps what it has read from the current string file as long as the process runs,
/// whatever the language. A host that lets the user switch therefore names the file in each
/// look-up, which is never kept, and keeps the texts of one language itself.
std::map<std::string, std::wstring, std::less<>> textsOfLanguage;

/// From the named file, or the file of that name in the default language's folder.
std::wstring Read(const char* key) {
    char text[1024] = "";
    MyLoadString(key, text, sizeof text, GetStringFile(), /*processEscapes=*/true);
    return Widen(text);
}

std::string StringFile(const std::string& language, bool useDefault,
                       StringFileFields column = galleryStrings) {
    char path[MAX_PATH] = "";
    std::string name = language;
    return GetStringFileFromLanguage(name.data(), column, path, useDefault) ? path : "";
}

/// The default language's name: the one whose file is the default file.
std::string DefaultLanguage() {
    const std::string file = StringFile("", /*useDefault=*/true);
    for (const std::string& name : Languages()) {
        if (StringFile(name, /*useDefault=*/false) == file)
            return name;
    }
    return {};
}

void Replace(std::wstring& text, const std::wstring& place, const std::wstring& value) {
    const std::size_t found = text.find(place);
    if (found != std::wstring::npos)
        text.replace(found, place.size(), value);
}

/// Texts of the library are taken apart with the character rules of the language's code page.
void TakeCodePage(std::string language) {
    SetLanguage(language.data());
    const unsigned codePage = GetCurrentCodePage();
    _setmbcp(codePage != 0 ? static_cast<int>(codePage) : _MB_CP_ANSI);
}

bool IsFound(const std::string& key) {
    // A look-up regards no case, and without a text gives its key back as it was asked for.
    std::string upper = key;
    std::string lower = key;
    CharUpperBuffA(upper.data(), static_cast<DWORD>(upper.size()));
    CharLowerBuffA(lower.data(), static_cast<DWORD>(lower.size()));
    return Read(key.c_str()) != Widen(key.c_str()) ||
           (upper != lower && Read(upper.c_str()) == Read(lower.c_str()));
}

} // namespace

void OpenLanguages() {
    std::string languages = ProgramFolder() + "languages\\";
    if (languages.size() >= MAX_PATH)
        return;
    SetMasterLanguageFileFolder(languages.data());
    SetLanguageFolderLocation(languages.data());
    SetBackupStringFile(StringFile("", /*useDefault=*/true).data());
    ChooseLanguage(DefaultLanguage());
}

std::vector<std::string> Languages() {
    std::vector<std::string> names;
    for (int i = 0; i < GetNumberOfLanguageStringFiles(); ++i) {
        char name[64] = "";
        if (GetLanguageName(i, name, sizeof name - 1))
            names.emplace_back(name);
    }
    return names;
}

bool ChooseLanguage(const std::string& name) {
    const std::vector<std::string> names = Languages();
    const auto named = std::find_if(names.begin(), names.end(), [&](const std::string& one) {
        return lstrcmpiA(one.c_str(), name.c_str()) == 0;
    });
    std::string file = StringFile(name, /*useDefault=*/false);
    if (named == names.end() || file.empty())
        return false;
    chosen = *named;
    SetStringFile(file.data());
    TakeCodePage(chosen);
    OverrideUtilitiesStringFile(StringFile(chosen, /*useDefault=*/false, libraryStrings).data());
    textsOfLanguage.clear();
    return true;
}

const std::string& ChosenLanguage() {
    return chosen;
}

std::wstring OwnName(const std::string& language) {
    char name[128] = "";
    const int length = MyLoadString("LanguageOwnName", name, sizeof name,
                                    StringFile(language, /*useDefault=*/false).data(),
                                    /*processEscapes=*/true);
    return length > 0 ? Widen(name, CodePageOf(language)) : Widen(language.c_str());
}

unsigned CodePageOf(const std::string& language) {
    std::string name = language;
    const unsigned codePage = GetCodePageFromLanguage(name.data());
    return codePage != 0 ? codePage : GetACP();
}

LanguageScope::LanguageScope(const std::string& language) {
    TakeCodePage(language);
}

LanguageScope::~LanguageScope() {
    TakeCodePage(chosen);
}

unsigned char Charset() {
    return GetCharsetFromLanguage(chosen.data());
}

std::wstring Text(const char* key) {
    const auto found = textsOfLanguage.find(key);
    if (found != textsOfLanguage.end())
        return found->second;
    return textsOfLanguage[key] = Read(key);
}

std::wstring Text(const char* key, std::initializer_list<std::wstring> values) {
    std::wstring text = Text(key);
    int number = static_cast<int>(values.size());
    // From the last one: a value may itself have "%1" in it.
    for (const std::wstring* value = values.end(); value != values.begin(); --number)
        Replace(text, L"%" + std::to_wstring(number), *--value);
    return text;
}

FoundText LookUp(const std::string& key) {
    using Source = FoundText::Source;
    FoundText found{Read(key.c_str()), Source::key, {}};
    char kept[1024] = "";
    MyLoadString(key.c_str(), kept, sizeof kept, /*file=*/nullptr, /*processEscapes=*/true);
    found.kept = Widen(kept);
    if (!IsFound(key))
        return found;
    // What is found without a backup stands in the language's own file.
    char none[] = "";
    SetBackupStringFile(none);
    found.source = IsFound(key) ? Source::language : Source::backup;
    SetBackupStringFile(StringFile("", /*useDefault=*/true).data());
    return found;
}

} // namespace gallery
