#include "utilities/text/language/LanguageStrings.h"

#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

TEST(Example, Language) {
    const TestFolder folder;
    std::string english = folder.Write("english.ini", "[Strings]\r\n"
                                                      "Hint = First line\\nSecond line\r\n");
    SetStringFile(english.data());

    char text[64];
    MyLoadString("hint", text, sizeof text, /*file=*/nullptr, /*processEscapes=*/true);
    EXPECT_STREQ(text, "First line\nSecond line");
    // A key without a text yields the key, so that users see something.
    MyLoadString("Missing", text, sizeof text, /*file=*/nullptr, /*processEscapes=*/true);
    EXPECT_STREQ(text, "Missing");
}
