#include "utilities/text/html/HtmlText.h"

#include "tests/support/CodePage.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

bool IsOffensive(std::string text) {
    return HasBadWord(text.data());
}

/// The lines that are found offensive.
std::vector<std::string> Found(const char* file, unsigned& lines) {
    std::vector<std::string> found;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line); ++lines) {
        if (IsOffensive(line))
            found.push_back(line);
    }
    return found;
}

} // namespace

TEST(OffensiveWords, EnglishAndMusicAreInnocent) {
    unsigned lines = 0;
    EXPECT_EQ(Found(MUSIC_TERMS, lines), std::vector<std::string>());
    ASSERT_GT(std::exchange(lines, 0), 200u) << "no list of terms";
    const std::vector<std::string> english = Found(ENGLISH_WORDS, lines);
    ASSERT_GT(lines, 50'000u) << "no word list";
    EXPECT_LT(english.size(), lines / 400) << testing::PrintToString(english);
}

TEST(OffensiveWords, FoundAnywhereInAnyCase) {
    EXPECT_FALSE(HasBadWord(nullptr));
    for (const char* text : {"What the FuCk!", "fufuck", "abcxoxota", "Alligatorbait"})
        EXPECT_TRUE(IsOffensive(text)) << text;
    for (const char* text : {"", "fuc", "f uck", "FUCJ", "f\xF5\x63k", "alligatorbai"})
        EXPECT_FALSE(IsOffensive(text)) << text;
    const CodePage japanese(932);
    EXPECT_FALSE(IsOffensive("\x83\x66uck")) << "the second byte of a character is no letter";
}
