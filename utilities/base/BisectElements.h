#ifndef VTRUTILS_BASE_BISECTELEMENTS_H
#define VTRUTILS_BASE_BISECTELEMENTS_H

#include "common/Require.h"
#include "utilities/Fields.h"

#include <xmmintrin.h>

namespace vtr {

/// The element with the greatest sort value that is not above `value`, any of equal ones, or 0 if
/// all are above it. Expects ascending sort values; on others it ends, at some element. Private to
/// the library. Immutable and safe. Requires: count > 1.
template <class Value>
int BisectElements(const Element<Value>* block, int count, Value value) {
    VTR_REQUIRE(count > 1);
    // The part that is left, told by its start and length so that narrowing it takes no branch,
    // which would be guessed wrong every other time.
    unsigned low = 0;
    unsigned length = static_cast<unsigned>(count);
    unsigned half = length / 2;
    do {
        // Whichever half is left, what it is compared with next is on its way.
        _mm_prefetch(reinterpret_cast<const char*>(block + low + half / 2), _MM_HINT_T0);
        _mm_prefetch(reinterpret_cast<const char*>(block + low + half + half / 2), _MM_HINT_T0);
        const Value middle = block[low + half].sortValue;
        if (middle == value)
            break;
        const unsigned above = value >= middle ? 1 : 0;
        low += half & (0 - above);
        length = half + (above & length);
        half = length / 2;
    } while (half != 0);
    const int found = static_cast<int>(low + half);
    return found + 1 < count && block[found + 1].sortValue == value ? found + 1 : found;
}

} // namespace vtr

#endif
