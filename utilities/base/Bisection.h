#ifndef VTRUTILS_BASE_BISECTION_H
#define VTRUTILS_BASE_BISECTION_H

/// Looking up an item in a sorted list. Private to the library. Immutable and safe.

namespace vtr {

/// The index of an item for which `compare(index)` is 0, or -1. It is negative for items that come
/// before that item, and positive for those after it. Looks at `first` first, or in the middle if
/// that is out of range. Requires: count <= INT_MAX.
template <class Compare>
int Bisect(unsigned count, unsigned first, Compare compare) {
    unsigned low = 0;
    unsigned high = count;
    unsigned i = first < count ? first : count / 2;
    for (; low < high; i = low + (high - low) / 2) {
        const int order = compare(i);
        if (order == 0)
            return static_cast<int>(i);
        if (order < 0)
            low = i + 1;
        else
            high = i;
    }
    return -1;
}

} // namespace vtr

#endif
