#include "utilities/text/StringFunctions.h"

#include "tests/support/CodePage.h"

#include <cctype>
#include <gtest/gtest.h>

TEST(NumericText, NumbersAndFloats) {
    static constexpr struct {
        const char* text;
        bool numeric;
        bool isFloat;
    } rows[] = {
        {"", false, false},
        {"0", true, true},
        {"-12", true, true},
        {"1-2", false, false},
        {"-", false, false},
        {"--1", false, false},
        {"+1", false, false},
        {" 1", false, false},
        {"1 ", false, false},
        {"1.", false, true},
        {".5", false, true},
        {"-.5", false, true},
        {".", false, false},
        {"-.", false, false},
        {"1.2.3", false, false},
        {"1-", false, false},
        {".-5", false, false},
        {"1e5", false, false},
        {"12345678901234567890", true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(StringIsNumericA(row.text), row.numeric);
        EXPECT_EQ(StringIsFloatA(row.text), row.isFloat);
        const std::string_view text(row.text);
        const std::wstring wide(text.begin(), text.end());
        EXPECT_EQ(StringIsNumericW(wide.c_str()), row.numeric);
        EXPECT_EQ(StringIsFloatW(wide.c_str()), row.isFloat);
    }
    EXPECT_FALSE(StringIsNumericA(nullptr));
    EXPECT_FALSE(StringIsNumericW(nullptr));
    EXPECT_FALSE(StringIsFloatA(nullptr));
    EXPECT_FALSE(StringIsFloatW(nullptr));
}

TEST(NumericText, CharactersOfTwoBytesAreReadWhole) {
    const CodePage japanese(932);
    EXPECT_FALSE(StringIsNumericA("1\x83\x31")); // a lead byte whose next byte is no trail byte
    EXPECT_FALSE(StringIsNumericA("1\x83"));
    EXPECT_FALSE(StringIsNumericA("\x83\x5C"));
    EXPECT_TRUE(StringIsNumericA("-10"));
}

TEST(NumericText, HexByTheDistanceRule) {
    static constexpr struct {
        const char* text;
        int value;
    } rows[] = {
        {"0", 0},    {"a", 10},   {"F", 15},    {"1A", 26},  {"FF", 255},
        {"100", 32}, {"123", 67}, {"1000", 48}, {"xyz", -1}, {"1 ", -1},
        {"-1", -1},  {"", -1},    {"0x1", -1},  {"g", -1},   {"1g1", -1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(HexStringToInt(row.text), row.value) << row.text;
    EXPECT_EQ(HexStringToInt(nullptr), -1);
    HexStringToInt(std::string(100'000, 'F').c_str());
}

TEST(NumericText, EveryByteAsHexCharacter) {
    for (int c = 0; c < 256; ++c)
        EXPECT_EQ(IsHexCharacter(static_cast<char>(c)), c < 128 && std::isxdigit(c) != 0) << c;
}

TEST(NumericText, CaseByteByByte) {
    std::string all;
    for (int c = 1; c < 256; ++c)
        all.push_back(static_cast<char>(c));
    std::string lower = all;
    std::string upper = all;
    MakeLowerCase(lower.data());
    MakeUpperCase(upper.data());
    for (std::size_t i = 0; i < all.size(); ++i) {
        const int c = static_cast<unsigned char>(all[i]);
        EXPECT_EQ(static_cast<unsigned char>(lower[i]), std::tolower(c)) << c;
        EXPECT_EQ(static_cast<unsigned char>(upper[i]), std::toupper(c)) << c;
    }
    MakeLowerCase(nullptr);
    MakeUpperCase(nullptr);
}
