#include "utilities/text/ini/IniFileReader.h"

#include <gtest/gtest.h>

TEST(Example, Ini) {
    static const unsigned char text[] = "[Mixer]\r\n"
                                        "Rate = 44100 ; samples a second\r\n"
                                        "Title = \" On stage \"\r\n";
    CIniFileReader settings;
    ASSERT_TRUE(settings.InitFromBuffer(text, sizeof text - 1, /*sort=*/true));

    char title[64];
    EXPECT_TRUE(settings.GetString("mixer", "TITLE", "untitled", title, sizeof title));
    EXPECT_STREQ(title, " On stage ");
    // The section is there, the key is not: the default is written, and the result is true.
    EXPECT_TRUE(settings.GetString("mixer", "Channels", "2", title, sizeof title));
    EXPECT_STREQ(title, "2");

    EXPECT_TRUE(settings.SetValue("Recorder", "Rate", "48000"));
    EXPECT_EQ(settings.NumSections(), 2u);
}
