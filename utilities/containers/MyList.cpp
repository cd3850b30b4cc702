#include "utilities/containers/MyList.h"

#include "utilities/base/ScopedLock.h"

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<CMyList> {
    static_assert(sizeof(CMyList) == 88);
    static_assert(offsetof(CMyList, lock) == 8);
    static_assert(offsetof(CMyList, chain) == 48);
};

using Locked = vtr::ScopedLock<CLock>;

CMyList::CMyList() noexcept = default;

CMyList::CMyList(const CMyList& other) noexcept {
    const Locked hold(other.lock);
    chain.Copy(other.chain);
}

CMyList& CMyList::operator=(const CMyList& other) noexcept {
    // One lock at a time: two lists may be assigned to each other on two threads.
    vtr::NodeChain<_tNode_t> copy;
    {
        const Locked hold(other.lock);
        copy.Copy(other.chain);
    }
    const Locked hold(lock);
    chain.Swap(copy);
    return *this;
}

CMyList::~CMyList() {
    CMyList::RemoveAll();
}

int CMyList::AddSorted(void* item, long long sortValue, bool afterEquals) {
    const Locked hold(lock);
    return chain.AddSorted(item, sortValue, afterEquals);
}

int CMyList::AppendToTail(void* item, long long sortValue) {
    const Locked hold(lock);
    return chain.AppendToTail(item, sortValue);
}

int CMyList::InsertNewHead(void* item, long long sortValue) {
    const Locked hold(lock);
    return chain.InsertNewHead(item, sortValue);
}

int CMyList::InsertAfter(void* item, int index) {
    const Locked hold(lock);
    return chain.InsertAfter(item, 0, index);
}

void* CMyList::Index(int index, long long* sortValueOut) noexcept {
    const Locked hold(lock);
    return chain.Index(index, sortValueOut);
}

_tNode_t* CMyList::NodeByIndex(int index) noexcept {
    const Locked hold(lock);
    return chain.NodeByIndex(index);
}

void* CMyList::ElemBySortValue(long long value, int* indexOut) noexcept {
    const Locked hold(lock);
    return chain.ElemBySortValue(value, indexOut);
}

void* CMyList::PrevElemBySortValue(long long value, int* indexOut,
                                   long long* sortValueOut) noexcept {
    const Locked hold(lock);
    return chain.PrevElemBySortValue(value, indexOut, sortValueOut);
}

int CMyList::Member(void* item) noexcept {
    const Locked hold(lock);
    return chain.Contains(item) ? 1 : 0;
}

bool CMyList::Remove(void* item) noexcept {
    const Locked hold(lock);
    return chain.Remove(item);
}

bool CMyList::RemoveByNode(_tNode_t* node) noexcept {
    const Locked hold(lock);
    return chain.RemoveByNode(node);
}

void CMyList::RemoveByIndex(int index) noexcept {
    const Locked hold(lock);
    chain.RemoveByIndex(index);
}

void CMyList::RemoveAll() noexcept {
    const Locked hold(lock);
    chain.RemoveAll();
}

int CMyList::NumNodes() noexcept {
    const Locked hold(lock);
    return chain.Count();
}

bool CMyList::VerifyIsSorted() noexcept {
    const Locked hold(lock);
    return chain.VerifyIsSorted();
}
