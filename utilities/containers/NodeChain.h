#ifndef VTRUTILS_CONTAINERS_NODECHAIN_H
#define VTRUTILS_CONTAINERS_NODECHAIN_H

#include "utilities/containers/ListTooLong.h"

#include <new>

namespace vtr {

/// The chain of nodes behind `CMyList` and `CMegaList`, with the cursor that makes a walk by
/// ascending index cost one step a call. A `Node` has the fields `item`, `sortValue` and `next`.
/// Insertions answer -1, with nothing changed, when memory runs out, and throw
/// `std::length_error` beyond the largest `int`. Hosts see it only as a private field. One thread
/// at a time.
template <class Node>
class NodeChain {
public:
    using Value = decltype(Node::sortValue);

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
            AdvanceFromHead([=](const Node* next) {
                return next->sortValue < value || (afterEquals && next->sortValue == value);
            });
            return LinkBehindCursor(item, value) ? cursorIndex + 1 : -1;
        }
        sorted = wasSorted;
        return index;
    }

    int AppendToTail(void* item, Value value) {
        Node* node = MakeNode(item, value, nullptr);
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
        Node* node = MakeNode(item, value, head);
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
        WalkTo(index < 0 ? 0 : index < count ? index : count - 1);
        if (!LinkBehindCursor(item, value))
            return -1;
        sorted = atHead;
        cursor = cursor->next;
        return ++cursorIndex;
    }

    /// Null when out of range; otherwise the cursor is there.
    Node* NodeByIndex(int index) {
        if (index < 0 || index >= count)
            return nullptr;
        WalkTo(index);
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
        AdvanceFromHead([=](const Node* next) { return !stays && next->sortValue <= value; });
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
        return Find([=](const Node* node) { return node->item == item; }) != nullptr;
    }

    bool Remove(const void* item) {
        return Unlink(Find([=](const Node* node) { return node->item == item; }));
    }

    /// Never looks into `wanted`, which may be any pointer.
    bool RemoveByNode(const Node* wanted) {
        return Unlink(Find([=](const Node* node) { return node == wanted; }));
    }

    void RemoveByIndex(int index) {
        if (index < 0 || index >= count)
            return;
        WalkTo(index > 0 ? index - 1 : 0);
        Unlink(index > 0 ? cursor->next : head);
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
            WalkTo(i);
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
        Exchange(head, other.head);
        Exchange(tail, other.tail);
        Exchange(cursor, other.cursor);
        Exchange(count, other.count);
        Exchange(cursorIndex, other.cursorIndex);
        Exchange(sorted, other.sorted);
    }

private:
    template <class T>
    static void Exchange(T& left, T& right) {
        const T old = left;
        left = right;
        right = old;
    }

    Node* MakeNode(void* item, Value value, Node* next) const {
        if (count == 0x7FFFFFFF)
            ThrowListTooLong();
        return new (std::nothrow) Node{item, value, next};
    }

    /// The cursor stays.
    bool LinkBehindCursor(void* item, Value value) {
        Node* node = MakeNode(item, value, cursor->next);
        if (node == nullptr)
            return false;
        cursor->next = node;
        if (tail == cursor)
            tail = node;
        ++count;
        return true;
    }

    /// Requires: 0 <= index < Count().
    void WalkTo(int index) {
        if (index == count - 1) {
            cursor = tail;
            cursorIndex = index;
            return;
        }
        if (index < cursorIndex) {
            cursor = head;
            cursorIndex = 0;
        }
        for (; cursorIndex < index; ++cursorIndex)
            cursor = cursor->next;
    }

    /// Puts the cursor on the head and then forward while `passes` accepts the next node.
    template <class Predicate>
    void AdvanceFromHead(Predicate passes) {
        Node* node = head;
        int index = 0;
        for (; node->next != nullptr && passes(node->next); ++index)
            node = node->next;
        cursor = node;
        cursorIndex = index;
    }

    /// The first node that `matches` accepts, or null. The cursor ends on the node before it, on
    /// the head if that is it, and on the tail without a result.
    template <class Predicate>
    Node* Find(Predicate matches) {
        if (head == nullptr)
            return nullptr;
        const bool isHead = matches(head);
        AdvanceFromHead([&](const Node* next) { return !isHead && !matches(next); });
        return isHead ? head : cursor->next;
    }

    /// Requires: null, the head, or the node behind the cursor.
    bool Unlink(Node* node) {
        if (node == nullptr)
            return false;
        if (node == head) {
            head = cursor = node->next;
            cursorIndex = 0;
        } else {
            cursor->next = node->next;
        }
        if (node == tail)
            tail = cursor;
        delete node;
        --count;
        return true;
    }

    Node* head = nullptr;
    Node* tail = nullptr;
    Node* cursor = nullptr; ///< null only while the list is empty
    int count = 0;
    int cursorIndex = 0;
    bool sorted = true;
};

} // namespace vtr

#endif
