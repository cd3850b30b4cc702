#include "utilities/text/html/HtmlText.h"

#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>

namespace {

std::string Length(long milliseconds, int showMilliseconds, int omitHours) {
    GuardedBytes buffer(18);
    MakeLengthString(milliseconds, buffer.Data(), showMilliseconds, omitHours);
    return buffer.Data();
}

std::string Size(unsigned long bytes) {
    GuardedBytes buffer(11);
    MakeFileSizeString(bytes, buffer.Data(), 0);
    return buffer.Data();
}

std::string WithReturns(std::string_view source) {
    GuardedBytes buffer(source.size() + 1);
    ParseCarriageReturns(std::string(source).c_str(), buffer.Data(), 0);
    return buffer.Data();
}

} // namespace

TEST(DisplayText, Lengths) {
    EXPECT_EQ(Length(61'500, 1, 0), "01:01:500");
    EXPECT_EQ(Length(3'599'999, 0, 0), "59:59");
    EXPECT_EQ(Length(3'600'000, 0, 0), "01:00:00");
    EXPECT_EQ(Length(3'723'004, 1, 0), "01:02:03:004");
    EXPECT_EQ(Length(3'723'000, 0, 1), "02:03") << "hours are dropped";
    EXPECT_EQ(Length(LONG_MIN, 1, 0), "-596:-31:-23:-648");
    MakeLengthString(1, nullptr, 1, 1);
}

TEST(DisplayText, FileSizes) {
    EXPECT_EQ(Size(1023), "1023 Bytes");
    EXPECT_EQ(Size(1024), "1 KB");
    EXPECT_EQ(Size(1'048'575), "1023 KB");
    EXPECT_EQ(Size(1'048'576), "1.00 MB");
    EXPECT_EQ(Size(1'572'864), "1.50 MB");
    EXPECT_EQ(Size(ULONG_MAX), "4096.00 MB");
    MakeFileSizeString(1, nullptr, 11);
}

TEST(DisplayText, CarriageReturns) {
    EXPECT_EQ(WithReturns(""), "");
    EXPECT_EQ(WithReturns("one\\rtwo\\nthree\\r\\n"), "one\rtwo\rthree\r\r");
    EXPECT_EQ(WithReturns("\\t\\R\\\\n\\"), "\\t\\R\\\r\\") << "only r and n, after one backslash";
    char text[] = "a\\nb";
    ParseCarriageReturns(text, text, 0);
    EXPECT_STREQ(text, "a\rb");
    ParseCarriageReturns(nullptr, text, 0);
    EXPECT_STREQ(text, "");
    ParseCarriageReturns("a", nullptr, 0);
    const CodePage japanese(932);
    EXPECT_EQ(WithReturns("\x83\\n"), "\x83\\n") << "the backslash is half of a character";
}
