#include "utilities/text/StringFunctions.h"

#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>

using namespace std::string_view_literals;

TEST(UnicodeText, Detection) {
    static constexpr struct {
        const char* name;
        std::string_view bytes;
        bool header;
        bool unicode;
        bool terminated;
        bool convertible;
        int units;
    } rows[] = {
        {"UTF-16", "A\0B\0"sv, false, true, false, true, 0},
        {"single bytes behind one pair", "A\0BC"sv, false, false, false, false, 0},
        {"zero pair decides", "A\0\0\0BC"sv, false, true, true, true, 0},
        {"zeros", "\0\0\0"sv, false, true, true, true, 0},
        {"odd end", "A\0B\0C"sv, false, true, false, true, 0},
        {"high bytes only", "\0A\0B"sv, false, true, false, true, 0},
        {"mark alone", "\xFF\xFE"sv, true, true, true, false, 0},
        {"mark and text", "\xFF\xFE\x41\0\x42\0\0\0"sv, true, true, true, true, 2},
        {"mark, no terminator", "\xFF\xFE\x41\0"sv, true, true, true, true, 0},
        {"mark and a wide unit", "\xFF\xFE\x41\x30\0\0"sv, true, true, true, false, 0},
        {"big-endian mark", "\xFE\xFF\0A"sv, false, false, false, false, 0},
        {"one byte", "\0"sv, false, false, false, false, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GuardedBytes buffer(row.bytes, /*terminated=*/false);
        const auto* data = reinterpret_cast<const unsigned char*>(buffer.Data());
        const int size = static_cast<int>(row.bytes.size());
        EXPECT_EQ(size > 1 && StringHasUnicodeHeader(data), row.header);
        EXPECT_EQ(StringIsUnicode(data, size, false), row.unicode);
        EXPECT_EQ(StringIsUnicode(data, size, true), row.terminated);
        EXPECT_EQ(StringIsConvertibleUnicode(data, size), row.convertible);
        EXPECT_EQ(NumConvertibleUnicodeChars(data, size), row.units);
        EXPECT_FALSE(StringIsUnicode(data, -1, false) || StringIsConvertibleUnicode(data, -1));
    }
    EXPECT_FALSE(StringIsUnicode(nullptr, 10, false) || StringIsConvertibleUnicode(nullptr, 10));
}

TEST(UnicodeText, ReducedToLowBytes) {
    static constexpr struct {
        const char* name;
        std::wstring_view source;
        unsigned size;
        bool reserve;
        std::string_view result;
    } rows[] = {
        {"mark left out, low byte kept", L"\xFEFF\x3041\x00E9"sv, 4, true, "\x41\xE9\0\0"sv},
        {"cut before the terminator", L"abc"sv, 3, true, "ab\0"sv},
        {"no terminator reserved", L"abc"sv, 3, false, "abc"sv},
        {"one zero unit goes on", L"a\0b"sv, 5, true, "a\0b\0\0"sv},
        {"two zero units end", L"a\0\0b"sv, 5, true, "a\0\0\0\0"sv},
        {"nothing", L""sv, 2, true, "\0\0"sv},
    };
    for (const auto& row : rows) {
        GuardedUnits source(row.source, /*terminated=*/false);
        GuardedBytes destination(row.size);
        ConvertUnicodeToSingleByte(source.Data(), static_cast<int>(row.source.size()),
                                   destination.Data(), row.size, row.reserve);
        EXPECT_EQ(destination.View(), row.result) << row.name;
    }
    char text[] = "xy";
    ConvertUnicodeToSingleByte(static_cast<const wchar_t*>(nullptr), text, sizeof text);
    EXPECT_STREQ(text, "xy");
    ConvertUnicodeToSingleByte(L"abcdef", text, sizeof text);
    EXPECT_STREQ(text, "ab");
    ConvertUnicodeToSingleByte(L"a", -1, text, sizeof text, true);
    EXPECT_STREQ(text, "");
    ConvertUnicodeToSingleByte(nullptr, 5, text, sizeof text, true);
    ConvertUnicodeToSingleByte(L"a", 1, nullptr, 10, true);
}

TEST(UnicodeText, WidenedByteByByte) {
    for (const bool reserve : {true, false}) {
        GuardedBytes source("\x80\xFFz"sv, /*terminated=*/false);
        GuardedUnits destination(3);
        ConvertSingleByteToUnicode(source.Data(), 3, destination.Data(), 3, reserve);
        EXPECT_EQ(destination.View(), reserve ? L"\x80\xFF\0"sv : L"\x80\xFFz"sv);
    }
    GuardedUnits text(4);
    ConvertSingleByteToUnicode("a\0b", 3, text.Data(), 4, true);
    EXPECT_EQ(text.View(), L"a\0\0\0"sv);
    ConvertSingleByteToUnicode(static_cast<const char*>(nullptr), text.Data(), 4);
    EXPECT_EQ(text.View(), L"a\0\0\0"sv);
    ConvertSingleByteToUnicode("abcdef", text.Data(), 4);
    EXPECT_EQ(text.View(), L"abc\0"sv);
    ConvertSingleByteToUnicode("a", 1, nullptr, 10, true);
}

TEST(UnicodeText, CopiedWhateverItIs) {
    static constexpr struct {
        const char* name;
        std::string_view source;
        unsigned size;
        bool copied;
        std::string_view result;
    } rows[] = {
        {"UTF-16, cut", "a\0b\0\0\0"sv, 2, true, "a\0"sv},
        {"UTF-16 without terminator is bytes", "a\0b\0"sv, 6, true, "a\0b\0\0\0"sv},
        {"mark is enough", "\xFF\xFE\x61\0"sv, 3, true, "a\0\0"sv},
        {"bytes", "abc"sv, 5, true, "abc\0\0"sv},
        {"bytes, cut", "abc"sv, 3, true, "ab\0"sv},
        {"empty", ""sv, 2, false, "\0\0"sv},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GuardedBytes source(row.source, /*terminated=*/false);
        GuardedBytes destination(row.size);
        EXPECT_EQ(CopyCharToTChar(source.Data(), static_cast<unsigned>(row.source.size()),
                                  destination.Data(), row.size),
                  row.copied);
        EXPECT_EQ(destination.View(), row.result);
    }
    char text[4] = "xyz";
    EXPECT_FALSE(CopyCharToTChar("a", 1, text, 0));
    EXPECT_FALSE(CopyCharToTChar("a", 1, nullptr, 4));
    EXPECT_TRUE(CopyCharToTChar("abcdef", text, sizeof text));
    EXPECT_STREQ(text, "abc");
    EXPECT_FALSE(CopyCharToTChar(nullptr, text, sizeof text));
    EXPECT_STREQ(text, "");
}
