#ifndef VTRUTILS_BASE_NODECURSOR_H
#define VTRUTILS_BASE_NODECURSOR_H

#include "utilities/base/ListTooLong.h"

#include <new>

namespace vtr {

/// The fields of a chain of nodes and the steps that `NodeChain` is made of: walking with the
/// cursor, linking and unlinking. Private to the library. One thread at a time.
template <class Node>
class NodeCursor {
protected:
    using Value = decltype(Node::sortValue);

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
