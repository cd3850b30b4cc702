#include "utilities/base/SameText.h"

#include "tests/support/CodePage.h"

#include <gtest/gtest.h>

// Needs the macros of <mbctype.h>, which the support header has brought.
#include <mbstring.h>

namespace {

int Sign(int order) {
    return (order > 0) - (order < 0);
}

/// What the run-time says. It reads past a lead byte at the end of a text, so each text is followed
/// by zeros.
int RunTimeOrder(const std::string& a, const std::string& b) {
    const auto order = [](const std::string& left, const std::string& right) {
        return _mbsicmp(reinterpret_cast<const unsigned char*>(left.c_str()),
                        reinterpret_cast<const unsigned char*>(right.c_str()));
    };
    return Sign(order(a + std::string(4, '\0'), b + std::string(4, '\0')));
}

void ExpectSameAsRunTime(const std::string& a, const std::string& b) {
    const int expected = RunTimeOrder(a, b);
    ASSERT_EQ(Sign(vtr::CompareText(a.c_str(), b.c_str())), expected)
        << testing::PrintToString(a) << " and " << testing::PrintToString(b);
    ASSERT_EQ(vtr::SameText(a.c_str(), b.c_str()), expected == 0);
    if (expected == 0) {
        ASSERT_EQ(vtr::HashText(a.c_str()), vtr::HashText(b.c_str()));
    }
}

std::string Byte(int c) {
    return c == 0 ? std::string() : std::string(1, static_cast<char>(c));
}

struct Setting {
    int codePage;
    const char* locale;
};

class SameText : public testing::TestWithParam<Setting> {
protected:
    CodePage codePage{GetParam().codePage};
    Locale locale{GetParam().locale};
};

} // namespace

TEST_P(SameText, EveryPairOfBytes) {
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            ExpectSameAsRunTime(Byte(a), Byte(b));
            ExpectSameAsRunTime("x" + Byte(a) + Byte(b), "X" + Byte(a) + Byte(b));
            ExpectSameAsRunTime(Byte(a) + "a", Byte(b) + "A");
            ExpectSameAsRunTime("a" + Byte(a) + "az", "A" + Byte(b) + "AZ");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(CodePages, SameText,
                         testing::Values(Setting{1252, "C"}, Setting{1252, "German"},
                                         Setting{932, "C"}, Setting{932, "Japanese"}));

TEST(SameTextAlone, NullCountsAsEmpty) {
    EXPECT_EQ(vtr::CompareText(nullptr, nullptr), 0);
    EXPECT_EQ(vtr::CompareText(nullptr, ""), 0);
    EXPECT_LT(vtr::CompareText(nullptr, "a"), 0);
    EXPECT_GT(vtr::CompareText("a", nullptr), 0);
}
