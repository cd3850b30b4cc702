#include "vtrfutls/vtrfutls.h"

#include <gtest/gtest.h>
#include <string>

TEST(Example, Sibling) {
    std::string logged;
    SetLogSink([](const char* line, void* all) { *static_cast<std::string*>(all) += line; },
               &logged);
    LogFmtA("%d tracks", 12);
    SetLogSink(nullptr, nullptr);
    EXPECT_EQ(logged, "12 tracks");

    char name[64];
    EXPECT_TRUE(ExtractFileName("C:\\music\\take.wav", name, sizeof name));
    EXPECT_STREQ(name, "take.wav");

    const CRegKey user(HKEY_CURRENT_USER);
    EXPECT_TRUE(user.SubKeyExists("Software"));
    EXPECT_FALSE(user.SubKeyExists("No such key"));
}
