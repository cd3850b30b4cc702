#ifndef VTRUTILS_CONTAINERS_MYLIST_H
#define VTRUTILS_CONTAINERS_MYLIST_H

#include "utilities/Export.h"
#include "utilities/Fields.h"
#include "utilities/system/locks/Lock.h"

#include <cstddef>

/// A node of a `CMyList`.
struct _tNode_t {
    void* item;          ///< never dereferenced
    long long sortValue; ///< the list's order
    _tNode_t* next;      ///< null at the tail
};
static_assert(sizeof(_tNode_t) == 24 && offsetof(_tNode_t, sortValue) == 8 &&
              offsetof(_tNode_t, next) == 16);

/// A singly linked list of item pointers, each with a 64-bit sort value, that remembers the node it
/// reached last: a walk by ascending index costs one step per call. Items are never dereferenced or
/// freed.
///
/// Insertions return -1, with nothing changed, when memory runs out, and throw
/// `std::length_error("list too long")` at the largest `int`. Out-pointers may be null. A search in
/// an empty list does not write to them; one without a result writes an index of -1 and nothing
/// else.
/// Thread-safety: locked by itself, for each call alone. A node that was handed out is valid until
/// it is removed.
class VTRUTILS_API CMyList {
public:
    CMyList() noexcept;
    /// Has nodes and a lock of its own; empty when memory runs out.
    CMyList(const CMyList& other) noexcept;
    CMyList& operator=(const CMyList& other) noexcept;
    virtual ~CMyList();

    /// Inserts in ascending order, after or before equal values, and returns the index.
    int AddSorted(void* item, long long sortValue, bool afterEquals);

    /// Returns the index.
    int AppendToTail(void* item, long long sortValue);
    int InsertNewHead(void* item, long long sortValue);

    /// Inserts an item with sort value 0 after the node at this index, and returns the new node's
    /// index. A negative index counts as 0, one beyond the end as that of the last node.
    int InsertAfter(void* item, int index);

    /// Null when out of range.
    void* Index(int index, long long* sortValueOut) noexcept;
    _tNode_t* NodeByIndex(int index) noexcept;

    /// The last item with exactly this value, or the first if the list starts with that value.
    void* ElemBySortValue(long long value, int* indexOut) noexcept;

    /// The last item whose value is not above `value`, or the first item if its value is not below
    /// it.
    void* PrevElemBySortValue(long long value, int* indexOut, long long* sortValueOut) noexcept;

    /// 1 or 0.
    int Member(void* item) noexcept;

    /// Removes the first node with this item. False when there is none.
    bool Remove(void* item) noexcept;

    /// False when the list does not hold the node, which may be any pointer.
    bool RemoveByNode(_tNode_t* node) noexcept;

    /// Does nothing if it is out of range.
    void RemoveByIndex(int index) noexcept;
    void RemoveAll() noexcept;
    int NumNodes() noexcept;

    /// False for values that do not ascend strictly, and for a first one of -2147483647 or below.
    bool VerifyIsSorted() noexcept;

private:
    friend struct vtr::Internals<CMyList>;

    mutable CLock lock;
    vtr::NodeFields<_tNode_t> nodes;
};

#endif
