#include "utilities/text/strings/COMString.h"
#include "utilities/text/strings/StringFunctions.h"

#include <gtest/gtest.h>

TEST(Example, Strings) {
    char text[32] = "  a tune, a tune \r\n";
    RemoveSpacesA(text, /*alsoLineBreaks=*/true);
    SearchAndReplaceAll(text, "tune", "melody", sizeof text, /*caseSensitive=*/true);
    EXPECT_STREQ(text, "a melody, a melody");

    CCOMString title = "Harbour";
    title += " at dawn";
    EXPECT_EQ(title.Find("at", 0), 8);
    EXPECT_TRUE(title.Left(7) == "Harbour");
    EXPECT_EQ(title.CompareNoCase("HARBOUR AT DAWN"), 0);
}
