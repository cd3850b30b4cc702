#include "utilities/containers/MegaList.h"

#include "utilities/base/Layout.h"
#include "utilities/base/NodeChain.h"

template <>
struct vtr::Internals<CMegaList> {
    static_assert(sizeof(CMegaList) == vtr::ByPointer(48, 28));
    VTR_FIELD_AT(CMegaList, nodes, 8, 4);
};

using Chain = vtr::NodeChain<_tMegaNode_t>;

CMegaList::CMegaList() noexcept = default;

CMegaList::CMegaList(const CMegaList& other) noexcept {
    Chain(nodes).Copy(other.nodes);
}

CMegaList& CMegaList::operator=(const CMegaList& other) noexcept {
    if (this != &other)
        Chain(nodes).Copy(other.nodes);
    return *this;
}

CMegaList::~CMegaList() {
    CMegaList::RemoveAll();
}

int CMegaList::AddSorted(void* item, double sortValue, bool afterEquals) {
    return Chain(nodes).AddSorted(item, sortValue, afterEquals);
}

int CMegaList::AppendToTail(void* item, double sortValue) {
    return Chain(nodes).AppendToTail(item, sortValue);
}

int CMegaList::InsertNewHead(void* item, double sortValue) {
    return Chain(nodes).InsertNewHead(item, sortValue);
}

int CMegaList::InsertAfter(void* item, double sortValue, int index) {
    return Chain(nodes).InsertAfter(item, sortValue, index);
}

void* CMegaList::ElemBySortValue(double value, int* indexOut) noexcept {
    return Chain(nodes).ElemBySortValue(value, indexOut);
}

void* CMegaList::PrevElemBySortValue(double value, int* indexOut, double* sortValueOut) noexcept {
    return Chain(nodes).PrevElemBySortValue(value, indexOut, sortValueOut);
}

int CMegaList::Member(void* item) noexcept {
    return Chain(nodes).Contains(item) ? 1 : 0;
}

bool CMegaList::Remove(void* item) noexcept {
    return Chain(nodes).Remove(item);
}

bool CMegaList::RemoveByNode(_tMegaNode_t* node) noexcept {
    return Chain(nodes).RemoveByNode(node);
}

void CMegaList::RemoveByIndex(int index) noexcept {
    Chain(nodes).RemoveByIndex(index);
}

void CMegaList::RemoveAll() noexcept {
    Chain(nodes).RemoveAll();
}

bool CMegaList::VerifyIsSorted() noexcept {
    return Chain(nodes).VerifyIsSorted();
}
