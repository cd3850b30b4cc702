#ifndef VTRUTILS_BASE_MERGESORT_H
#define VTRUTILS_BASE_MERGESORT_H

#include <cstdlib>
#include <cstring>

/// The order that the library gives to lists of names: bottom-up merging in which, of two equal
/// items, the one from the right-hand run comes first. Equal items therefore leave each sort in the
/// reverse of the order in which they entered it. Private to the library.

namespace vtr {

/// Merges the sorted runs [from, middle) and [middle, to) of `source` into `target`.
template <class T, class Less>
void MergeRuns(const T* source, T* target, unsigned from, unsigned middle, unsigned to,
               Less& less) {
    unsigned left = from;
    unsigned right = middle;
    for (unsigned out = from; out < to; ++out) {
        const bool takeLeft = right == to || (left < middle && less(source[left], source[right]));
        target[out] = takeLeft ? source[left++] : source[right++];
    }
}

/// Sorts `items` with `scratch` of the same length as second buffer; returns the one of the two
/// that holds the result.
template <class T, class Less>
T* MergeAllRuns(T* items, T* scratch, unsigned count, Less& less) {
    for (unsigned width = 1; width < count;
         width += width < count - width ? width : count - width) {
        for (unsigned from = 0; from < count;) {
            const unsigned middle = count - from < width ? count : from + width;
            const unsigned to = count - middle < width ? count : middle + width;
            MergeRuns(items, scratch, from, middle, to, less);
            from = to;
        }
        T* merged = scratch;
        scratch = items;
        items = merged;
    }
    return items;
}

/// The first position in the strictly ascending `items` whose item is not less than `item`.
template <class T, class Less>
unsigned LowerBound(const T* items, unsigned count, const T& item, Less& less) {
    unsigned low = 0;
    unsigned high = count;
    while (low < high) {
        const unsigned middle = low + (high - low) / 2;
        if (less(items[middle], item))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

/// `less(a, b)` is a strict weak order over two items, which may be moved as bytes. False, with the
/// order unchanged, when there is no memory for the temporary items. The strictly ascending head of
/// the list, in which no two items are equal, is merged as one run, and so a list that is in order
/// already costs one pass and one new item at the end of it a binary search more.
template <class T, class Less>
bool MergeSort(T* items, unsigned count, Less less) {
    constexpr std::size_t itemSize = sizeof(T); // NOLINT(bugprone-sizeof-expression): or pointers
    unsigned head = count == 0 ? 0 : 1;
    while (head < count && less(items[head - 1], items[head]))
        ++head;
    if (head == count)
        return true;
    if (count - head == 1) {
        const T last = items[head];
        const unsigned place = LowerBound(items, head, last, less);
        std::memmove(items + place + 1, items + place, (head - place) * itemSize);
        items[place] = last;
        return true;
    }
    T* scratch = static_cast<T*>(std::malloc(count * itemSize));
    if (scratch == nullptr)
        return false;
    T* tail = MergeAllRuns(items + head, scratch + head, count - head, less);
    if (tail != items + head)
        std::memcpy(items + head, tail, (count - head) * itemSize);
    MergeRuns(items, scratch, 0, head, count, less);
    std::memcpy(items, scratch, count * itemSize);
    std::free(scratch);
    return true;
}

} // namespace vtr

#endif
