#include "utilities/containers/MyList.h"

#include "utilities/base/Layout.h"
#include "utilities/base/NodeChain.h"
#include "utilities/base/ScopedLock.h"

template <>
struct vtr::Internals<CMyList> {
    static_assert(sizeof(CMyList) == vtr::ByPointer(88, 52));
    VTR_FIELD_AT(CMyList, lock, 8, 4);
    VTR_FIELD_AT(CMyList, nodes, 48, 28);
};

using Chain = vtr::NodeChain<_tNode_t>;
using Locked = vtr::ScopedLock<CLock>;

CMyList::CMyList() noexcept = default;

CMyList::CMyList(const CMyList& other) noexcept {
    const Locked hold(other.lock);
    Chain(nodes).Copy(other.nodes);
}

CMyList& CMyList::operator=(const CMyList& other) noexcept {
    // One lock at a time: two lists may be assigned to each other on two threads.
    vtr::NodeFields<_tNode_t> copy;
    {
        const Locked hold(other.lock);
        Chain(copy).Copy(other.nodes);
    }
    {
        const Locked hold(lock);
        Chain(nodes).Swap(copy);
    }
    Chain(copy).RemoveAll();
    return *this;
}

CMyList::~CMyList() {
    CMyList::RemoveAll();
}

int CMyList::AddSorted(void* item, long long sortValue, bool afterEquals) {
    const Locked hold(lock);
    return Chain(nodes).AddSorted(item, sortValue, afterEquals);
}

int CMyList::AppendToTail(void* item, long long sortValue) {
    const Locked hold(lock);
    return Chain(nodes).AppendToTail(item, sortValue);
}

int CMyList::InsertNewHead(void* item, long long sortValue) {
    const Locked hold(lock);
    return Chain(nodes).InsertNewHead(item, sortValue);
}

int CMyList::InsertAfter(void* item, int index) {
    const Locked hold(lock);
    return Chain(nodes).InsertAfter(item, 0, index);
}

void* CMyList::Index(int index, long long* sortValueOut) noexcept {
    const Locked hold(lock);
    return Chain(nodes).Index(index, sortValueOut);
}

_tNode_t* CMyList::NodeByIndex(int index) noexcept {
    const Locked hold(lock);
    return Chain(nodes).NodeByIndex(index);
}

void* CMyList::ElemBySortValue(long long value, int* indexOut) noexcept {
    const Locked hold(lock);
    return Chain(nodes).ElemBySortValue(value, indexOut);
}

void* CMyList::PrevElemBySortValue(long long value, int* indexOut,
                                   long long* sortValueOut) noexcept {
    const Locked hold(lock);
    return Chain(nodes).PrevElemBySortValue(value, indexOut, sortValueOut);
}

int CMyList::Member(void* item) noexcept {
    const Locked hold(lock);
    return Chain(nodes).Contains(item) ? 1 : 0;
}

bool CMyList::Remove(void* item) noexcept {
    const Locked hold(lock);
    return Chain(nodes).Remove(item);
}

bool CMyList::RemoveByNode(_tNode_t* node) noexcept {
    const Locked hold(lock);
    return Chain(nodes).RemoveByNode(node);
}

void CMyList::RemoveByIndex(int index) noexcept {
    const Locked hold(lock);
    Chain(nodes).RemoveByIndex(index);
}

void CMyList::RemoveAll() noexcept {
    const Locked hold(lock);
    Chain(nodes).RemoveAll();
}

int CMyList::NumNodes() noexcept {
    const Locked hold(lock);
    return Chain(nodes).Count();
}

bool CMyList::VerifyIsSorted() noexcept {
    const Locked hold(lock);
    return Chain(nodes).VerifyIsSorted();
}
