#ifndef VTRUTILS_CONTAINERS_MYLIST_H
#define VTRUTILS_CONTAINERS_MYLIST_H

#include "utilities/Export.h"
#include "utilities/Fields.h"
#include "utilities/system/locks/Lock.h"

#include <cstddef>

struct _tNode_t {
    void* item; ///< never dereferenced
    long long sortValue;
    _tNode_t* next; ///< null at the tail
};
static_assert(sizeof(_tNode_t) == 24 && offsetof(_tNode_t, sortValue) == 8 &&
              offsetof(_tNode_t, next) == 16);

/// A singly linked list of item pointers, each with a 64-bit sort value, that remembers the node it
/// reached last: a walk by ascending index costs one step a call. Items are never dereferenced or
/// freed.
///
/// Insertions return -1, with nothing changed, when memory runs out, and throw
/// `std::length_error("list too long")` at the largest `int`. Searches write to their out-pointers,
/// all of which may be null, as follows: nothing in an empty list, an index of -1 without a result.
/// Thread-safety: locked by itself; what hangs together takes one call. A node that was handed out
/// is valid until it is removed.
class VTRUTILS_API CMyList {
public:
    CMyList() noexcept;
    /// Has nodes and a lock of its own; empty when memory runs out.
    CMyList(const CMyList& other) noexcept;
    CMyList& operator=(const CMyList& other) noexcept;
    virtual ~CMyList();

    /// Inserts in ascending order, behind or in front of equal values, and returns the index.
    int AddSorted(void* item, long long sortValue, bool afterEquals);

    /// Returns the index.
    int AppendToTail(void* item, long long sortValue);
    int InsertNewHead(void* item, long long sortValue);

    /// Inserts with sort value 0 behind the node at this index, beyond the end behind the last, for
    /// a negative index behind the first, and returns the new node's index.
    int InsertAfter(void* item, int index);

    /// Null when out of range.
    void* Index(int index, long long* sortValueOut) noexcept;
    _tNode_t* NodeByIndex(int index) noexcept;

    /// The last item with exactly this value; the first, when the list starts with it.
    void* ElemBySortValue(long long value, int* indexOut) noexcept;

    /// The last item whose value is not above `value`; the first item, when its value is not below.
    void* PrevElemBySortValue(long long value, int* indexOut, long long* sortValueOut) noexcept;

    /// 1 or 0.
    int Member(void* item) noexcept;

    /// Removes the first node with this item. False when there is none.
    bool Remove(void* item) noexcept;

    /// False when the list does not hold the node, which may be any pointer.
    bool RemoveByNode(_tNode_t* node) noexcept;

    /// Nothing when out of range.
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
