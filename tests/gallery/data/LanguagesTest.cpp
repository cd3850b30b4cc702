#include "gallery/text/Text.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <vector>
#include <windows.h>

namespace {

struct StringFile {
    std::map<std::string, std::wstring> texts;
    std::map<std::string, std::vector<std::string>> sections; ///< comment to keys
};

constexpr char windowSection[] = "; The window";

StringFile Load(const std::string& language, unsigned codePage) {
    StringFile file;
    std::istringstream lines(
        ReadBytes(gallery::ProgramFolder() + "languages\\" + language + "\\gallery.ini"));
    std::string section;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("; The ", 0) == 0)
            section = line.substr(0, line.find('\r'));
        const std::size_t end = line.find(" = ");
        if (line[0] == ';' || end == std::string::npos)
            continue;
        const std::string key = line.substr(0, end);
        wchar_t text[1024] = L"";
        EXPECT_GT(MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, line.c_str() + end + 3, -1,
                                      text, 1024),
                  1)
            << key;
        EXPECT_TRUE(file.texts.emplace(key, text).second) << key << " stands there twice";
        file.sections[section].push_back(key);
    }
    return file;
}

/// The characters after each of these marks, in small letters.
std::multiset<wchar_t> Behind(wchar_t mark, const std::wstring& anyCase) {
    std::multiset<wchar_t> found;
    const std::wstring text = gallery::LowerCase(anyCase);
    for (std::size_t i = text.find(mark); i < text.size() - 1; i = text.find(mark, i + 1))
        found.insert(text[i + 1]);
    return found;
}

/// What the window and a page show at the same time.
std::vector<std::string> Shown(const StringFile& file, const std::string& section) {
    std::vector<std::string> keys = file.sections.at(section);
    keys.push_back("PagesLabel");
    if (section == "; The page \"INI document\"" || section == "; The page \"Table\"")
        keys.insert(keys.end(), {"Open", "Save", "SaveAs"});
    if (section == "; The page \"XML document\"")
        keys.insert(keys.end(), {"Open", "FindNext"});
    if (section == "; The page \"Online music\"")
        keys.insert(keys.end(),
                    {"OnlineHostLabel", "OnlineCancel", "OnlinePrevious", "OnlineNext"});
    if (section == "; The page \"Undo\"")
        keys.insert(keys.end(), {"Open", "Save"});
    return keys;
}

void ExpectOwnMnemonics(const StringFile& file) {
    for (const auto& section : file.sections) {
        if (section.first == windowSection)
            continue;
        std::map<wchar_t, std::string> taken;
        for (const std::string& key : Shown(file, section.first)) {
            for (const wchar_t letter : Behind(L'&', file.texts.at(key)))
                EXPECT_TRUE(taken.emplace(letter, key).second)
                    << section.first << ": " << key << " and " << taken[letter];
        }
    }
}

TEST(Languages, SayTheSameInEveryLanguage) {
    const StringFile english = Load("English", 1252);
    ASSERT_EQ(17u, english.sections.size()) << "the window and a section a page";
    ExpectOwnMnemonics(english);
    constexpr struct {
        const char* language;
        unsigned codePage;
    } rows[] = {{"German", 1252}, {"Russian", 1251}, {"Japanese", 932}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.language);
        const StringFile other = Load(row.language, row.codePage);
        for (const auto& [key, text] : english.texts) {
            if (key == "EnglishOnly")
                continue;
            const auto found = other.texts.find(key);
            if (found == other.texts.end()) {
                ADD_FAILURE() << "no " << key;
                continue;
            }
            EXPECT_EQ(Behind(L'%', text), Behind(L'%', found->second)) << key;
            EXPECT_EQ(Behind(L'&', text).size(), Behind(L'&', found->second).size()) << key;
        }
        EXPECT_EQ(english.texts.size() - 1, other.texts.size());
        ExpectOwnMnemonics(other);
    }
}

} // namespace
