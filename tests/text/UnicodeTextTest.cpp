#include "utilities/text/StringFunctions.h"

#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>

namespace {

const unsigned char* Bytes(GuardedBytes& buffer) {
    return reinterpret_cast<const unsigned char*>(buffer.Data());
}

/// The bytes with no terminator behind them.
struct RawBytes {
    explicit RawBytes(std::string_view bytes)
        : buffer(bytes.size()), size(static_cast<int>(bytes.size())) {
        std::memcpy(buffer.Data(), bytes.data(), bytes.size());
    }
    GuardedBytes buffer;
    int size;
};

using namespace std::string_view_literals;

} // namespace

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
        {"UTF-16, terminated", "A\0B\0\0\0"sv, false, true, true, true, 0},
        {"single bytes", "ABCD"sv, false, false, false, false, 0},
        {"single bytes behind one pair", "A\0BC"sv, false, false, false, false, 0},
        {"zero pair decides", "A\0\0\0BC"sv, false, true, true, true, 0},
        {"zeros", "\0\0\0"sv, false, true, true, true, 0},
        {"odd end with zeros", "A\0B\0\0"sv, false, true, true, true, 0},
        {"odd end", "A\0B\0C"sv, false, true, false, true, 0},
        {"high bytes only", "\0A\0B"sv, false, true, false, true, 0},
        {"mark alone", "\xFF\xFE"sv, true, true, true, false, 0},
        {"mark and text", "\xFF\xFE\x41\0\x42\0\0\0"sv, true, true, true, true, 2},
        {"mark, no terminator", "\xFF\xFE\x41\0"sv, true, true, true, true, 0},
        {"mark and nothing", "\xFF\xFE\0\0"sv, true, true, true, true, 0},
        {"mark and a wide unit", "\xFF\xFE\x41\x30\0\0"sv, true, true, true, false, 0},
        {"big-endian mark", "\xFE\xFF\0A"sv, false, false, false, false, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        RawBytes raw(row.bytes);
        const unsigned char* data = Bytes(raw.buffer);
        EXPECT_EQ(StringHasUnicodeHeader(data), row.header);
        EXPECT_EQ(StringIsUnicode(data, raw.size, false), row.unicode);
        EXPECT_EQ(StringIsUnicode(data, raw.size, true), row.terminated);
        EXPECT_EQ(StringIsConvertibleUnicode(data, raw.size), row.convertible);
        EXPECT_EQ(NumConvertibleUnicodeChars(data, raw.size), row.units);
    }
    const unsigned char one[] = {0};
    for (const int length : {1, 0, -1}) {
        EXPECT_FALSE(StringIsUnicode(one, length, false)) << length;
        EXPECT_FALSE(StringIsConvertibleUnicode(one, length)) << length;
        EXPECT_EQ(NumConvertibleUnicodeChars(one, length), 0) << length;
    }
    EXPECT_FALSE(StringIsUnicode(nullptr, 10, false));
    EXPECT_FALSE(StringIsConvertibleUnicode(nullptr, 10));
}

