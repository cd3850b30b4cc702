#ifndef VTRUTILS_CONTAINERS_MYARRAYLIST_H
#define VTRUTILS_CONTAINERS_MYARRAYLIST_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

/// Which element answers a search by sort value.
enum _tscanDir { scanAtOrBefore = 0, scanAtOrAfter = 1, scanExact = 2 };

/// An array of item pointers, each with a 64-bit sort value, in one block that grows and shrinks in
/// steps. Items are never dereferenced or freed; two are the same when their pointers are equal.
///
/// When memory runs out, an insertion changes nothing. Out-pointers may be null. A search in an
/// empty list does not write to them; one without a result writes an index of -1 and nothing else.
/// Binary searches expect ascending sort values.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CMyArrayList {
public:
    CMyArrayList() noexcept;
    /// Slots by which the block grows and shrinks; 0 counts as 1.
    explicit CMyArrayList(unsigned int step) noexcept;
    /// Takes over step, sorted flag and elements; empty when memory runs out.
    CMyArrayList(const CMyArrayList& other) noexcept;
    CMyArrayList& operator=(const CMyArrayList& other) noexcept;
    virtual ~CMyArrayList();

    /// Inserts in ascending order and returns the index: before all elements if the value is not
    /// above the first, after all if it is not below the last, otherwise before its equals. The
    /// sorted flag stays as it is. If memory runs out, returns the index that the element would
    /// have had, or one less if that is at the end of a list with elements.
    int AddSorted(void* item, long long sortValue) noexcept;

    /// Returns `NumNodes()` - 1: the new element's index, or that of the last one if memory runs
    /// out. The list counts as sorted afterwards only if it was empty.
    VTRUTILS_INLINE int AppendToTail(void* item, long long sortValue) noexcept {
        const int count = elements.count;
        const bool hasRoom = elements.block != nullptr && count < elements.capacity;
        if (!hasRoom && Grow(count + 1) == 0)
            return count - 1;
        sorted = count == 0;
        elements[count] = {item, sortValue};
        elements.count = count + 1;
        return count;
    }

    /// Returns 0. The list does not count as sorted afterwards.
    int InsertNewHead(void* item, long long sortValue) noexcept;

    /// Does and answers as `InsertNewHead` in an empty list and as `AppendToTail` for an index of
    /// `NumNodes()` or more. A negative index counts as 0. Otherwise returns the index, or -1 when
    /// memory runs out; the list does not count as sorted afterwards.
    int InsertToIndex(int index, void* item, long long sortValue) noexcept;

    /// Null when out of range.
    VTRUTILS_INLINE void* Index(int index, long long* sortValueOut) noexcept {
        return elements.At(index, sortValueOut);
    }

    /// Requires: 0 <= index < NumNodes().
    VTRUTILS_INLINE void* FastIndex(int index) noexcept { return elements[index].item; }

    /// How many elements there are, and whether they count as sorted.
    VTRUTILS_INLINE int NumNodes() const noexcept { return elements.count; }
    VTRUTILS_INLINE bool IsSorted() const noexcept { return sorted; }

    /// Starts from what `PrevElemBySortValue` finds; without that, null. If its value is equal,
    /// `scanExact` yields it; `scanAtOrBefore` yields it in any case; `scanAtOrAfter` yields the
    /// first element after it whose value is not below `value`.
    void* ElemBySortValue(long long value, int* indexOut, _tscanDir dir) noexcept;

    /// The element with the greatest value not above `value`; among equals, the first in lists of 3
    /// to 24 elements. Where all are above it: null in lists of up to 24 elements, element 0 in
    /// longer ones.
    void* PrevElemBySortValue(long long value, int* indexOut, long long* sortValueOut) noexcept;

    /// The first and the last of the elements with exactly this value. `FirstOfValue` is null also
    /// when the search meets an element with a null item.
    void* FirstOfValue(long long value, int* indexOut) noexcept;
    void* LastOfValue(long long value, int* indexOut) noexcept;

    /// The first of the neighbours of this element that share its value. Null for an element with a
    /// null item.
    void* FirstOfValueAtIndex(int index, int* indexOut) noexcept;

    /// The index of the item, or -1. Lists of 26 elements or more look only among the elements with
    /// this value, if that is not negative; otherwise the whole list is looked through.
    int MemberIndex(void* item, long long sortValue) noexcept;

    /// 1 or 0, found as by `MemberIndex`.
    int Member(void* item, long long sortValue) noexcept;

    /// Looks as `MemberIndex` does and then through the whole list. False when not found.
    bool Remove(void* item, long long sortValue) noexcept;

    /// Does nothing if it is out of range.
    void RemoveByIndex(int index) noexcept;

    /// Frees the block; the list is sorted afterwards.
    void RemoveAll() noexcept;
    void RemoveAllButLeaveAllocation() noexcept;

    /// Wraps around at the ends of 64 bits.
    void AdjustAllSortValues(long delta) noexcept;

    /// Truncates towards zero. A result that does not fit in 64 bits becomes the nearest value that
    /// does, and one that is not a number becomes 0.
    void ScaleAllSortValues(double factor) noexcept;

    /// Sets the sorted flag as the values are now, and returns it. A first value below -2147483647
    /// counts as unsorted.
    bool VerifyListIsSorted() noexcept;

    /// Takes over elements and sorted flag, not the step; empty when memory runs out.
    void Copy(const CMyArrayList& other) noexcept;

private:
    friend struct vtr::Internals<CMyArrayList>;

    /// 0, with nothing changed, when there is no memory for so many elements. A function of the
    /// class because `AppendToTail`, which is inline, calls it.
    int Grow(int needed) noexcept;

    vtr::ElementFields<long long> elements;
    unsigned int growStep;
    bool sorted;
};

#endif
