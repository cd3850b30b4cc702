#include "utilities/base/TextFinder.h"
#include "utilities/text/strings/StringFunctions.h"

#include <cstring>

using vtr::Characters;
using Finder = vtr::TextFinder;

namespace {

/// Where a search continues after a hit: an empty replacement lets one character pass unsearched,
/// because the search position has moved past the byte that closes the gap.
const char* BehindHit(const Finder& finder, const char* hit, const char* end,
                      bool emptyReplacement) {
    const char* behind = hit + finder.Length();
    return emptyReplacement && behind < end ? behind + finder.Step(behind, end) : behind;
}

/// Reads [in, end) and writes to `out`, which may be the same place or lie before it, far enough
/// for `most` replacements.
void RewriteHits(const Finder& finder, const char* in, const char* end, char* out,
                 const char* replacement, std::size_t most) {
    const std::size_t replacementLength = std::strlen(replacement);
    for (std::size_t hits = 0; hits < most; ++hits) {
        const char* hit = finder.Next(in, end);
        if (hit == nullptr)
            break;
        const std::size_t before = static_cast<std::size_t>(hit - in);
        std::memmove(out, in, before);
        std::memcpy(out + before, replacement, replacementLength);
        out += before + replacementLength;
        in = hit + finder.Length();
        const char* next = BehindHit(finder, hit, end, replacementLength == 0);
        while (in < next)
            *out++ = *in++;
    }
    std::memmove(out, in, static_cast<std::size_t>(end - in) + 1);
}

void ReplaceAll(char* text, const char* find, const char* replacement, std::size_t bufferSize,
                bool caseSensitive, Characters characters) {
    if (text == nullptr || *text == '\0' || find == nullptr || *find == '\0' || bufferSize < 2)
        return;
    if (replacement == nullptr)
        replacement = "";
    const Finder finder(find, caseSensitive, characters);
    const std::size_t length = std::strlen(text);
    if (finder.Length() > length || length >= bufferSize)
        return;
    const std::size_t replacementLength = std::strlen(replacement);
    if (replacementLength <= finder.Length()) {
        RewriteHits(finder, text, text + length, text, replacement, length);
        return;
    }
    // A growing text is moved to the end of its final place first, so that one pass from the left
    // never writes over what it has yet to read.
    const std::size_t growth = replacementLength - finder.Length();
    const std::size_t fitting = (bufferSize - 1 - length) / growth;
    const std::size_t hits = finder.Count(text, text + length, fitting);
    if (hits == 0)
        return;
    char* moved = text + hits * growth;
    std::memmove(moved, text, length + 1);
    RewriteHits(finder, moved, moved + length, text, replacement, hits);
}

} // namespace

void SearchAndReplaceAll(char* text, const char* find, const char* replacement, unsigned bufferSize,
                         bool caseSensitive) {
    ReplaceAll(text, find, replacement, bufferSize, caseSensitive, Characters::ofCodePage);
}

void SearchAndReplaceAllSingleByte(char* text, const char* find, const char* replacement,
                                   unsigned bufferSize, bool caseSensitive) {
    ReplaceAll(text, find, replacement, bufferSize, caseSensitive, Characters::singleBytes);
}

void ReplaceSubStrings(const char* source, char* destination, int destinationSize, const char* find,
                       const char* replacement) {
    if (destination == nullptr || destinationSize < 1)
        return;
    std::memset(destination, 0, static_cast<std::size_t>(destinationSize));
    if (source == nullptr || find == nullptr || *find == '\0' || replacement == nullptr)
        return;
    const Finder finder(find, /*exactCase=*/true, Characters::singleBytes);
    const std::size_t replacementLength = std::strlen(replacement);
    const char* end = source + std::strlen(source);
    char* out = destination;
    const char* outEnd = destination + destinationSize - 1;
    const auto write = [&](const char* from, std::size_t length) {
        const std::size_t room = static_cast<std::size_t>(outEnd - out);
        const std::size_t fitting = length < room ? length : room;
        std::memcpy(out, from, fitting);
        out += fitting;
    };
    while (out < outEnd && source < end) {
        const char* hit = finder.Next(source, end);
        write(source, static_cast<std::size_t>((hit != nullptr ? hit : end) - source));
        if (hit == nullptr)
            break;
        write(replacement, replacementLength);
        source = hit + finder.Length();
    }
}

void ReplaceTextA(char* text, unsigned position, unsigned length, const char* replacement) {
    if (text == nullptr || *text == '\0' || replacement == nullptr || *replacement == '\0')
        return;
    const std::size_t textLength = std::strlen(text);
    if (position > textLength)
        return;
    const std::size_t removed = length < textLength - position ? length : textLength - position;
    const std::size_t added = std::strlen(replacement);
    char* place = text + position;
    std::memmove(place + added, place + removed, textLength - position - removed + 1);
    std::memcpy(place, replacement, added);
}

char* StrChrPos(char* text, char ch, int* position) {
    char* found = text != nullptr && ch != '\0' ? std::strchr(text, ch) : nullptr;
    if (position != nullptr)
        *position = found != nullptr ? static_cast<int>(found - text) : -1;
    return found;
}

bool StringContainsCharsFromSetOnly(const char* text, const char* set) {
    if (text == nullptr || *text == '\0' || set == nullptr || *set == '\0')
        return false;
    return text[std::strspn(text, set)] == '\0';
}
