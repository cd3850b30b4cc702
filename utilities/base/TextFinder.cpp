#include "utilities/base/TextFinder.h"

#include "utilities/base/CaseBit.h"
#include "utilities/base/TwoWaySearch.h"

#include <bit>
#include <climits>
#include <cstdint>

namespace vtr {

namespace {

// Comparing at each place in turn is the fastest way in ordinary text. Where it has compared more
// than this, the next stretch of the text is searched in the way that is linear for any text.
constexpr std::size_t freeSteps = 64;
constexpr std::size_t stepsPerByte = 4;
constexpr std::size_t stretchPerLength = 16;

/// How many bytes the two have in common at the start, at most `length`.
std::size_t CommonBytes(const char* a, const char* b, std::size_t length) {
    std::size_t same = 0;
    for (std::uint64_t left, right; length - same >= sizeof left; same += sizeof left) {
        std::memcpy(&left, a + same, sizeof left);
        std::memcpy(&right, b + same, sizeof right);
        if (left != right)
            return same + static_cast<std::size_t>(std::countr_zero(left ^ right)) / CHAR_BIT;
    }
    while (same < length && a[same] == b[same])
        ++same;
    return same;
}

} // namespace

const char* TextFinder::Next(const char* text, const char* end, std::size_t& steps) const {
    return reader.ExactBytes() ? Search</*bytes=*/true>(text, end, steps)
                               : Search</*bytes=*/false>(text, end, steps);
}

template <bool bytes>
const char* TextFinder::Search(const char* text, const char* end, std::size_t& steps) const {
    const char* from = text;
    std::size_t compared = 0;
    while (static_cast<std::size_t>(end - text) >= length) {
        text = bytes ? FindByte(text, end - length + 1, *find) : NextPlace(text, end);
        if (text == nullptr)
            break;
        const std::size_t same = bytes ? CommonBytes(text, find, length) : Agreeing(text, end);
        if (same == length) {
            steps += compared + same;
            return text;
        }
        compared += same + 1;
        text += bytes ? 1 : Step(text, end);
        if (compared <= freeSteps + stepsPerByte * static_cast<std::size_t>(text - from))
            continue;
        const char* hit = NextInStretch(text, end, steps);
        steps += compared;
        if (hit != nullptr)
            return hit;
        from = text;
        compared = 0;
    }
    steps += compared;
    return nullptr;
}

const char* TextFinder::NextInStretch(const char*& text, const char* end,
                                      std::size_t& steps) const {
    TwoWaySearch search(reader, find, length, steps);
    const std::size_t rest = static_cast<std::size_t>(end - text);
    const std::size_t stretch = rest / stretchPerLength > length ? length * stretchPerLength : rest;
    return search.Next(text, end, text + stretch);
}

/// The first place where the wanted text may begin, or null.
const char* TextFinder::NextPlace(const char* text, const char* end) const {
    const char* stop = end - length + 1;
    const CaseFilter filter(*find, reader.ExactCase());
    if (!reader.Multibyte()) {
        while (text < stop && !filter.Passes(*text))
            ++text;
    } else {
        while (text < stop && !filter.Passes(*text))
            text += Step(text, end);
    }
    return text < stop ? text : nullptr;
}

/// How many bytes of the wanted text the text begins with, in whole characters.
std::size_t TextFinder::Agreeing(const char* text, const char* end) const {
    const char* wanted = find;
    const char* wantedEnd = find + length;
    while (wanted < wantedEnd) {
        const char* next = wanted;
        if (reader.Read(next, wantedEnd) != reader.Read(text, end))
            break;
        wanted = next;
    }
    return static_cast<std::size_t>(wanted - find);
}

} // namespace vtr
