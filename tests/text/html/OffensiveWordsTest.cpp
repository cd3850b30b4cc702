#include "utilities/text/html/HtmlText.h"

#include "tests/support/CodePage.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

bool IsOffensive(std::string text) {
    return HasBadWord(text.data());
}

/// The lines that are found offensive, but for those with a word that says what the list is about.
std::vector<std::string> Found(const char* file, unsigned& lines,
                               std::initializer_list<const char*> meant = {}) {
    std::vector<std::string> found;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line); ++lines) {
        const auto isPart = [&](const char* word) { return line.find(word) != line.npos; };
        if (IsOffensive(line) && std::none_of(meant.begin(), meant.end(), isPart))
            found.push_back(line);
    }
    return found;
}

} // namespace

TEST(OffensiveWords, EnglishAndMusicAreInnocent) {
    unsigned lines = 0;
    EXPECT_EQ(Found(MUSIC_TERMS, lines), std::vector<std::string>());
    ASSERT_GT(std::exchange(lines, 0), 200u) << "no list of terms";
    const std::vector<std::string> english =
        Found(ENGLISH_WORDS, lines,
              {"asshole",  "bastard", "bestiality", "bitch",   "boobs",    "bunghole", "cocksuck",
               "cunnil",   "cunt",    "ejaculat",   "faggot",  "fellatio", "fuck",     "goddamn",
               "incest",   "jackass", "masturbat",  "molest",  "nigga's",  "niggas",   "niggaz",
               "orgasm",   "penis",   "porn",       "prostit", "scrotum",  "shit",     "slut",
               "sodomite", "vagina",  "wetback",    "whore"});
    ASSERT_GT(lines, 50'000u) << "no word list";
    EXPECT_LT(english.size(), lines / 2000) << testing::PrintToString(english);
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
