#include "utilities/promo/PromoScript.h"

#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>

TEST(Example, Promo) {
    static const unsigned char script[] = "[general]\r\n"
                                          "wait = 1000\r\n"
                                          "[Welcome.1]\r\n"
                                          "text.1 = Hello\r\n"
                                          "text.2 = and welcome\r\n";
    const TestWindow window; // a window of the host
    CPromoScript messages;
    messages.SetOutputWindow(window);
    messages.SetSourceBuffer(script, sizeof script - 1);
    messages.SetStartScriptName("Welcome");
    ASSERT_TRUE(messages.Go()); // from here on timers show one text after another

    EXPECT_TRUE(messages.ScriptExists("Welcome"));
    EXPECT_STREQ(messages.CurrentScript(), "Welcome");
    EXPECT_EQ(messages.CurrentStep(), 1);
    messages.Stop();
}
