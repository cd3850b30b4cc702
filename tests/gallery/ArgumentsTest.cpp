#include "gallery/Arguments.h"

#include <gtest/gtest.h>

namespace {

TEST(Arguments, AreReadInAnyOrderAndInAnyLetters) {
    constexpr struct {
        const char* name;
        const wchar_t* line;
        const wchar_t* document;
        const wchar_t* language;
        bool help;
        const char* mistakeKey;
        const wchar_t* mistake;
    } rows[] = {
        {"nothing", L"gallery", L"", L"", false, nullptr, L""},
        {"option behind", L"gallery a.ini --language German", L"a.ini", L"German", false, nullptr,
         L""},
        {"option before", L"gallery --language 日本語 \"C:\\Моя дорога.ini\"",
         L"C:\\Моя дорога.ini", L"日本語", false, nullptr, L""},
        {"help among others", L"gallery a.ini --help", L"a.ini", L"", true, nullptr, L""},
        {"no option", L"gallery -- --help", L"--help", L"", false, nullptr, L""},
        {"two files", L"gallery a b", L"a", L"", false, "SecondDocument", L"b"},
        {"unknown", L"gallery --fast", L"", L"", false, "UnknownOption", L"--fast"},
        {"no value", L"gallery --language", L"", L"", false, "MissingValue", L"--language"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const gallery::Arguments arguments = gallery::ReadArguments(row.line);
        EXPECT_EQ(row.document, arguments.document);
        EXPECT_EQ(row.language, arguments.language);
        EXPECT_EQ(row.help, arguments.help);
        EXPECT_STREQ(row.mistakeKey, arguments.mistakeKey);
        EXPECT_EQ(row.mistake, arguments.mistake);
    }
}

} // namespace
