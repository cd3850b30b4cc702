#ifndef VTRUTILS_BASE_TWOWAYSEARCH_H
#define VTRUTILS_BASE_TWOWAYSEARCH_H

#include "utilities/base/CharacterReader.h"

namespace vtr {

/// The two-way search: linear time for any texts, and no memory of its own. It cuts the wanted text
/// where its local period is that of the whole, compares what follows the cut first, and moves on
/// by what that has shown. Texts are only ever read forwards, because characters of two bytes
/// cannot be read backwards. Private to the library. One thread at a time.
class TwoWaySearch {
public:
    /// `wanted` is not empty. Adds to `steps` how many characters are read, now and later.
    TwoWaySearch(const CharacterReader& characters, const char* wanted, std::size_t size,
                 std::size_t& steps);

    /// The first occurrence in [text, end) that begins before `stop`; null if there is none, with
    /// `text` at the first place that may still begin one.
    const char* Next(const char*& text, const char* end, const char* stop);

private:
    struct Cut {
        const char* place;
        std::size_t period; ///< of what follows, in characters
    };

    Cut GreatestEnd(bool descending);
    unsigned Read(const char*& text, const char* end);
    const char* Skip(const char* text, const char* end, std::size_t characters);
    std::size_t Distance(const char* text, const char* end);
    bool Agree(const char* a, const char* aEnd, const char* b, const char* bEnd);

    const CharacterReader& reader;
    const char* find;
    const char* findEnd;
    std::size_t& read;
    const char* cut;
    const char* remember; ///< what is before it still matches after a shift past a full match
    // In characters:
    std::size_t count;  ///< the whole
    std::size_t before; ///< before the cut
    std::size_t known;  ///< before `remember`
    std::size_t shift;  ///< after what follows the cut has matched
};

} // namespace vtr

#endif
