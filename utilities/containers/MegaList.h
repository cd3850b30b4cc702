#ifndef VTRUTILS_CONTAINERS_MEGALIST_H
#define VTRUTILS_CONTAINERS_MEGALIST_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

#include <cstddef>

/// A node of a `CMegaList`.
struct _tMegaNode_t {
    void* item;         ///< never dereferenced
    double sortValue;   ///< the list's order
    _tMegaNode_t* next; ///< null at the tail
};
static_assert(sizeof(_tMegaNode_t) == 24 && offsetof(_tMegaNode_t, sortValue) == 8 &&
              offsetof(_tMegaNode_t, next) == 16);

/// A singly linked list of item pointers, each with a sort value of type double, that remembers the
/// node it reached last: a walk by ascending index costs one step per call. Items are never
/// dereferenced or freed.
///
/// Insertions return -1, with nothing changed, when memory runs out, and throw
/// `std::length_error("list too long")` at the largest `int`. Out-pointers may be null. A search in
/// an empty list does not write to them; one without a result writes an index of -1 and nothing
/// else.
/// Thread-safety: one thread at a time, reading included: it moves the cursor.
class VTRUTILS_API CMegaList {
public:
    CMegaList() noexcept;
    /// Has nodes of its own; empty when memory runs out.
    CMegaList(const CMegaList& other) noexcept;
    CMegaList& operator=(const CMegaList& other) noexcept;
    virtual ~CMegaList();

    /// Inserts in ascending order, after or before equal values, and returns the index.
    int AddSorted(void* item, double sortValue, bool afterEquals);

    /// Returns the index.
    int AppendToTail(void* item, double sortValue);
    int InsertNewHead(void* item, double sortValue);

    /// Inserts an item after the node at this index, and returns the new node's index. A negative
    /// index counts as 0, one beyond the end as that of the last node.
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

    /// The last item with exactly this value, or the first if the list starts with that value.
    void* ElemBySortValue(double value, int* indexOut) noexcept;

    /// The last item whose value is not above `value`, or the first item if its value is not below
    /// it.
    void* PrevElemBySortValue(double value, int* indexOut, double* sortValueOut) noexcept;

    /// 1 or 0.
    int Member(void* item) noexcept;

    /// Removes the first node with this item. False when there is none.
    bool Remove(void* item) noexcept;

    /// False when the list does not hold the node, which may be any pointer.
    bool RemoveByNode(_tMegaNode_t* node) noexcept;

    /// Does nothing if it is out of range.
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
