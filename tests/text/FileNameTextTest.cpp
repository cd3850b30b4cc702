#include "utilities/text/StringFunctions.h"

#include "tests/support/CodePage.h"

#include <gtest/gtest.h>
#include <windows.h>

TEST(FileNameText, ValidCharacters) {
    const std::string_view always = " $%'-_@~`!()^#&+,;=[].";
    ASSERT_EQ(always.size(), 22u);
    for (int c = 0; c < 256; ++c) {
        const char ch = static_cast<char>(c);
        const bool listed = c != 0 && always.find(ch) != std::string_view::npos;
        const bool letter = c != 0 && IsCharAlphaNumericA(ch);
        EXPECT_EQ(IsValidFileNameChar(ch, false), listed || letter) << c;
        EXPECT_EQ(IsValidFileNameChar(ch, true), listed || letter || c == '\\' || c == ':') << c;
    }
}

TEST(FileNameText, ForbiddenCharactersBecomeUnderscores) {
    char text[] = "a:b?c <>\"/\\|*.txt";
    MakeValidFileName(text);
    EXPECT_STREQ(text, "a_b_c _______.txt");
    MakeValidFileName(nullptr);

    const CodePage japanese(932);
    char katakana[] = "\x83\x5C\\\x83\x7C|";
    MakeValidFileName(katakana);
    EXPECT_STREQ(katakana, "\x83\x5C_\x83\x7C_");
}
