#include "utilities/containers/Stack.h"

#include "utilities/base/Layout.h"
#include "utilities/base/ScopedLock.h"

#include <limits>
#include <new>

struct CStack::Node {
    void* item;
    Node* next;
};

template <>
struct vtr::Internals<CStack> {
    static_assert(sizeof(CStack::Node) == vtr::ByPointer(16, 8));
    VTR_FIELD_AT(CStack::Node, next, 8, 4);
    static_assert(sizeof(CStack) == vtr::ByPointer(72, 40));
    VTR_FIELD_AT(CStack, lock, 8, 4);
    VTR_FIELD_AT(CStack, head, 48, 28);
    VTR_FIELD_AT(CStack, count, 56, 32);
};

using Locked = vtr::ScopedLock<CLock>;

CStack::CStack() noexcept : head(nullptr), count(0), tail(nullptr) {}

CStack::~CStack() {
    while (head != nullptr)
        CStack::Pop();
}

void CStack::Push(void* item) {
    const Locked hold(lock);
    if (count == std::numeric_limits<int>::max())
        return;
    Node* node = new (std::nothrow) Node{item, nullptr};
    if (node == nullptr)
        return;
    (tail != nullptr ? tail->next : head) = node;
    tail = node;
    ++count;
}

void* CStack::Pop() {
    const Locked hold(lock);
    Node* first = head;
    if (first == nullptr)
        return nullptr;
    head = first->next;
    if (head == nullptr)
        tail = nullptr;
    if (count > 0)
        --count;
    void* item = first->item;
    delete first;
    return item;
}

void CStack::ClearStack() {
    const Locked hold(lock);
    while (Pop() != nullptr) {
    }
    count = 0;
}

int CStack::NumNodes() {
    const Locked hold(lock);
    return count;
}
