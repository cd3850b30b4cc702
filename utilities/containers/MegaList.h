#ifndef VTRUTILS_CONTAINERS_MEGALIST_H
#define VTRUTILS_CONTAINERS_MEGALIST_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

#include <cstddef>

struct _tMegaNode_t {
    void* item; ///< never dereferenced
    double sortValue;
    _tMegaNode_t* next; ///< null at the tail
};
static_assert(sizeof(_tMegaNode_t) == 24 && offsetof(_tMegaNode_t, sortValue) == 8 &&
              offsetof(_tMegaNode_t, next) == 16);

/// A singly linked list of item pointers, each with a sort value of type double, that remembers the
/// node it reached last: a walk by ascending index costs one step a call. Items are never
/// dereferenced or freed.
///
/// Insertions return -1, with nothing changed, when memory runs out, and throw
/// `std::length_error("list too long")` at the largest `int`. Searches write to their out-pointers,
/// all of which may be null, as follows: nothing in an empty list, an index of -1 without a result.
/// Thread-safety: one thread at a time, reading included: it moves the cursor.
class VTRUTILS_API CMegaList {
public:
    CMegaList() noexcept;
    /// Has nodes of its own; empty when memory runs out.
    CMegaList(const CMegaList& other) noexcept;
    CMegaList& operator=(const CMegaList& other) noexcept;
    virtual ~CMegaList();

    /// Inserts in ascending order, behind or in front of equal values, and returns the index.
    int AddSorted(void* item, double sortValue, bool afterEquals);

    /// Returns the index.
    int AppendToTail(void* item, double sortValue);
    int InsertNewHead(void* item, double sortValue);

    /// Inserts behind the node at this index, beyond the end behind the last, for a negative index
    /// behind the first, and returns the new node's index.
    int InsertAfter(void* item, double sortValue, int index);

    /// Null when out of range.
    VTRUTILS_INLINE void* Index(int index, double* sortValueOut) noexcept {
        const _tMegaNode_t* node = nodes.WalkTo(index);
        if (node == nullptr)
            return nullptr;
        if (sortValueOut != nullptr)
            *sortValueOut = node->sortValue;
        return node->item;
    }
    VTRUTILS_INLINE _tMegaNode_t* NodeByIndex(int index) noexcept { return nodes.WalkTo(index); }

    /// The last item with exactly this value; the first, when the list starts with it.
    void* ElemBySortValue(double value, int* indexOut) noexcept;

    /// The last item whose value is not above `value`; the first item, when its value is not below.
    void* PrevElemBySortValue(double value, int* indexOut, double* sortValueOut) noexcept;

    /// 1 or 0.
    int Member(void* item) noexcept;

    /// Removes the first node with this item. False when there is none.
    bool Remove(void* item) noexcept;

    /// False when the list does not hold the node, which may be any pointer.
    bool RemoveByNode(_tMegaNode_t* node) noexcept;

    /// Nothing when out of range.
    void RemoveByIndex(int index) noexcept;
    void RemoveAll() noexcept;
    VTRUTILS_INLINE int NumNodes() noexcept { return nodes.count; }

    /// False for values that do not ascend strictly, and for a first one of -2147483647 or below.
    bool VerifyIsSorted() noexcept;

private:
    friend struct vtr::Internals<CMegaList>;

    vtr::NodeFields<_tMegaNode_t> nodes;
};

#endif
