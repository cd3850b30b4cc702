#include "utilities/text/strings/StringFunctions.h"

#include "tests/support/CodePage.h"

#include <gtest/gtest.h>
#include <windows.h>

TEST(FileNameText, ValidCharacters) {
    const std::string_view always = " $%'-_@~`!()^#&+,;=[].";
    for (int c = 0; c < 256; ++c) {
        const char ch = static_cast<char>(c);
        const bool valid = c != 0 && (always.find(ch) != always.npos || IsCharAlphaNumericA(ch));
        EXPECT_EQ(IsValidFileNameChar(ch, false), valid) << c;
        EXPECT_EQ(IsValidFileNameChar(ch, true), valid || c == '\\' || c == ':') << c;
    }
}

TEST(FileNameText, ForbiddenCharactersBecomeUnderscores) {
    const CodePage japanese(932);
    char text[] = "a:b?c <>\"/\\|*.txt\x83\x5C\\\x83\x7C|";
    MakeValidFileName(text);
    EXPECT_STREQ(text, "a_b_c _______.txt\x83\x5C_\x83\x7C_");
    MakeValidFileName(nullptr);
}
