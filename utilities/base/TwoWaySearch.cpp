#include "utilities/base/TwoWaySearch.h"

namespace vtr {

TwoWaySearch::TwoWaySearch(const CharacterReader& characters, const char* wanted, std::size_t size,
                           std::size_t& steps)
    : reader(characters), find(wanted), findEnd(wanted + size), read(steps) {
    // The later of the two cuts, by one order of characters and by the reverse, is the one.
    const Cut one = GreatestEnd(/*descending=*/false);
    const Cut other = GreatestEnd(/*descending=*/true);
    cut = one.place > other.place ? one.place : other.place;
    shift = one.place > other.place ? one.period : other.period;
    count = Distance(find, findEnd);
    before = Distance(find, cut);
    known = 0;
    remember = find;
    const char* later = Skip(find, findEnd, shift);
    if (Agree(find, cut, later, findEnd)) {
        known = count - shift;
        remember = Skip(find, findEnd, known);
    } else {
        shift = (before > count - before ? before : count - before) + 1;
    }
}

const char* TwoWaySearch::Next(const char*& text, const char* end, const char* stop) {
    const char* at = Skip(text, end, before);
    bool remembers = false;
    while (text < stop) {
        const std::size_t compared = remembers && known > before ? known : before;
        const char* wanted = remembers && known > before ? remember : cut;
        std::size_t matched = 0;
        bool differs = false;
        for (; wanted < findEnd && at < end && !differs; ++matched)
            differs = Read(wanted, findEnd) != Read(at, end);
        if (differs) {
            text = Skip(text, end, compared - before + matched);
            remembers = false;
            continue;
        }
        if (wanted < findEnd)
            break;
        const bool partly = remembers && known < before;
        if ((remembers && !partly) ||
            Agree(partly ? remember : find, cut, partly ? Skip(text, end, known) : text, end))
            return text;
        text = Skip(text, end, shift);
        at = Skip(at, end, shift + (known > before ? known : before) - count);
        remembers = known > 0;
    }
    if (text < stop)
        text = end;
    return nullptr;
}

/// The greatest of all ends of the wanted text, and its period.
TwoWaySearch::Cut TwoWaySearch::GreatestEnd(bool descending) {
    const char* greatest = find;
    const char* rival = Skip(find, findEnd, 1);
    const char* own = greatest;
    const char* others = rival;
    std::size_t distance = 1; // from the greatest to the rival
    std::size_t period = 1;
    std::size_t matched = 0;
    while (others < findEnd) {
        const unsigned a = Read(own, findEnd);
        const unsigned b = Read(others, findEnd);
        ++matched;
        if (a == b) {
            if (matched < period)
                continue;
            distance += matched;
            rival = others;
        } else if ((b < a) != descending) {
            distance += matched;
            period = distance;
            rival = others;
        } else {
            greatest = rival;
            rival = Skip(rival, findEnd, 1);
            distance = period = 1;
        }
        own = greatest;
        others = rival;
        matched = 0;
    }
    return {greatest, period};
}

unsigned TwoWaySearch::Read(const char*& text, const char* end) {
    ++read;
    return reader.Read(text, end);
}

const char* TwoWaySearch::Skip(const char* text, const char* end, std::size_t characters) {
    read += characters;
    for (; characters > 0 && text < end; --characters)
        text += reader.Step(text, end);
    return text;
}

std::size_t TwoWaySearch::Distance(const char* text, const char* end) {
    std::size_t characters = 0;
    for (; text < end; text = Skip(text, end, 1))
        ++characters;
    return characters;
}

/// Whether [a, aEnd) is what `b` begins with.
bool TwoWaySearch::Agree(const char* a, const char* aEnd, const char* b, const char* bEnd) {
    while (a < aEnd) {
        if (b == bEnd || Read(a, aEnd) != Read(b, bEnd))
            return false;
    }
    return true;
}

} // namespace vtr
