#include "utilities/text/strings/StringFunctions.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/RandomText.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

/// What a buffer of `size` bytes holds.
std::string ReducedByRule(std::wstring units, std::size_t size, bool reserveTerminator) {
    if (units.starts_with(L'\xFEFF'))
        units.erase(0, 1);
    units.resize(std::min(units.find(L"\0\0"sv), units.size()));
    std::string reduced;
    for (const wchar_t unit : units)
        reduced += static_cast<char>(unit);
    reduced.resize(std::min(reduced.size(), size - (reserveTerminator ? 1 : 0)));
    reduced.resize(size);
    return reduced;
}

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
        {"single bytes behind one pair", "A\0BC"sv, false, false, false, false, 0},
        {"zero pair decides", "A\0\0\0BC"sv, false, true, true, true, 0},
        {"odd end", "A\0B\0C"sv, false, true, false, true, 0},
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

TEST(UnicodeText, ConvertedByTheRule) {
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    for (int i = 0; i < 5'000; ++i) {
        const std::string bytes = RandomText(random, 12, "\0\0\0az\xFF\xFE"sv);
        const std::size_t size = 1 + random() % 9;
        const bool reserve = random() % 2 == 0;
        SCOPED_TRACE("seed 11, round " + std::to_string(i));
        std::wstring units(bytes.size() / 2, L'\0');
        std::memcpy(units.data(), bytes.data(), units.size() * 2);
        GuardedUnits source(std::wstring_view(units), /*terminated=*/false);
        GuardedBytes reduced(size);
        ConvertUnicodeToSingleByte(source.Data(), static_cast<int>(units.size()), reduced.Data(),
                                   static_cast<unsigned>(size), reserve);
        ASSERT_EQ(reduced.View(), ReducedByRule(units, size, reserve));

        GuardedBytes narrow(std::string_view(bytes), /*terminated=*/false);
        GuardedUnits widened(size);
        ConvertSingleByteToUnicode(narrow.Data(), static_cast<int>(bytes.size()), widened.Data(),
                                   static_cast<unsigned>(size), reserve);
        std::wstring expected;
        for (const char c : bytes.substr(0, bytes.find('\0')))
            expected += static_cast<unsigned char>(c);
        expected.resize(std::min(expected.size(), size - (reserve ? 1 : 0)));
        expected.resize(size);
        ASSERT_TRUE(widened.View() == expected);

        const bool unicode = StringIsUnicode(reinterpret_cast<unsigned char*>(narrow.Data()),
                                             static_cast<int>(bytes.size()), true);
        GuardedBytes copied(size);
        ASSERT_EQ(CopyCharToTChar(narrow.Data(), static_cast<unsigned>(bytes.size()), copied.Data(),
                                  static_cast<unsigned>(size)),
                  !bytes.empty());
        std::string copy = bytes.substr(0, size - 1);
        copy.resize(size);
        ASSERT_EQ(copied.View(), unicode ? ReducedByRule(units, size, true) : copy);
    }
}

TEST(UnicodeText, WholeTextsAndNull) {
    char text[] = "xy";
    ConvertUnicodeToSingleByte(static_cast<const wchar_t*>(nullptr), text, sizeof text);
    EXPECT_FALSE(CopyCharToTChar("a", 1, text, 0) || CopyCharToTChar("a", 1, nullptr, 4));
    EXPECT_STREQ(text, "xy");
    ConvertUnicodeToSingleByte(L"abcdef", text, sizeof text);
    EXPECT_STREQ(text, "ab");
    ConvertUnicodeToSingleByte(L"a", -1, text, sizeof text, true);
    EXPECT_STREQ(text, "");
    ConvertUnicodeToSingleByte(nullptr, 5, text, sizeof text, true);
    ConvertUnicodeToSingleByte(L"a", 1, nullptr, 10, true);
    EXPECT_TRUE(CopyCharToTChar("abcdef", text, sizeof text));
    EXPECT_STREQ(text, "ab");
    EXPECT_FALSE(CopyCharToTChar(nullptr, text, sizeof text));
    EXPECT_STREQ(text, "");
    GuardedUnits wide(4);
    ConvertSingleByteToUnicode("abcdef", wide.Data(), 4);
    ConvertSingleByteToUnicode(static_cast<const char*>(nullptr), wide.Data(), 4);
    ConvertSingleByteToUnicode("a", 1, nullptr, 10, true);
    EXPECT_STREQ(wide.Data(), L"abc");
}
