#include "utilities/text/strings/StringFunctions.h"

#include "tests/support/CodePage.h"

#include <cctype>
#include <gtest/gtest.h>
#include <regex>

TEST(NumericText, EveryShortText) {
    static constexpr char letters[] = "-.07+ e";
    const std::regex number("-?[0-9]+");
    const std::regex floating("-?([0-9]+[.]?[0-9]*|[.][0-9]+)");
    for (int n = 0; n < 7 * 7 * 7 * 7 * 7; ++n) {
        std::string text;
        for (int rest = n; rest > 0; rest /= 7)
            text += letters[rest % 7];
        const std::wstring wide(text.begin(), text.end());
        const bool isNumber = std::regex_match(text, number);
        const bool isFloat = std::regex_match(text, floating);
        ASSERT_EQ(StringIsNumericA(text.c_str()), isNumber) << text;
        ASSERT_EQ(StringIsNumericW(wide.c_str()), isNumber) << text;
        ASSERT_EQ(StringIsFloatA(text.c_str()), isFloat) << text;
        ASSERT_EQ(StringIsFloatW(wide.c_str()), isFloat) << text;
    }
    EXPECT_FALSE(StringIsNumericA(nullptr) || StringIsNumericW(nullptr));
    EXPECT_FALSE(StringIsFloatA(nullptr) || StringIsFloatW(nullptr));
    const CodePage japanese(932);
    EXPECT_FALSE(StringIsNumericA("1\x83\x31")) << "what follows the lead byte is no trail byte";
    EXPECT_FALSE(StringIsNumericA("1\x83"));
}

TEST(NumericText, HexByTheDistanceRule) {
    static constexpr struct {
        const char* text;
        int value;
    } rows[] = {{"a", 10}, {"F", 15},  {"1A", 26},  {"123", 67}, {"1000", 48},
                {"", -1},  {"-1", -1}, {"0x1", -1}, {"1g1", -1}, {nullptr, -1}};
    for (const auto& row : rows)
        EXPECT_EQ(HexStringToInt(row.text), row.value) << testing::PrintToString(row.text);
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
