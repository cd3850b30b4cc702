#include "utilities/text/html/HtmlText.h"

#include <gtest/gtest.h>

TEST(Example, Html) {
    char title[] = "Rock &amp; Roll&#33;";
    DeHTMLifyString(title, sizeof title);
    EXPECT_STREQ(title, "Rock & Roll!");

    char linked[128];
    char source[] = "see www.example.com";
    ParseForHTML(source, sizeof source - 1, linked, sizeof linked);
    EXPECT_STREQ(linked, "see <a href=\"http://www.example.com\">www.example.com</a>");

    char length[18];
    MakeLengthString(62'004, length, /*showMilliseconds=*/1, /*omitHours=*/0);
    EXPECT_STREQ(length, "01:02:004");
}
