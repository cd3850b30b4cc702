#include "utilities/text/StringFunctions.h"

#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>

namespace {

std::wstring Widened(std::string_view text) {
    return {text.begin(), text.end()};
}

/// What is left of the text in place, which the wide function must leave too.
template <class Function, class WideFunction>
std::string InPlace(Function function, WideFunction wideFunction, std::string_view text,
                    bool alsoLineBreaks) {
    GuardedBytes buffer(text);
    function(buffer.Data(), alsoLineBreaks);
    GuardedUnits units{std::wstring_view(Widened(text))};
    wideFunction(units.Data(), alsoLineBreaks);
    EXPECT_EQ(units.View(), Widened(buffer.View()));
    return buffer.Data();
}

} // namespace

TEST(TrimText, SpacesAndLineBreaks) {
    static constexpr struct {
        const char* text;
        bool alsoLineBreaks;
        const char* leading;
        const char* trailing;
        const char* both;
    } rows[] = {
        {"", true, "", "", ""},
        {"   ", false, "", "", ""},
        {"\ta\t", true, "\ta\t", "\ta\t", "\ta\t"},
        {" \r\n a \n\r ", false, "\r\n a \n\r ", " \r\n a \n\r", "\r\n a \n\r"},
        {" \r\n a \n\r ", true, "a \n\r ", " \r\n a", "a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const bool breaks = row.alsoLineBreaks;
        EXPECT_EQ(InPlace(&RemoveLeadingSpacesA, &RemoveLeadingSpacesW, row.text, breaks),
                  row.leading);
        EXPECT_EQ(InPlace(&RemoveTrailingSpacesA, &RemoveTrailingSpacesW, row.text, breaks),
                  row.trailing);
        EXPECT_EQ(InPlace(&RemoveSpacesA, &RemoveSpacesW, row.text, breaks), row.both);
    }
    RemoveSpacesA(nullptr, true);
    RemoveSpacesW(nullptr, true);
    char text[] = "a  ";
    RemoveTrailingSpacesA(text, false);
    EXPECT_EQ(text[2], '\0') << "trailing spaces are overwritten";
}

TEST(TrimText, WhitespaceCopied) {
    const std::string longest(2047, 'x');
    for (const auto& [source, result] :
         {std::pair<std::string, std::string>{" \t\n a b \n\t ", "a b"},
          {"\r\nx\r\n", "\r\nx\r"},
          {" \t\n", ""},
          {longest + longest, longest}}) {
        GuardedBytes destination(result.size() + 1);
        EXPECT_EQ(TrimWhitespace(source.c_str(), destination.Data()), !result.empty());
        EXPECT_EQ(destination.Data(), result);
    }
    char buffer[4] = "abc";
    EXPECT_FALSE(TrimWhitespace(nullptr, buffer));
    EXPECT_STREQ(buffer, "");
    EXPECT_FALSE(TrimWhitespace("a", nullptr));
}

TEST(TrimText, CharacterFromBothEnds) {
    const std::string longest(2047, 'x');
    const struct {
        std::string source;
        int maxCount;
        std::string result;
    } rows[] = {
        {"\"\"a\"", 1, "\"a"}, {"\"\"a\"\"\"", 2, "a\""}, {"\"\"\"", 5, ""},
        {"\"", 1, ""},         {"\"a\"", 0, "\"a\""},     {"\"a\"", -1, "\"a\""},
        {"a\"b", 3, "a\"b"},   {"\"\"\"\"", 1, "\"\""},   {longest + longest, 1, longest},
    };
    for (const auto& row : rows) {
        GuardedBytes source{std::string_view(row.source)};
        EXPECT_EQ(TrimChar('"', source.Data(), source.Data(), row.maxCount), !row.result.empty());
        EXPECT_EQ(source.Data(), row.result) << row.source;
    }
    const CodePage japanese(932);
    char result[16];
    EXPECT_TRUE(TrimChar('\\', "\\\x83\x5C\\", result, 5));
    EXPECT_STREQ(result, "\x83\x5C");
    EXPECT_TRUE(TrimChar('\x83', "\x83\x5C", result, 1));
    EXPECT_STREQ(result, "\x83\x5C") << "half of a character is none";
}