TEST(UnicodeText, ReducedToLowBytes) {
    static constexpr struct {
        const char* name;
        std::wstring_view source;
        unsigned size;
        bool reserve;
        std::string_view result;
    } rows[] = {
        {"whole", L"ab"sv, 4, true, "ab\0\0"sv},
        {"mark left out",
         L"\xFEFF"
         L"ab"sv,
         3, true, "ab\0"sv},
        {"low byte kept", L"\x3041\x00E9"sv, 3, true, "\x41\xE9\0"sv},
        {"cut before the terminator", L"abc"sv, 3, true, "ab\0"sv},
        {"no terminator reserved", L"abc"sv, 3, false, "abc"sv},
        {"one zero unit goes on", L"a\0b"sv, 5, true, "a\0b\0\0"sv},
        {"two zero units end", L"a\0\0b"sv, 5, true, "a\0\0\0\0"sv},
        {"nothing", L""sv, 2, true, "\0\0"sv},
        {"size of one", L"a"sv, 1, true, "\0"sv},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GuardedUnits source(row.source.size());
        std::memcpy(source.Data(), row.source.data(), row.source.size() * sizeof(wchar_t));
        GuardedBytes destination(row.size);
        ConvertUnicodeToSingleByte(source.Data(), static_cast<int>(row.source.size()),
                                   destination.Data(), row.size, row.reserve);
        EXPECT_EQ(std::string_view(destination.Data(), row.size), row.result);
    }
    char text[] = "xy";
    ConvertUnicodeToSingleByte(static_cast<const wchar_t*>(nullptr), text, sizeof text);
    EXPECT_STREQ(text, "xy");
    ConvertUnicodeToSingleByte(L"abcdef", text, sizeof text);
    EXPECT_STREQ(text, "ab");
    ConvertUnicodeToSingleByte(nullptr, 5, text, sizeof text, true);
    EXPECT_STREQ(text, "");
    ConvertUnicodeToSingleByte(L"a", -1, text, sizeof text, true);
    EXPECT_STREQ(text, "");
    ConvertUnicodeToSingleByte(L"a", 1, nullptr, 10, true);
}

TEST(UnicodeText, WidenedByteByByte) {
    static constexpr struct {
        const char* name;
        std::string_view source;
        unsigned units;
        bool reserve;
        std::wstring_view result;
    } rows[] = {
        {"whole", "ab"sv, 4, true, L"ab\0\0"sv},
        {"no code page", "\x80\xFF"sv, 3, true, L"\x80\xFF\0"sv},
        {"cut", "abc"sv, 3, true, L"ab\0"sv},
        {"no terminator reserved", "abc"sv, 3, false, L"abc"sv},
        {"ends at zero", "a\0b"sv, 4, true, L"a\0\0\0"sv},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        RawBytes source(row.source);
        GuardedUnits destination(row.units);
        ConvertSingleByteToUnicode(source.buffer.Data(), source.size, destination.Data(), row.units,
                                   row.reserve);
        EXPECT_EQ(std::wstring_view(destination.Data(), row.units), row.result);
    }
    wchar_t text[] = L"xy";
    ConvertSingleByteToUnicode(static_cast<const char*>(nullptr), text, 3);
    EXPECT_STREQ(text, L"xy");
    ConvertSingleByteToUnicode("abcdef", text, 3);
    EXPECT_STREQ(text, L"ab");
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
        {"UTF-16", "a\0b\0\0\0"sv, 5, true, "ab\0\0\0"sv},
        {"UTF-16, cut", "a\0b\0\0\0"sv, 2, true, "a\0"sv},
        {"UTF-16 without terminator is bytes", "a\0b\0"sv, 6, true, "a\0b\0\0\0"sv},
        {"mark is enough", "\xFF\xFE\x61\0"sv, 3, true, "a\0\0"sv},
        {"bytes", "abc"sv, 5, true, "abc\0\0"sv},
        {"bytes, cut", "abc"sv, 3, true, "ab\0"sv},
        {"size of one", "abc"sv, 1, true, "\0"sv},
        {"empty", ""sv, 2, false, "\0\0"sv},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        RawBytes source(row.source);
        GuardedBytes destination(row.size);
        EXPECT_EQ(CopyCharToTChar(source.buffer.Data(), static_cast<unsigned>(source.size),
                                  destination.Data(), row.size),
                  row.copied);
        EXPECT_EQ(std::string_view(destination.Data(), row.size), row.result);
    }
    char text[4] = "xyz";
    EXPECT_FALSE(CopyCharToTChar("a", 1, text, 0));
    EXPECT_FALSE(CopyCharToTChar("a", 1, nullptr, 4));
    EXPECT_STREQ(text, "xyz");
    EXPECT_TRUE(CopyCharToTChar("abcdef", text, sizeof text));
    EXPECT_STREQ(text, "abc");
    EXPECT_FALSE(CopyCharToTChar(nullptr, text, sizeof text));
    EXPECT_STREQ(text, "");
}
