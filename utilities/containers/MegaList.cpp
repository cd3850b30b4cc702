#include "utilities/containers/MegaList.h"

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<CMegaList> {
    static_assert(sizeof(CMegaList) == 48);
    static_assert(offsetof(CMegaList, chain) == 8);
};

CMegaList::CMegaList() noexcept = default;

CMegaList::CMegaList(const CMegaList& other) noexcept {
    chain.Copy(other.chain);
}

CMegaList& CMegaList::operator=(const CMegaList& other) noexcept {
    if (this != &other)
        chain.Copy(other.chain);
    return *this;
}

CMegaList::~CMegaList() {
    CMegaList::RemoveAll();
}

int CMegaList::AddSorted(void* item, double sortValue, bool afterEquals) {
    return chain.AddSorted(item, sortValue, afterEquals);
}

int CMegaList::AppendToTail(void* item, double sortValue) {
    return chain.AppendToTail(item, sortValue);
}

int CMegaList::InsertNewHead(void* item, double sortValue) {
    return chain.InsertNewHead(item, sortValue);
}

int CMegaList::InsertAfter(void* item, double sortValue, int index) {
    return chain.InsertAfter(item, sortValue, index);
}

void* CMegaList::ElemBySortValue(double value, int* indexOut) noexcept {
    return chain.ElemBySortValue(value, indexOut);
}

void* CMegaList::PrevElemBySortValue(double value, int* indexOut, double* sortValueOut) noexcept {
    return chain.PrevElemBySortValue(value, indexOut, sortValueOut);
}

int CMegaList::Member(void* item) noexcept {
    return chain.Contains(item) ? 1 : 0;
}

bool CMegaList::Remove(void* item) noexcept {
    return chain.Remove(item);
}

bool CMegaList::RemoveByNode(_tMegaNode_t* node) noexcept {
    return chain.RemoveByNode(node);
}

void CMegaList::RemoveByIndex(int index) noexcept {
    chain.RemoveByIndex(index);
}

void CMegaList::RemoveAll() noexcept {
    chain.RemoveAll();
}

bool CMegaList::VerifyIsSorted() noexcept {
    return chain.VerifyIsSorted();
}
