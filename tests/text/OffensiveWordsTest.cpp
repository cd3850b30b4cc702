#include "utilities/text/HtmlText.h"

#include "tests/support/CodePage.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace {

bool IsOffensive(std::string text) {
    return HasBadWord(text.data());
}

struct Findings {
    unsigned lines = 0;
    unsigned innocent = 0;
    std::string found;
};

/// Words that hold one of `meant` say what the list is about and are not counted as innocent.
Findings Check(const char* file, std::initializer_list<const char*> meant) {
    Findings findings;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line); ++findings.lines) {
        if (!IsOffensive(line))
            continue;
        bool isMeant = false;
        for (const char* word : meant)
            isMeant = isMeant || line.find(word) != line.npos;
        if (!isMeant) {
            ++findings.innocent;
            findings.found += line + " ";
        }
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
    std::printf("innocent words that match: %u of %u: %s\n", english.innocent, english.lines,
                english.found.c_str());
    EXPECT_LT(english.innocent, english.lines / 2000);
}

TEST(OffensiveWords, MusicIsInnocent) {
    const Findings music = Check(MUSIC_TERMS, {});
    ASSERT_GT(music.lines, 200u) << "no list of terms";
    EXPECT_EQ(music.found, "");
}

TEST(OffensiveWords, FoundAnywhereInAnyCase) {
    EXPECT_FALSE(HasBadWord(nullptr));
    for (const auto& [text, expected] : {std::pair{"", false},
                                         {"fuc", false},
                                         {"fuck", true},
                                         {"What the FuCk!", true},
                                         {"fufuck", true},
                                         {"f uck", false},
                                         {"FUCJ", false},
                                         {"f\xF5"
                                          "ck",
                                          false},
                                         {"abcxoxota", true},
                                         {"alligatorbai", false},
                                         {"Alligatorbait", true},
                                         {"fRe@K of [ne]ture`", false},
                                         {"zipperhead", true},
                                         {"zzz", false}})
        EXPECT_EQ(IsOffensive(text), expected) << text;
    const CodePage japanese(932);
    EXPECT_FALSE(IsOffensive("\x83"
                             "fuck"))
        << "the second byte of a character is no letter";
}
