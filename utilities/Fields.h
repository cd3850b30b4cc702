#ifndef VTRUTILS_FIELDS_H
#define VTRUTILS_FIELDS_H

/// The private fields of exported classes, as plain records, because hosts rely on their order. The
/// library fills and frees them. Of the functions that work on them, only the steps of a host's
/// loop are here, so that they need no call.
/// Thread-safety: one thread at a time.

namespace vtr {

/// A size or place in a record: the first where pointers have 8 bytes, the second where they
/// have 4.
constexpr unsigned ByPointer(unsigned on64, unsigned on32) noexcept {
    return sizeof(void*) == 8 ? on64 : on32;
}
/// The same everywhere.
constexpr unsigned ByPointer(unsigned onBoth) noexcept {
    return onBoth;
}

/// A growable array of pointers.
template <class T>
struct PointerFields {
    PointerFields() noexcept : capacity(0), borrowed(0) {}
    PointerFields(const PointerFields&) = delete;
    PointerFields& operator=(const PointerFields&) = delete;

    /// Null when out of range.
    T* At(unsigned index) const noexcept { return index < count ? slots[index] : nullptr; }

    T** slots = nullptr;    ///< null while there are none
    unsigned count = 0;     ///< slots in use
    unsigned capacity : 31; ///< all slots
    unsigned borrowed : 1;  ///< the slots are another's, who frees them
};

/// An element of an array list.
template <class Value>
struct Element {
    void* item;      ///< never dereferenced
    Value sortValue; ///< by which a sorted list is ordered
};

/// The elements of an array list, in one block.
template <class Value>
struct ElementFields {
    ElementFields() = default;
    ElementFields(const ElementFields&) = delete;
    ElementFields& operator=(const ElementFields&) = delete;

    /// Requires: 0 <= index < capacity.
    Element<Value>& operator[](int index) noexcept { return block[index]; }

    /// Null when out of range; `sortValueOut` may be null and is then not written.
    void* At(int index, Value* sortValueOut) const noexcept {
        if (index < 0 || index >= count)
            return nullptr;
        if (sortValueOut != nullptr)
            *sortValueOut = block[index].sortValue;
        return block[index].item;
    }

    Element<Value>* block = nullptr; ///< null while there are none
    int capacity = 0;                ///< in elements
    int count = 0;                   ///< elements in use
};

/// A chain of nodes, and the one that was reached last.
template <class Node>
struct NodeFields {
    NodeFields() = default;
    NodeFields(const NodeFields&) = delete;
    NodeFields& operator=(const NodeFields&) = delete;

    /// Puts the cursor there and returns its node; null, with the cursor as it was, when out of
    /// range.
    Node* WalkTo(int index) noexcept {
        if (index < 0 || index >= count)
            return nullptr;
        if (index == count - 1) {
            cursorIndex = index;
            return cursor = tail;
        }
        if (index < cursorIndex) {
            cursor = head;
            cursorIndex = 0;
        }
        for (; cursorIndex < index; ++cursorIndex)
            cursor = cursor->next;
        return cursor;
    }

    Node* head = nullptr;   ///< the first
    Node* tail = nullptr;   ///< the last
    Node* cursor = nullptr; ///< null only while the list is empty
    int count = 0;          ///< nodes
    int cursorIndex = 0;    ///< of the cursor
    bool sorted = true;     ///< whether they count as sorted
};

} // namespace vtr

#endif
