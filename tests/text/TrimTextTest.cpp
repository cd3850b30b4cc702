#include "utilities/text/StringFunctions.h"

#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>

namespace {

std::wstring Widened(std::string_view text) {
    return {text.begin(), text.end()};
}

template <class Function>
std::string InPlace(Function function, std::string_view text, bool alsoLineBreaks) {
    GuardedBytes buffer(text);
    function(buffer.Data(), alsoLineBreaks);
    return buffer.Data();
}

template <class Function>
std::wstring WideInPlace(Function function, std::string_view text, bool alsoLineBreaks) {
    GuardedUnits buffer(std::wstring_view(Widened(text)));
    function(buffer.Data(), alsoLineBreaks);
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
        {"  a b ", false, "a b ", "  a b", "a b"},
        {"\ta\t", true, "\ta\t", "\ta\t", "\ta\t"},
        {" \r\n a \n\r ", false, "\r\n a \n\r ", " \r\n a \n\r", "\r\n a \n\r"},
        {" \r\n a \n\r ", true, "a \n\r ", " \r\n a", "a"},
        {"\n", true, "", "", ""},
        {"x", true, "x", "x", "x"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const bool breaks = row.alsoLineBreaks;
        EXPECT_EQ(InPlace(&RemoveLeadingSpacesA, row.text, breaks), row.leading);
        EXPECT_EQ(InPlace(&RemoveTrailingSpacesA, row.text, breaks), row.trailing);
        EXPECT_EQ(InPlace(&RemoveSpacesA, row.text, breaks), row.both);
        EXPECT_EQ(WideInPlace(&RemoveLeadingSpacesW, row.text, breaks), Widened(row.leading));
        EXPECT_EQ(WideInPlace(&RemoveTrailingSpacesW, row.text, breaks), Widened(row.trailing));
        EXPECT_EQ(WideInPlace(&RemoveSpacesW, row.text, breaks), Widened(row.both));
    }
    RemoveSpacesA(nullptr, true);
    RemoveSpacesW(nullptr, true);
}

TEST(TrimText, TrailingSpacesAreOverwritten) {
    char text[] = "a  ";
    RemoveTrailingSpacesA(text, false);
    EXPECT_EQ(std::string_view(text, 3), std::string_view("a\0\0", 3));
}

TEST(TrimText, WhitespaceCopied) {
    static constexpr struct {
        const char* source;
        const char* result;
    } rows[] = {
        {" \t\n a b \n\t ", "a b"},
        {"\r\nx\r\n", "\r\nx\r"},
        {" \t\n", ""},
        {"", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.source);
        GuardedBytes destination(std::strlen(row.result) + 1);
        EXPECT_EQ(TrimWhitespace(row.source, destination.Data()), *row.result != '\0');
        EXPECT_STREQ(destination.Data(), row.result);
    }
    char buffer[4] = "abc";
    EXPECT_FALSE(TrimWhitespace(nullptr, buffer));
    EXPECT_STREQ(buffer, "");
    EXPECT_FALSE(TrimWhitespace("a", nullptr));
}

TEST(TrimText, AtMost2047BytesAreCopied) {
    const std::string source(10'000, 'x');
    GuardedBytes destination(2048);
    EXPECT_TRUE(TrimWhitespace(source.c_str(), destination.Data()));
    EXPECT_EQ(std::strlen(destination.Data()), 2047u);
    EXPECT_TRUE(TrimChar('"', source.c_str(), destination.Data(), 1));
    EXPECT_EQ(std::strlen(destination.Data()), 2047u);
}

TEST(TrimText, CharacterFromBothEnds) {
    static constexpr struct {
        const char* source;
        int maxCount;
        const char* result;
    } rows[] = {
        {"\"a\"", 1, "a"},
        {"\"\"a\"", 1, "\"a"},
        {"\"\"a\"\"\"", 2, "a\""},
        {"\"\"\"", 5, ""},
        {"\"", 1, ""},
        {"\"a\"", 0, "\"a\""},
        {"\"a\"", -1, "\"a\""},
        {"a\"b", 3, "a\"b"},
        {"\"\"\"\"", 1, "\"\""},
        {"", 1, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.source);
        GuardedBytes source{std::string_view(row.source)};
        EXPECT_EQ(TrimChar('"', source.Data(), source.Data(), row.maxCount), *row.result != '\0');
        EXPECT_STREQ(source.Data(), row.result);
    }
}

TEST(TrimText, TrailByteIsNotTheCharacterToTrim) {
    const CodePage japanese(932);
    char result[16];
    EXPECT_TRUE(TrimChar('\\', "\\\x83\x5C\\", result, 5));
    EXPECT_STREQ(result, "\x83\x5C");
}
