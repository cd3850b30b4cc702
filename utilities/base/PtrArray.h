#ifndef VTRUTILS_BASE_PTRARRAY_H
#define VTRUTILS_BASE_PTRARRAY_H

#include <cstdlib>
#include <cstring>
#include <utility>

namespace vtr {

/// The growable array of pointers behind the library's lists: empty until the first item, then 8
/// slots, doubled when full, halved (not below 8) when at most half full after a removal. It never
/// owns what its items point to. Not part of the interface: hosts see it only as a private field.
/// One thread at a time.
template <class T>
class PtrArray {
public:
    PtrArray() : capacity(0), borrowed(0) {}
    PtrArray(const PtrArray&) = delete;
    PtrArray& operator=(const PtrArray&) = delete;
    ~PtrArray() { FreeSlots(); }

    /// Uses slots of the caller's until they are full. Requires: an array that has just been made,
    /// and slots that stay for as long as it.
    void Borrow(T** place, unsigned room) {
        slots = place;
        capacity = room & mostCapacity;
        borrowed = 1;
    }

    unsigned Count() const { return count; }
    unsigned Capacity() const { return capacity; }
    T** Data() { return slots; }
    T* const* Data() const { return slots; }
    T** begin() { return slots; }
    T** end() { return slots + count; }
    T* const* begin() const { return slots; }
    T* const* end() const { return slots + count; }

    /// Requires: index < Count().
    T* operator[](unsigned index) const { return slots[index]; }

    /// The item, or null when the index is out of range.
    T* At(unsigned index) const { return index < count ? slots[index] : nullptr; }

    /// False, with the array unchanged, when memory runs out.
    bool Append(T* item) {
        if (count == capacity && !Grow())
            return false;
        slots[count++] = item;
        return true;
    }

    /// Items from `index` on move up. Requires: index <= Count().
    bool Insert(unsigned index, T* item) {
        if (count == capacity && !Grow())
            return false;
        std::memmove(slots + index + 1, slots + index, (count - index) * sizeof(T*));
        slots[index] = item;
        ++count;
        return true;
    }

    /// Requires: index < Count().
    T* Replace(unsigned index, T* item) {
        T* old = slots[index];
        slots[index] = item;
        return old;
    }

    /// Takes the item out and returns it. Requires: index < Count().
    T* Remove(unsigned index) {
        T* item = slots[index];
        --count;
        std::memmove(slots + index, slots + index + 1, (count - index) * sizeof(T*));
        ShrinkOnce();
        return item;
    }

    /// Takes out the items from `first` to before `last` and hands each to `dispose`, which must
    /// leave the array alone. Requires: first <= last <= Count().
    template <class Dispose>
    void RemoveRange(unsigned first, unsigned last, Dispose dispose) {
        if (first == last)
            return;
        for (unsigned i = first; i < last; ++i)
            dispose(slots[i]);
        std::memmove(slots + first, slots + last, (count - last) * sizeof(T*));
        count -= last - first;
        Shrink();
    }

    /// Takes out, in one pass and in order, every item that `isUnwanted` accepts and hands it to
    /// `dispose`. Returns how many went.
    template <class Predicate, class Dispose>
    unsigned RemoveIf(Predicate isUnwanted, Dispose dispose) {
        unsigned kept = 0;
        for (unsigned i = 0; i < count; ++i) {
            T* item = slots[i];
            if (isUnwanted(item))
                dispose(item);
            else
                slots[kept++] = item;
        }
        const unsigned removed = count - kept;
        count = kept;
        if (removed > 0)
            Shrink();
        return removed;
    }

    /// Forgets every item, disposed of in order, and gives the slots back.
    template <class Dispose>
    void Clear(Dispose dispose) {
        PtrArray old;
        Swap(old);
        for (T* item : old)
            dispose(item);
    }

    /// Forgets every item; the slots stay for the next ones.
    void Forget() { count = 0; }

    void Swap(PtrArray& other) {
        std::swap(slots, other.slots);
        std::swap(count, other.count);
        const unsigned otherCapacity = other.capacity;
        const unsigned otherBorrowed = other.borrowed;
        other.capacity = capacity;
        other.borrowed = borrowed;
        capacity = otherCapacity & mostCapacity;
        borrowed = otherBorrowed & 1;
    }

private:
    static constexpr unsigned minimumCapacity = 8;
    static constexpr unsigned mostCapacity = ~0u / 2;

    void FreeSlots() {
        if (borrowed == 0)
            std::free(slots);
    }

    bool Resize(unsigned newCapacity) {
        void* resized = std::realloc(borrowed == 0 ? slots : nullptr, newCapacity * sizeof(T*));
        if (resized == nullptr)
            return false;
        if (borrowed != 0)
            std::memcpy(resized, slots, count * sizeof(T*));
        slots = static_cast<T**>(resized);
        capacity = newCapacity & mostCapacity;
        borrowed = 0;
        return true;
    }

    bool Grow() {
        if (capacity > mostCapacity / 2)
            return false;
        return Resize(capacity < minimumCapacity ? minimumCapacity : capacity * 2);
    }

    bool ShrinkOnce() {
        // A block that cannot be made smaller still holds its items.
        return capacity > minimumCapacity && count <= capacity / 2 && Resize(capacity / 2);
    }

    void Shrink() {
        while (ShrinkOnce()) {
        }
    }

    T** slots = nullptr;
    unsigned count = 0;
    unsigned capacity : 31;
    unsigned borrowed : 1;
};

} // namespace vtr

#endif
