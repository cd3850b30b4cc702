#ifndef VTRUTILS_BASE_TEXTFINDER_H
#define VTRUTILS_BASE_TEXTFINDER_H

#include "utilities/base/ByteSearch.h"
#include "utilities/base/CharacterReader.h"

#include <cstring>

namespace vtr {

/// Finds one text, which is not empty, in others, by the rules of one search, in time linear in
/// both and without memory of its own. Private to the library. Immutable and safe.
class TextFinder {
public:
    TextFinder(const char* wanted, bool exactCase, Characters characters)
        : find(wanted), length(std::strlen(wanted)), reader(exactCase, characters) {}

    std::size_t Length() const { return length; }

    /// The bytes of the character at `text`, which ends at `end`.
    std::size_t Step(const char* text, const char* end) const { return reader.Step(text, end); }

    /// The first occurrence in [text, end), or null. Adds to `steps` about how many characters were
    /// read.
    const char* Next(const char* text, const char* end, std::size_t& steps) const;
    const char* Next(const char* text, const char* end) const {
        std::size_t steps = 0;
        return Next(text, end, steps);
    }

    /// How many occurrences there are, none overlapping another; at most `most`.
    std::size_t Count(const char* text, const char* end, std::size_t most) const {
        std::size_t hits = 0;
        for (const char* hit; hits < most && (hit = Next(text, end)) != nullptr; ++hits)
            text = hit + length;
        return hits;
    }

private:
    template <bool bytes>
    const char* Search(const char* text, const char* end, std::size_t& steps) const;
    const char* NextPlace(const char* text, const char* end) const;
    std::size_t Agreeing(const char* text, const char* end) const;
    /// As `TwoWaySearch::Next`, in a part of the text that is long beside the wanted one.
    const char* NextInStretch(const char*& text, const char* end, std::size_t& steps) const;

    const char* find;
    std::size_t length;
    CharacterReader reader;
};

} // namespace vtr

#endif
