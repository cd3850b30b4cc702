#include "utilities/text/html/HtmlText.h"

#include "utilities/base/CaseBit.h"
#include "utilities/base/MultibyteText.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace {

constexpr std::size_t slotSize = 25;

/// In order; made from OffensiveWords.txt.
constexpr char words[][slotSize] = {
#include "OffensiveWords.inc"
};
constexpr std::size_t wordCount = std::size(words);
static_assert(wordCount == 449);

constexpr std::size_t letterCount = 26;

/// 0 to 25 for a letter in either case, else 26 or more.
constexpr std::size_t LetterIndex(char c) {
    return static_cast<unsigned char>((static_cast<unsigned char>(c) | vtr::caseBit) - 'a');
}

constexpr std::size_t PairIndex(std::size_t first, std::size_t second) {
    return first * letterCount + second;
}

/// Where the words begin that start with each pair of letters, and after the last pair their end.
constexpr std::array<unsigned short, letterCount * letterCount + 1> MakeStarts() {
    std::array<unsigned short, letterCount * letterCount + 1> starts{};
    for (const auto& word : words)
        ++starts[PairIndex(LetterIndex(word[0]), LetterIndex(word[1])) + 1];
    for (std::size_t i = 1; i < starts.size(); ++i)
        starts[i] = static_cast<unsigned short>(starts[i] + starts[i - 1]);
    return starts;
}

constexpr auto starts = MakeStarts();

constexpr bool IsLetter(char c) {
    return c >= 'a' && c <= 'z';
}

constexpr bool IsInOrder() {
    for (std::size_t i = 0; i < wordCount; ++i) {
        const std::string_view word = words[i];
        if (word.size() < 3 || !std::all_of(word.begin(), word.end(), IsLetter) ||
            (i > 0 && !(std::string_view(words[i - 1]) < word)))
            return false;
    }
    return true;
}
static_assert(IsInOrder(), "words of at least three lower-case letters, each once, in order");

/// `word` is in lower case.
bool BeginsWith(const char* text, const char* word) {
    for (; *word != '\0'; ++text, ++word) {
        if (LetterIndex(*text) != LetterIndex(*word))
            return false;
    }
    return true;
}

bool BeginsWithBadWord(const char* text) {
    const std::size_t first = LetterIndex(text[0]);
    const std::size_t second = first < letterCount ? LetterIndex(text[1]) : letterCount;
    if (second >= letterCount)
        return false;
    const std::size_t pair = PairIndex(first, second);
    for (std::size_t i = starts[pair]; i < starts[pair + 1]; ++i) {
        if (BeginsWith(text + 2, words[i] + 2))
            return true;
    }
    return false;
}

} // namespace

bool HasBadWord(char* text) {
    const vtr::CharacterSteps steps;
    for (const char* p = text; p != nullptr && *p != '\0'; p += steps.Length(p)) {
        if (BeginsWithBadWord(p))
            return true;
    }
    return false;
}
