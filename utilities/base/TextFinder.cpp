#include "utilities/base/TextFinder.h"

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
    const char* from = text;
    std::size_t compared = 0;
    while (static_cast<std::size_t>(end - text) >= length) {
        if (reader.ExactBytes()) {
            const std::size_t places = static_cast<std::size_t>(end - text) - length + 1;
            text = FindByte(text, text + places, *find);
            if (text == nullptr)
                return nullptr;
        }
        if (MayBegin(*text)) {
            const std::size_t same = Agreeing(text, end);
            compared += same + 1;
            steps += same + 1;
            if (same == length)
                return text;
        }
        text += Step(text, end);
        if (compared <= freeSteps + stepsPerByte * static_cast<std::size_t>(text - from))
            continue;
        const char* hit = NextInStretch(text, end, steps);
        if (hit != nullptr)
            return hit;
        from = text;
        compared = 0;
    }
    return nullptr;
}

const char* TextFinder::NextInStretch(const char*& text, const char* end,
                                      std::size_t& steps) const {
    TwoWaySearch search(reader, find, length, steps);
    const std::size_t rest = static_cast<std::size_t>(end - text);
    const std::size_t stretch = rest / stretchPerLength > length ? length * stretchPerLength : rest;
    return search.Next(text, end, text + stretch);
}

/// False, at the price of one comparison, for most characters that begin no occurrence: the two
/// cases of an ASCII letter differ in one bit.
bool TextFinder::MayBegin(char first) const {
    static constexpr int caseBit = 'a' ^ 'A';
    if (reader.ExactCase())
        return first == *find;
    const bool ascii = static_cast<signed char>(first | *find) >= 0;
    return !ascii || ((first ^ *find) & ~caseBit) == 0;
}

/// How many bytes of the wanted text the text begins with: whole characters, but where bytes are
/// compared.
std::size_t TextFinder::Agreeing(const char* text, const char* end) const {
    if (reader.ExactBytes())
        return CommonBytes(text, find, length);
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
