#include "gallery/pages/promo/StageEvents.h"

#include "gallery/text/Language.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

std::string Masked(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }, '.');
    return text;
}

TEST(StageEvents, PutsTheDateOrTheUserInItsPlaceOrLeavesTheText) {
    const auto rewritten = [](const char* event, const char* text, int size) {
        char out[64] = "as it was";
        EXPECT_TRUE(gallery::RewriteEventText(event, text, out, size, nullptr));
        return std::string(out);
    };
    char user[64] = "";
    DWORD size = sizeof user;
    ASSERT_TRUE(GetUserNameA(user, &size));
    const std::string greeting = "Hi " + std::string(user) + "!";
    const int exact = static_cast<int>(greeting.size()) + 1;
    EXPECT_EQ(greeting, rewritten("user", "Hi %1!", exact));
    EXPECT_EQ("as it was", rewritten("user", "Hi %1!", exact - 1));
    EXPECT_EQ("as it was", rewritten("user", "Hi!", 64));
    EXPECT_EQ("as it was", rewritten("weather", "Hi %1!", 64));
    gallery::OpenLanguages();
    EXPECT_EQ("On ../../....", Masked(rewritten("date", "On %1", 64)));
}

} // namespace
