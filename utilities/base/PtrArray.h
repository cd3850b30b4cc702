#ifndef VTRUTILS_BASE_PTRARRAY_H
#define VTRUTILS_BASE_PTRARRAY_H

#include "utilities/Fields.h"

#include <cstdlib>
#include <cstring>
#include <utility>

namespace vtr {

template <class T>
class PtrArray;

/// The growable array of pointers that the library's lists are made of: empty until the first item,
/// then 8 slots, doubled when full, halved (not below 8) when at most half full after a removal. It
/// owns nothing that its items point to. Private to the library. One thread at a time.
template <class T, class Holder>
class PointerReading {
public:
    unsigned Count() const { return Fields().count; }
    unsigned Capacity() const { return Fields().capacity; }
    T* const* Data() const { return Fields().slots; }
    T* const* begin() const { return Data(); }
    T* const* end() const { return Data() + Count(); }

    /// Requires: index < Count().
    T* operator[](unsigned index) const { return Data()[index]; }

    /// The item, or null when the index is out of range.
    T* At(unsigned index) const { return Fields().At(index); }

private:
    const PointerFields<T>& Fields() const { return static_cast<const Holder*>(this)->fields; }
};

/// What changes the array, too.
template <class T, class Holder>
class PointerOperations : public PointerReading<T, Holder> {
    using Reading = PointerReading<T, Holder>;

public:
    using Reading::begin;
    using Reading::Capacity;
    using Reading::Count;
    using Reading::Data;
    using Reading::end;

    T** Data() { return Fields().slots; }
    T** begin() { return Data(); }
    T** end() { return Data() + Count(); }

    /// False, with the array unchanged, when memory runs out.
    bool Append(T* item) {
        if (Count() == Capacity() && !Grow())
            return false;
        Data()[Fields().count++] = item;
        return true;
    }

    /// Items from `index` on move up. Requires: index <= Count().
    bool Insert(unsigned index, T* item) {
        if (Count() == Capacity() && !Grow())
            return false;
        T** place = Data() + index;
        std::memmove(place + 1, place, (Count() - index) * sizeof(T*));
        *place = item;
        ++Fields().count;
        return true;
    }

    /// Requires: index < Count().
    T* Replace(unsigned index, T* item) { return std::exchange(Data()[index], item); }

    /// Takes the item out and returns it. Requires: index < Count().
    T* Remove(unsigned index) {
        T** place = Data() + index;
        T* item = *place;
        --Fields().count;
        std::memmove(place, place + 1, (Count() - index) * sizeof(T*));
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
            dispose(Data()[i]);
        std::memmove(Data() + first, Data() + last, (Count() - last) * sizeof(T*));
        Fields().count -= last - first;
        Shrink();
    }

    /// Takes out, in one pass and in order, every item that `isUnwanted` accepts and hands it to
    /// `dispose`. Returns how many it took out.
    template <class Predicate, class Dispose>
    unsigned RemoveIf(Predicate isUnwanted, Dispose dispose) {
        unsigned kept = 0;
        for (unsigned i = 0; i < Count(); ++i) {
            T* item = Data()[i];
            if (isUnwanted(item))
                dispose(item);
            else
                Data()[kept++] = item;
        }
        const unsigned removed = Count() - kept;
        Fields().count = kept;
        if (removed > 0)
            Shrink();
        return removed;
    }

    /// Forgets every item, disposed of in order, and gives the slots back.
    template <class Dispose>
    void Clear(Dispose dispose) {
        PtrArray<T> old;
        Swap(old.fields);
        for (T* item : old)
            dispose(item);
    }

    /// Forgets every item and gives the slots back.
    void Reset() {
        PointerFields<T>& own = Fields();
        if (own.borrowed == 0)
            std::free(own.slots);
        own.slots = nullptr;
        own.count = own.capacity = own.borrowed = 0;
    }

    /// Forgets every item; the slots stay for the next ones.
    void Forget() { Fields().count = 0; }

    /// Uses slots of the caller's until they are full. Requires: fields that have just been made,
    /// and slots that exist for as long as they do.
    void Borrow(T** place, unsigned room) {
        PointerFields<T>& own = Fields();
        own.slots = place;
        own.capacity = room & mostCapacity;
        own.borrowed = 1;
    }

    void Swap(PointerFields<T>& other) {
        PointerFields<T>& own = Fields();
        std::swap(own.slots, other.slots);
        std::swap(own.count, other.count);
        const unsigned otherCapacity = other.capacity;
        const unsigned otherBorrowed = other.borrowed;
        other.capacity = own.capacity;
        other.borrowed = own.borrowed;
        own.capacity = otherCapacity & mostCapacity;
        own.borrowed = otherBorrowed & 1;
    }

protected:
    static constexpr unsigned minimumCapacity = 8;
    static constexpr unsigned mostCapacity = ~0u / 2;

private:
    PointerFields<T>& Fields() { return static_cast<Holder*>(this)->fields; }

    bool Resize(unsigned newCapacity) {
        PointerFields<T>& own = Fields();
        void* old = own.borrowed == 0 ? own.slots : nullptr;
        void* resized = std::realloc(old, newCapacity * sizeof(T*));
        if (resized == nullptr)
            return false;
        if (own.borrowed != 0)
            std::memcpy(resized, own.slots, own.count * sizeof(T*));
        own.slots = static_cast<T**>(resized);
        own.capacity = newCapacity & mostCapacity;
        own.borrowed = 0;
        return true;
    }

    bool Grow() {
        if (Capacity() > mostCapacity / 2)
            return false;
        return Resize(Capacity() < minimumCapacity ? minimumCapacity : Capacity() * 2);
    }

    bool ShrinkOnce() {
        // A block that cannot be made smaller still holds its items.
        return Capacity() > minimumCapacity && Count() <= Capacity() / 2 && Resize(Capacity() / 2);
    }

    void Shrink() {
        while (ShrinkOnce()) {
        }
    }
};

/// Works on the fields of a public class, which gives the slots back with `Clear` or `Reset` when
/// it is destroyed.
template <class T>
class Pointers : public PointerOperations<T, Pointers<T>> {
public:
    explicit Pointers(PointerFields<T>& record) : fields(record) {}

private:
    template <class Item, class Holder>
    friend class PointerReading;
    template <class Item, class Holder>
    friend class PointerOperations;

    PointerFields<T>& fields;
};

/// The same for fields that must not change.
template <class T>
class ConstPointers : public PointerReading<T, ConstPointers<T>> {
public:
    explicit ConstPointers(const PointerFields<T>& record) : fields(record) {}

private:
    template <class Item, class Holder>
    friend class PointerReading;

    const PointerFields<T>& fields;
};

/// Has the fields and frees the slots.
template <class T>
class PtrArray : public PointerOperations<T, PtrArray<T>> {
    using Operations = PointerOperations<T, PtrArray>;

public:
    PtrArray() = default;
    PtrArray(const PtrArray&) = delete;
    PtrArray& operator=(const PtrArray&) = delete;
    ~PtrArray() { this->Reset(); }

    void Swap(PtrArray& other) { Operations::Swap(other.fields); }

private:
    template <class Item, class Holder>
    friend class PointerReading;
    template <class Item, class Holder>
    friend class PointerOperations;

    PointerFields<T> fields;
};

} // namespace vtr

#endif
