#ifndef VTRUTILS_CONTAINERS_MEGAARRAYLIST_H
#define VTRUTILS_CONTAINERS_MEGAARRAYLIST_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

/// Where an element goes among those of equal value: by default, before them.
enum _AddSortedLoc { addSortedDefault = 0, addSortedAfterEquals = 1, addSortedBeforeEquals = 2 };

/// An array of item pointers, each with a sort value of type double, in one block that grows and
/// shrinks by ten slots. Items are never dereferenced or freed; two are the same when their
/// pointers are equal. A value that is not a number equals no other, not even itself.
///
/// When memory runs out, an insertion changes nothing. Out-pointers may be null. A search in an
/// empty list does not write to them; one without a result writes an index of -1 and nothing else.
/// Binary searches expect ascending sort values.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CMegaArrayList {
public:
    CMegaArrayList() noexcept;
    /// Takes over the elements; empty when memory runs out.
    CMegaArrayList(const CMegaArrayList& other) noexcept;
    CMegaArrayList& operator=(const CMegaArrayList& other) noexcept;
    virtual ~CMegaArrayList();

    /// Inserts in ascending order and returns the index. If memory runs out, returns the index that
    /// the element would have had, or one less if its value is above the last one.
    int AddSorted(void* item, double sortValue, _AddSortedLoc where) noexcept;

    /// Returns `NumNodes()` - 1: the new element's index, or that of the last one if memory runs
    /// out.
    VTRUTILS_INLINE int AppendToTail(void* item, double sortValue) noexcept {
        const int count = elements.count;
        const bool hasRoom = elements.block != nullptr && count < elements.capacity;
        if (!hasRoom && Grow(count + 1) == 0)
            return count - 1;
        elements[count] = {item, sortValue};
        elements.count = count + 1;
        return count;
    }

    /// Returns 0.
    int InsertNewHead(void* item, double sortValue) noexcept;

    /// Does and answers as `InsertNewHead` in an empty list and as `AppendToTail` for an index of
    /// `NumNodes()` or more. A negative index counts as 0. Otherwise returns the index, or -1 when
    /// memory runs out.
    int InsertToIndex(int index, void* item, double sortValue) noexcept;

    /// Null when out of range, with a log line when there is no block.
    void* Index(int index, double* sortValueOut) noexcept;

    /// How many elements there are.
    VTRUTILS_INLINE int NumNodes() const noexcept { return elements.count; }

    /// An element with exactly this value.
    void* ElemBySortValue(double value, int* indexOut) noexcept;

    /// The element with the greatest value not above `value`; among equals, the first in lists of 3
    /// to 24 elements. Where all are above it: null in lists of up to 24 elements, element 0 in
    /// longer ones.
    void* PrevElemBySortValue(double value, int* indexOut, double* sortValueOut) noexcept;

    /// The first and the last of the elements with exactly this value. `FirstOfValue` is null also
    /// when the search meets an element with a null item.
    void* FirstOfValue(double value, int* indexOut) noexcept;
    void* LastOfValue(double value, int* indexOut) noexcept;

    /// The first of the neighbours of this element that share its value. Null for an element with a
    /// null item.
    void* FirstOfValueAtIndex(int index, int* indexOut) noexcept;

    /// The index of the item, or -1. With `useSortValue`, lists of 26 elements or more look only
    /// among the elements with this value, if that is not negative; otherwise the whole list is
    /// looked through.
    int GetIndexOfItem(void* item, double sortValue, bool useSortValue) noexcept;

    /// 1 or 0. But where only the elements with this value are looked at, the answer is the index,
    /// which may be 0, or 0 if the item is not found.
    int Member(void* item, double sortValue, bool useSortValue) noexcept;

    /// Looks as `GetIndexOfItem` does and then through the whole list. False when not found.
    bool Remove(void* item, double sortValue, bool useSortValue) noexcept;

    /// False when out of range.
    bool RemoveByIndex(int index) noexcept;

    /// Keeps or frees the block. Returns true.
    bool RemoveAll(bool keepAllocation) noexcept;

    /// Sets the value of the first element with this item, and leaves the element where it is.
    /// False if there is none.
    bool SetSortValue(void* item, double value) noexcept;

    /// False when out of range.
    bool SetSortValueByIndex(int index, double value) noexcept;

    /// Adds to, or multiplies, every value; nothing is moved.
    void AdjustAllSortValues(double delta) noexcept;
    void ScaleAllSortValues(double factor) noexcept;

    /// False, with a log line, when a value is below the one before it. Leaves the sorted flag
    /// alone.
    bool VerifyListIsSorted() noexcept;

    /// Sets the sorted flag, which nothing in the library reads.
    VTRUTILS_INLINE void ForceSorted() noexcept { sorted = true; }

    /// Takes over the elements; empty when memory runs out.
    void Copy(const CMegaArrayList& other) noexcept;

private:
    friend struct vtr::Internals<CMegaArrayList>;

    /// 0, with nothing changed, when there is no memory for so many elements. A function of the
    /// class because `AppendToTail`, which is inline, calls it.
    int Grow(int needed) noexcept;

    vtr::ElementFields<double> elements;
    bool sorted;
};

#endif
