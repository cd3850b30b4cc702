#ifndef VTRUTILS_BASE_TEXTFINDER_H
#define VTRUTILS_BASE_TEXTFINDER_H

#include "utilities/base/ByteSearch.h"
#include "utilities/base/MultibyteText.h"
#include "utilities/base/SameText.h"

#include <cctype>
#include <cstring>

namespace vtr {

enum class Characters { ofCodePage, singleBytes };

/// Finds one text, which is not empty, in others, by the rules of one search. Private to the
/// library. Immutable and safe.
class TextFinder {
public:
    TextFinder(const char* wanted, bool exactCase, Characters characters)
        : find(wanted), length(std::strlen(wanted)), caseSensitive(exactCase),
          multibyte(characters == Characters::ofCodePage && steps.Multibyte()) {}

    std::size_t Length() const { return length; }

    /// The bytes of the character at `text`, which ends at `end`.
    std::size_t Step(const char* text, const char* end) const {
        return multibyte ? steps.Length(text, static_cast<std::size_t>(end - text)) : 1;
    }

    /// The first occurrence in [text, end), or null.
    const char* Next(const char* text, const char* end) const {
        while (static_cast<std::size_t>(end - text) >= length) {
            if (caseSensitive && !multibyte) {
                const std::size_t places = static_cast<std::size_t>(end - text) - length + 1;
                text = FindByte(text, text + places, *find);
                if (text == nullptr)
                    return nullptr;
            }
            if (MayBegin(*text) && Matches(text, end))
                return text;
            text += Step(text, end);
        }
        return nullptr;
    }

    /// How many occurrences there are, none overlapping another; at most `most`.
    std::size_t Count(const char* text, const char* end, std::size_t most) const {
        std::size_t hits = 0;
        for (const char* hit; hits < most && (hit = Next(text, end)) != nullptr; ++hits)
            text = hit + length;
        return hits;
    }

private:
    /// False, at the price of one comparison, for most characters that begin no occurrence: the two
    /// cases of an ASCII letter differ in one bit.
    bool MayBegin(char first) const {
        static constexpr int caseBit = 'a' ^ 'A';
        if (caseSensitive)
            return first == *find;
        const bool ascii = static_cast<signed char>(first | *find) >= 0;
        return !ascii || ((first ^ *find) & ~caseBit) == 0;
    }

    bool Matches(const char* text, const char* end) const {
        if (caseSensitive && !multibyte)
            return std::memcmp(text, find, length) == 0;
        const char* wanted = find;
        const char* wantedEnd = find + length;
        while (wanted < wantedEnd) {
            const std::size_t step = Step(wanted, wantedEnd);
            if (step != Step(text, end) || !SameCharacter(text, wanted, step))
                return false;
            text += step;
            wanted += step;
        }
        return true;
    }

    bool SameCharacter(const char* a, const char* b, std::size_t size) const {
        if (caseSensitive)
            return std::memcmp(a, b, size) == 0;
        if (size == 1)
            return std::tolower(static_cast<unsigned char>(*a)) ==
                   std::tolower(static_cast<unsigned char>(*b));
        return FoldCharacter(a, multibyte).code == FoldCharacter(b, multibyte).code;
    }

    const char* find;
    std::size_t length;
    bool caseSensitive;
    CharacterSteps steps;
    bool multibyte;
};

} // namespace vtr

#endif
