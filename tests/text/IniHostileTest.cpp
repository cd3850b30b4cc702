#include "tests/support/GuardedBuffer.h"
#include "tests/support/RandomText.h"
#include "tests/text/IniDocuments.h"

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

TEST(IniHostile, RandomBytes) {
    constexpr unsigned seed = 23;
    std::mt19937 random(seed);
    for (unsigned round = 0; round < 20'000; ++round) {
        std::string bytes = RandomText(random, 120, "[]=;\": \t\r\n\0\xFF\xFE\x61"sv);
        for (char& c : bytes)
            c = random() % (1 + round % 6) == 0 ? static_cast<char>(random()) : c;
        LoadAndCheck(bytes);
        ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ", round " << round;
    }
}

TEST(IniHostile, EveryTruncation) {
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

TEST(IniHostile, HundredMegabytes) {
    constexpr std::size_t size = 100'000'000;
    std::string bytes(size, '\0');
    EXPECT_FALSE(LoadAndCheck(bytes)) << "taken for UTF-16, then for one endless key";
    bytes.assign(size, '[');
    EXPECT_TRUE(LoadAndCheck(bytes));
    bytes.assign(size, 'v');
    EXPECT_FALSE(LoadAndCheck(bytes)) << "one line without equals sign";
    bytes[1] = '=';
    EXPECT_FALSE(LoadAndCheck(bytes)) << "one line";
    bytes[2] = '"';
    bytes[size - 1] = '"';
    EXPECT_FALSE(LoadAndCheck(bytes)) << "one quoted line";
    bytes[0] = ';';
    EXPECT_TRUE(LoadAndCheck(bytes)) << "one comment";
}

TEST(IniHostile, EndlessRepetition) {
    for (const auto& [repeated, good] : {std::pair{"[]\n", true},
                                         {"[A]\n", true},
                                         {"\n", true},
                                         {" ", true},
                                         {"=\n", true},
                                         {"k=\"\"\n[A]:[B]\n", true},
                                         {"[A]:[A]:[A]\n", true},
                                         {"\"", false},
                                         {":", false}}) {
        std::string bytes;
        while (bytes.size() < 10'000'000)
            bytes += repeated;
        CIniFileReader document;
        EXPECT_EQ(Load(document, bytes), good) << repeated;
    }
}

TEST(IniHostile, RefusedArguments) {
    CIniFileReader document;
    EXPECT_FALSE(document.InitFromBuffer(nullptr, 5, false));
    const unsigned char one[] = {'a'};
    EXPECT_FALSE(document.InitFromBuffer(one, 0x80000000u, false));
    EXPECT_TRUE(document.InitFromBuffer(one, 0, true));
}
