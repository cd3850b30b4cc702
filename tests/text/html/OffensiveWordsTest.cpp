#include "utilities/text/html/HtmlText.h"

#include "tests/support/CodePage.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

bool IsOffensive(std::string text) {
    return HasBadWord(text.data());
}

struct Findings {
    unsigned lines = 0;
    std::vector<std::string> innocent;
};

/// Words that hold one of `meant` say what the list is about and are not counted as innocent.
Findings Check(const char* file, std::initializer_list<const char*> meant) {
    Findings findings;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line); ++findings.lines) {
        const auto isPart = [&](const char* word) { return line.find(word) != line.npos; };
        if (IsOffensive(line) && std::none_of(meant.begin(), meant.end(), isPart))
            findings.innocent.push_back(line);
    }
    return findings;
}

} // namespace

TEST(OffensiveWords, EnglishWordsAreInnocent) {
    const Findings english =
        Check(ENGLISH_WORDS,
              {"asshole",  "bastard", "bestiality", "bitch",   "boobs",    "bunghole", "cocksuck",
               "cunnil",   "cunt",    "ejaculat",   "faggot",  "fellatio", "fuck",     "goddamn",
               "incest",   "jackass", "masturbat",  "molest",  "nigga's",  "niggas",   "niggaz",
               "orgasm",   "penis",   "porn",       "prostit", "scrotum",  "shit",     "slut",
               "sodomite", "vagina",  "wetback",    "whore"});
    ASSERT_GT(english.lines, 50'000u) << "no word list";
    std::printf("innocent words that match: %zu of %u\n", english.innocent.size(), english.lines);
    EXPECT_LT(english.innocent.size(), english.lines / 2000)
        << testing::PrintToString(english.innocent);
}

TEST(OffensiveWords, MusicIsInnocent) {
    const Findings music = Check(MUSIC_TERMS, {});
    ASSERT_GT(music.lines, 200u) << "no list of terms";
    EXPECT_EQ(music.innocent, std::vector<std::string>());
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
