#include "tests/support/GuardedBuffer.h"
#include "tests/support/RandomText.h"
#include "tests/text/ini/IniDocuments.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

/// Loads bytes that end at a no-access page and checks what must hold of any document.
bool LoadAndCheck(std::string_view bytes) {
    const GuardedBytes buffer(bytes, /*terminated=*/false);
    CIniFileReader document;
    const bool good = Load(document, buffer.View());
    for (int s = 0; s < static_cast<int>(document.NumSections()); ++s) {
        EXPECT_GT(document.GetNumValues(s), 0) << "an empty section was kept";
        EXPECT_LE(std::strlen(document.SectionName(static_cast<unsigned>(s))), 63u);
        for (int v = 0; v < document.GetNumValues(s); ++v) {
            const CIniValue* pair = document.GetValue(s, v);
            const std::string_view key = pair->Key() != nullptr ? pair->Key() : "";
            const std::string_view value = pair->Value() != nullptr ? pair->Value() : "x";
            EXPECT_TRUE(!key.empty() && key.size() < 8191 && key.find('=') == key.npos);
            EXPECT_TRUE(!value.empty() && value.size() < 8191 && value.find(';') == value.npos);
        }
    }
    document.Sort();
    return good;
}

} // namespace

TEST(IniHostile, RandomAndTruncated) {
    constexpr unsigned seed = 23;
    std::mt19937 random(seed);
    for (unsigned round = 0; round < 20'000; ++round) {
        std::string bytes = RandomText(random, 120, "[]=;\": \t\r\n\0\xFF\xFE\x61"sv);
        for (char& c : bytes)
            c = random() % (1 + round % 6) == 0 ? static_cast<char>(random()) : c;
        LoadAndCheck(bytes);
        ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ", round " << round;
    }
    const std::string text = "top = 1\r\n; note\r\n[Child One] : [Base] : [Other]\r\n"
                             "quoted = \" say \"hi\" \"  \r\nkey\t=\tvalue ; note\r\nempty =\r\n"
                             "[Base]\r\nb = 2\r\n[]\r\nlast = \"x;y\"";
    std::string wide = "\xFF\xFE";
    for (const char c : text)
        wide += {c, '\0'};
    for (const std::string& whole : {text, wide}) {
        for (std::size_t length = 0; length <= whole.size(); ++length)
            LoadAndCheck(std::string_view(whole).substr(0, length));
    }
}

TEST(IniHostile, TenOrAHundredMegabytes) {
    static constexpr struct {
        const char* name;
        std::string_view start;
        std::string_view repeated;
        std::size_t megabytes;
        bool good;
    } rows[] = {
        {"taken for UTF-16, then for one endless key", "", "\0"sv, 100, false},
        {"one line without equals sign", "", "v", 100, false},
        {"one value", "k=", "v", 100, false},
        {"one quoted value", "k=\"", "\"", 100, false},
        {"one comment", ";", "\"", 100, true},
        {"one header", "", "[", 100, true},
        {"blanks", "", " ", 10, true},
        {"lines", "", "\n", 10, true},
        {"headers", "", "[A]:[A]:[A]\n", 10, true},
        {"headers without a name", "", "[]\n", 10, true},
        {"lines without a key", "", "=\n", 10, true},
        {"sections", "", "k=\"\"\n[A]:[B]\n", 10, true},
    };
    for (const auto& row : rows) {
        std::string bytes(row.start);
        while (bytes.size() < row.megabytes * 1'000'000)
            bytes += row.repeated;
        EXPECT_EQ(LoadAndCheck(bytes), row.good) << row.name;
    }
}
