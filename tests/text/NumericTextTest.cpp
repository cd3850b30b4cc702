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
        {"", false, false},    {"-12", true, true},   {"1-2", false, false},
        {"-", false, false},   {"--1", false, false}, {"+1", false, false},
        {" 1", false, false},  {"1.", false, true},   {"-.5", false, true},
        {".", false, false},   {"-.", false, false},  {"1.2.3", false, false},
        {".-5", false, false}, {"1e5", false, false}, {"12345678901234567890", true, true},
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
    EXPECT_FALSE(StringIsNumericA(nullptr) || StringIsNumericW(nullptr));
    EXPECT_FALSE(StringIsFloatA(nullptr) || StringIsFloatW(nullptr));

    const CodePage japanese(932);
    EXPECT_FALSE(StringIsNumericA("1\x83\x31")); // a lead byte whose next byte is no trail byte
    EXPECT_FALSE(StringIsNumericA("1\x83"));
}

TEST(NumericText, HexByTheDistanceRule) {
    for (const auto& [text, value] : {std::pair{"a", 10},
                                      {"F", 15},
                                      {"1A", 26},
                                      {"123", 67},
                                      {"1000", 48},
                                      {"", -1},
                                      {"-1", -1},
                                      {"0x1", -1},
                                      {"1g1", -1},
                                      {static_cast<const char*>(nullptr), -1}})
        EXPECT_EQ(HexStringToInt(text), value) << testing::PrintToString(text);
    HexStringToInt(std::string(100'000, 'F').c_str());
}

TEST(NumericText, EveryByte) {
    for (int c = 0; c < 256; ++c) {
        char lower[] = {static_cast<char>(c), '\0'};
        char upper[] = {static_cast<char>(c), '\0'};
        EXPECT_EQ(IsHexCharacter(lower[0]), c < 128 && std::isxdigit(c) != 0) << c;
        MakeLowerCase(lower);
        MakeUpperCase(upper);
        EXPECT_EQ(lower[0], static_cast<char>(std::tolower(c))) << c;
        EXPECT_EQ(upper[0], static_cast<char>(std::toupper(c))) << c;
    }
    MakeLowerCase(nullptr);
    MakeUpperCase(nullptr);
}
