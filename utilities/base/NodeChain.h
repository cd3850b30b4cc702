#ifndef VTRUTILS_BASE_NODECHAIN_H
#define VTRUTILS_BASE_NODECHAIN_H

#include "utilities/base/NodeCursor.h"

#include <utility>

namespace vtr {

/// Works on the nodes of a list, with the cursor that makes a walk by ascending index cost one step
/// a call. A `Node` has the fields `item`, `sortValue` and `next`. Insertions answer -1, with
/// nothing changed, when memory runs out, and throw `std::length_error` beyond the largest `int`.
/// The list frees its nodes with `RemoveAll` when it is destroyed. Private to the library. One
/// thread at a time.
template <class Node>
class NodeChain : private NodeCursor<Node> {
    using Base = NodeCursor<Node>;
    using Base::list;

public:
    using typename Base::Value;

    explicit NodeChain(NodeFields<Node>& record) : Base(record) {}

    int Count() const { return list.count; }

    /// Keeps the sorted flag, which the insertions at head and tail set.
    int AddSorted(void* item, Value value, bool afterEquals) {
        const bool wasSorted = list.sorted;
        int index = 0;
        if (list.head == nullptr || value < list.head->sortValue ||
            (!afterEquals && value == list.head->sortValue)) {
            index = InsertNewHead(item, value);
        } else if (value > list.tail->sortValue || (afterEquals && value == list.tail->sortValue)) {
            index = AppendToTail(item, value);
        } else {
            this->AdvanceFromHead([=](const Node* next) {
                return next->sortValue < value || (afterEquals && next->sortValue == value);
            });
            return this->LinkBehindCursor(item, value) ? list.cursorIndex + 1 : -1;
        }
        list.sorted = wasSorted;
        return index;
    }

    int AppendToTail(void* item, Value value) {
        Node* node = this->MakeNode(item, value, nullptr);
        if (node == nullptr)
            return -1;
        list.sorted = list.cursorIndex == 0;
        if (list.tail != nullptr)
            list.tail->next = node;
        else
            list.head = list.cursor = node;
        list.tail = node;
        return list.count++;
    }

    int InsertNewHead(void* item, Value value) {
        Node* node = this->MakeNode(item, value, list.head);
        if (node == nullptr)
            return -1;
        list.sorted = list.cursorIndex == 0;
        if (list.head != nullptr)
            ++list.cursorIndex;
        else
            list.tail = list.cursor = node;
        list.head = node;
        ++list.count;
        return 0;
    }

    int InsertAfter(void* item, Value value, int index) {
        if (list.head == nullptr)
            return AppendToTail(item, value);
        const bool atHead = list.cursorIndex == 0;
        list.WalkTo(index < 0 ? 0 : index < list.count ? index : list.count - 1);
        if (!this->LinkBehindCursor(item, value))
            return -1;
        list.sorted = atHead;
        list.cursor = list.cursor->next;
        return ++list.cursorIndex;
    }

    /// Null when out of range; otherwise the cursor is there.
    Node* NodeByIndex(int index) { return list.WalkTo(index); }

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
        if (list.head == nullptr)
            return nullptr;
        const bool stays = list.head->sortValue >= value;
        this->AdvanceFromHead([=](const Node* next) { return !stays && next->sortValue <= value; });
        if (indexOut != nullptr)
            *indexOut = list.cursorIndex;
        return list.cursor;
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
        if (index < 0 || index >= list.count)
            return;
        list.WalkTo(index > 0 ? index - 1 : 0);
        this->Unlink(index > 0 ? list.cursor->next : list.head);
    }

    /// The sorted flag stays.
    void RemoveAll() {
        while (list.head != nullptr) {
            Node* next = list.head->next;
            delete list.head;
            list.head = next;
        }
        list.tail = list.cursor = nullptr;
        list.count = list.cursorIndex = 0;
    }

    /// Sets the sorted flag anew: equal neighbours, and a first value of -2147483647 or below,
    /// count as unsorted. The cursor ends on the node that decided.
    bool VerifyIsSorted() {
        Value previous = -2147483647;
        list.sorted = true;
        for (int i = 0; list.sorted && i < list.count; ++i) {
            list.WalkTo(i);
            list.sorted = !(list.cursor->sortValue <= previous);
            previous = list.cursor->sortValue;
        }
        return list.sorted;
    }

    /// Nodes of its own with the other's items, cursor and flag. Empty when memory runs out.
    void Copy(const NodeFields<Node>& other) {
        RemoveAll();
        for (const Node* node = other.head; node != nullptr; node = node->next) {
            if (AppendToTail(node->item, node->sortValue) < 0) {
                RemoveAll();
                break;
            }
            if (node == other.cursor)
                list.cursor = list.tail;
        }
        list.cursorIndex = list.head != nullptr ? other.cursorIndex : 0;
        list.sorted = other.sorted;
    }

    void Swap(NodeFields<Node>& other) {
        std::swap(list.head, other.head);
        std::swap(list.tail, other.tail);
        std::swap(list.cursor, other.cursor);
        std::swap(list.count, other.count);
        std::swap(list.cursorIndex, other.cursorIndex);
        std::swap(list.sorted, other.sorted);
    }
};

} // namespace vtr

#endif
