#ifndef VTRUTILS_BASE_NODECURSOR_H
#define VTRUTILS_BASE_NODECURSOR_H

#include "common/Require.h"
#include "utilities/Fields.h"
#include "utilities/base/ListTooLong.h"

#include <new>

namespace vtr {

/// The steps that `NodeChain` is made of: walking with the cursor, linking and unlinking. Private
/// to the library. One thread at a time.
template <class Node>
class NodeCursor {
protected:
    using Value = decltype(Node::sortValue);

    explicit NodeCursor(NodeFields<Node>& record) : list(record) {}

    Node* MakeNode(void* item, Value value, Node* next) const {
        if (list.count == 0x7FFFFFFF)
            ThrowListTooLong();
        return new (std::nothrow) Node{item, value, next};
    }

    /// The cursor stays.
    bool LinkBehindCursor(void* item, Value value) {
        Node* node = MakeNode(item, value, list.cursor->next);
        if (node == nullptr)
            return false;
        list.cursor->next = node;
        if (list.tail == list.cursor)
            list.tail = node;
        ++list.count;
        return true;
    }

    /// Puts the cursor on the head and then forward while `passes` accepts the next node.
    template <class Predicate>
    void AdvanceFromHead(Predicate passes) {
        Node* node = list.head;
        int index = 0;
        for (; node->next != nullptr && passes(node->next); ++index)
            node = node->next;
        list.cursor = node;
        list.cursorIndex = index;
    }

    /// The first node that `matches` accepts, or null. The cursor ends on the node before it, on
    /// the head if that is it, and on the tail without a result.
    template <class Predicate>
    Node* Find(Predicate matches) {
        if (list.head == nullptr)
            return nullptr;
        const bool isHead = matches(list.head);
        AdvanceFromHead([&](const Node* next) { return !isHead && !matches(next); });
        return isHead ? list.head : list.cursor->next;
    }

    /// Requires: null, the head, or the node after the cursor.
    bool Unlink(Node* node) {
        VTR_REQUIRE(node == nullptr || node == list.head || node == list.cursor->next);
        if (node == nullptr)
            return false;
        if (node == list.head) {
            list.head = list.cursor = node->next;
            list.cursorIndex = 0;
        } else {
            list.cursor->next = node->next;
        }
        if (node == list.tail)
            list.tail = list.cursor;
        delete node;
        --list.count;
        return true;
    }

    NodeFields<Node>& list;
};

} // namespace vtr

#endif
