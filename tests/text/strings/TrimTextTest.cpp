#include "utilities/text/strings/StringFunctions.h"

#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/RandomText.h"

#include <gtest/gtest.h>

namespace {

std::string WithoutLeading(const std::string& text, const char* set) {
    return text.substr(std::min(text.find_first_not_of(set), text.size()));
}

std::string WithoutTrailing(const std::string& text, const char* set) {
    return text.substr(0, text.find_last_not_of(set) + 1);
}

/// What is left of the text in place, which the wide function must leave too.
template <class Function, class WideFunction>
std::string InPlace(Function function, WideFunction wideFunction, const std::string& text,
                    bool alsoLineBreaks) {
    GuardedBytes buffer{std::string_view(text)};
    function(buffer.Data(), alsoLineBreaks);
    const std::wstring wide(text.begin(), text.end());
    GuardedUnits units{std::wstring_view(wide)};
    wideFunction(units.Data(), alsoLineBreaks);
    EXPECT_TRUE(std::equal(buffer.View().begin(), buffer.View().end(), units.View().begin()));
    return buffer.Data();
}

std::string Trimmed(const std::string& text, int maxCount) {
    GuardedBytes place{std::string_view(text)};
    const bool some = TrimChar('"', place.Data(), place.Data(), maxCount);
    EXPECT_EQ(some, *place.Data() != '\0');
    return place.Data();
}

} // namespace

TEST(TrimText, FollowsTheRuleOnRandomTexts) {
    constexpr unsigned seed = 3;
    std::mt19937 random(seed);
    for (int i = 0; i < 3'000; ++i) {
        const std::string text = RandomText(random, 8, "  \r\n\ta\"\"");
        SCOPED_TRACE("seed 3: <" + text + ">");
        for (const bool breaks : {false, true}) {
            const char* set = breaks ? " \r\n" : " ";
            ASSERT_EQ(InPlace(&RemoveLeadingSpacesA, &RemoveLeadingSpacesW, text, breaks),
                      WithoutLeading(text, set));
            ASSERT_EQ(InPlace(&RemoveTrailingSpacesA, &RemoveTrailingSpacesW, text, breaks),
                      WithoutTrailing(text, set));
            ASSERT_EQ(InPlace(&RemoveSpacesA, &RemoveSpacesW, text, breaks),
                      WithoutTrailing(WithoutLeading(text, set), set));
        }
        const std::string white = WithoutTrailing(WithoutLeading(text, " \t\n"), " \t\n");
        GuardedBytes destination(white.size() + 1);
        ASSERT_EQ(TrimWhitespace(text.c_str(), destination.Data()), !white.empty());
        ASSERT_EQ(destination.Data(), white);
        std::string once = text.substr(text.starts_with('"') ? 1 : 0);
        once.resize(once.size() - (once.ends_with('"') ? 1 : 0));
        ASSERT_EQ(Trimmed(text, 1), once);
        ASSERT_EQ(Trimmed(text, 9), WithoutTrailing(WithoutLeading(text, "\""), "\""));
        ASSERT_EQ(Trimmed(text, -1), text);
    }
}

TEST(TrimText, LimitsAndNull) {
    RemoveSpacesA(nullptr, true);
    RemoveSpacesW(nullptr, true);
    char text[] = "a  ";
    RemoveTrailingSpacesA(text, false);
    EXPECT_EQ(text[2], '\0') << "trailing spaces are overwritten";
    EXPECT_FALSE(TrimWhitespace(nullptr, text) || TrimChar('a', nullptr, text, 1));
    EXPECT_STREQ(text, "");
    EXPECT_FALSE(TrimWhitespace("a", nullptr) || TrimChar('a', "b", nullptr, 1));
    const std::string longest(2047, 'x');
    GuardedBytes destination(2048);
    EXPECT_TRUE(TrimWhitespace((longest + "x").c_str(), destination.Data()));
    EXPECT_EQ(destination.Data(), longest);
    EXPECT_EQ(Trimmed(longest + "\"", 1), longest);
    const CodePage japanese(932);
    char result[16];
    EXPECT_TRUE(TrimChar('\\', "\\\x83\x5C\\", result, 5));
    EXPECT_STREQ(result, "\x83\x5C");
    EXPECT_TRUE(TrimChar('\x83', "\x83\x5C", result, 1));
    EXPECT_STREQ(result, "\x83\x5C") << "half of a character is none";
}
