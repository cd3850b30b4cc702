#ifndef VTRUTILS_BASE_NODECHAIN_H
#define VTRUTILS_BASE_NODECHAIN_H

#include "utilities/base/NodeCursor.h"

#include <utility>

namespace vtr {

/// The chain of nodes behind `CMyList` and `CMegaList`, with the cursor that makes a walk by
/// ascending index cost one step a call. A `Node` has the fields `item`, `sortValue` and `next`.
/// Insertions answer -1, with nothing changed, when memory runs out, and throw
/// `std::length_error` beyond the largest `int`. Hosts see it only as a private field. One thread
/// at a time.
template <class Node>
class NodeChain : private NodeCursor<Node> {
    using Base = NodeCursor<Node>;
    using Base::count;
    using Base::cursor;
    using Base::cursorIndex;
    using Base::head;
    using Base::sorted;
    using Base::tail;

public:
    using typename Base::Value;

    NodeChain() = default;
    NodeChain(const NodeChain&) = delete;
    NodeChain& operator=(const NodeChain&) = delete;
    ~NodeChain() { RemoveAll(); }

    int Count() const { return count; }

    /// Keeps the sorted flag, which the insertions at head and tail set.
    int AddSorted(void* item, Value value, bool afterEquals) {
        const bool wasSorted = sorted;
        int index = 0;
        if (head == nullptr || value < head->sortValue ||
            (!afterEquals && value == head->sortValue)) {
            index = InsertNewHead(item, value);
        } else if (value > tail->sortValue || (afterEquals && value == tail->sortValue)) {
            index = AppendToTail(item, value);
        } else {
            this->AdvanceFromHead([=](const Node* next) {
                return next->sortValue < value || (afterEquals && next->sortValue == value);
            });
            return this->LinkBehindCursor(item, value) ? cursorIndex + 1 : -1;
        }
        sorted = wasSorted;
        return index;
    }

    int AppendToTail(void* item, Value value) {
        Node* node = this->MakeNode(item, value, nullptr);
        if (node == nullptr)
            return -1;
        sorted = cursorIndex == 0;
        if (tail != nullptr)
            tail->next = node;
        else
            head = cursor = node;
        tail = node;
        return count++;
    }

    int InsertNewHead(void* item, Value value) {
        Node* node = this->MakeNode(item, value, head);
        if (node == nullptr)
            return -1;
        sorted = cursorIndex == 0;
        if (head != nullptr)
            ++cursorIndex;
        else
            tail = cursor = node;
        head = node;
        ++count;
        return 0;
    }

    int InsertAfter(void* item, Value value, int index) {
        if (head == nullptr)
            return AppendToTail(item, value);
        const bool atHead = cursorIndex == 0;
        this->WalkTo(index < 0 ? 0 : index < count ? index : count - 1);
        if (!this->LinkBehindCursor(item, value))
            return -1;
        sorted = atHead;
        cursor = cursor->next;
        return ++cursorIndex;
    }

    /// Null when out of range; otherwise the cursor is there.
    Node* NodeByIndex(int index) {
        if (index < 0 || index >= count)
            return nullptr;
        this->WalkTo(index);
        return cursor;
    }

    void* Index(int index, Value* valueOut) {
        const Node* node = NodeByIndex(index);
        if (node == nullptr)
            return nullptr;
        if (valueOut != nullptr)
            *valueOut = node->sortValue;
        return node->item;
    }

    /// Null in an empty list. The last node before the first that is above `value`, but the head in
    /// any case where its value is not below `value`.
    const Node* FindPrevious(Value value, int* indexOut) {
        if (head == nullptr)
            return nullptr;
        const bool stays = head->sortValue >= value;
        this->AdvanceFromHead([=](const Node* next) { return !stays && next->sortValue <= value; });
        if (indexOut != nullptr)
            *indexOut = cursorIndex;
        return cursor;
    }

    void* PrevElemBySortValue(Value value, int* indexOut, Value* valueOut) {
        const Node* found = FindPrevious(value, indexOut);
        if (found == nullptr)
            return nullptr;
        if (valueOut != nullptr)
            *valueOut = found->sortValue;
        return found->item;
    }

    void* ElemBySortValue(Value value, int* indexOut) {
        const Node* found = FindPrevious(value, indexOut);
        if (found == nullptr || found->sortValue == value)
            return found != nullptr ? found->item : nullptr;
        if (indexOut != nullptr)
            *indexOut = -1;
        return nullptr;
    }

    bool Contains(const void* item) {
        return this->Find([=](const Node* node) { return node->item == item; }) != nullptr;
    }

    bool Remove(const void* item) {
        return this->Unlink(this->Find([=](const Node* node) { return node->item == item; }));
    }

    /// Never looks into `wanted`, which may be any pointer.
    bool RemoveByNode(const Node* wanted) {
        return this->Unlink(this->Find([=](const Node* node) { return node == wanted; }));
    }

    void RemoveByIndex(int index) {
        if (index < 0 || index >= count)
            return;
        this->WalkTo(index > 0 ? index - 1 : 0);
        this->Unlink(index > 0 ? cursor->next : head);
    }

    /// The sorted flag stays.
    void RemoveAll() {
        while (head != nullptr) {
            Node* next = head->next;
            delete head;
            head = next;
        }
        tail = cursor = nullptr;
        count = cursorIndex = 0;
    }

    /// Sets the sorted flag anew: equal neighbours, and a first value of -2147483647 or below,
    /// count as unsorted. The cursor ends on the node that decided.
    bool VerifyIsSorted() {
        Value previous = -2147483647;
        sorted = true;
        for (int i = 0; sorted && i < count; ++i) {
            this->WalkTo(i);
            sorted = !(cursor->sortValue <= previous);
            previous = cursor->sortValue;
        }
        return sorted;
    }

    /// Nodes of its own with the other's items, cursor and flag. Empty when memory runs out.
    void Copy(const NodeChain& other) {
        RemoveAll();
        for (const Node* node = other.head; node != nullptr; node = node->next) {
            if (AppendToTail(node->item, node->sortValue) < 0) {
                RemoveAll();
                break;
            }
            if (node == other.cursor)
                cursor = tail;
        }
        cursorIndex = head != nullptr ? other.cursorIndex : 0;
        sorted = other.sorted;
    }

    void Swap(NodeChain& other) {
        std::swap(head, other.head);
        std::swap(tail, other.tail);
        std::swap(cursor, other.cursor);
        std::swap(count, other.count);
        std::swap(cursorIndex, other.cursorIndex);
        std::swap(sorted, other.sorted);
    }
};

} // namespace vtr

#endif
