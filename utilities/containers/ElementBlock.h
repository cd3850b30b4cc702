#ifndef VTRUTILS_CONTAINERS_ELEMENTBLOCK_H
#define VTRUTILS_CONTAINERS_ELEMENTBLOCK_H

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <malloc.h>

/// Which way elements move: over a removed one, or aside for a new one.
enum _tshift { shiftClose = 0, shiftOpen = 1 };

namespace vtr {

template <class Value>
struct Element {
    void* item; ///< never dereferenced
    Value sortValue;
};

/// The block of elements behind `CMyArrayList` and `CMegaArrayList`: growth, moving and searching.
/// Its three fields are the first of both, which is why the growth step comes with each call.
/// Searches expect ascending sort values; on others they end, at some element. Hosts see it only as
/// a private field. One thread at a time.
template <class Value>
class ElementBlock {
public:
    ElementBlock() = default;
    ElementBlock(const ElementBlock&) = delete;
    ElementBlock& operator=(const ElementBlock&) = delete;
    ~ElementBlock() { std::free(block); }

    bool HasBlock() const { return block != nullptr; }
    int Count() const { return count; }
    bool IsEmpty() const { return count == 0; }
    bool Contains(int index) const { return index >= 0 && index < count; }

    /// Requires: Contains(index).
    Element<Value>& operator[](int index) { return block[index]; }
    const Element<Value>& operator[](int index) const { return block[index]; }

    /// Null when out of range; `sortValueOut` may be null and is then not written.
    void* At(int index, Value* sortValueOut) const {
        if (!Contains(index))
            return nullptr;
        if (sortValueOut != nullptr)
            *sortValueOut = block[index].sortValue;
        return block[index].item;
    }

    Element<Value>* begin() { return block; }
    Element<Value>* end() { return block + count; }

    /// True when there is a block with room for `needed` elements afterwards: the first block gets
    /// the whole steps above `needed`, a later one is a step larger than before. False, with
    /// nothing changed, when memory runs out. Requires: step > 0, needed <= Count() + 1 once there
    /// is a block.
    bool Grow(int needed, unsigned step) {
        if (block == nullptr) {
            const long long first = (static_cast<unsigned>(needed) / step + 1LL) * step;
            return Reallocate(first);
        }
        return needed <= capacity || Reallocate(static_cast<long long>(capacity) + step);
    }

    /// Gives one step back when `newCount` elements leave it unused, and the block when they are
    /// none; its capacity then stays as it was until the next block. A block that cannot be made
    /// smaller is used as it is.
    void Shrink(int newCount, unsigned step) {
        if (block == nullptr || newCount > static_cast<long long>(capacity) - step)
            return;
        if (newCount < 1) {
            std::free(block);
            block = nullptr;
            return;
        }
        capacity -= static_cast<int>(step);
        if (capacity <= exactSlots || Slots() / 2 >= static_cast<std::size_t>(capacity))
            Resize(WithReserve(capacity));
    }

    /// Moves the elements from `index` on by one place. Opening requires room for one more.
    void Shift(int index, _tshift direction) {
        if (index >= count)
            return;
        Element<Value>* from = block + index;
        const std::size_t size = static_cast<std::size_t>(count - index) * sizeof *from;
        std::memmove(direction == shiftOpen ? from + 1 : from - 1, from, size);
    }

    /// False, with nothing changed, when memory runs out. Requires: 0 <= index <= Count().
    bool Insert(int index, void* item, Value sortValue, unsigned step) {
        if (!Grow(count + 1, step))
            return false;
        Shift(index, shiftOpen);
        block[index] = {item, sortValue};
        ++count;
        return true;
    }

    /// Requires: Contains(index).
    void Remove(int index, unsigned step) {
        Shift(index + 1, shiftClose);
        --count;
        Shrink(count, step);
    }

    void ForgetElements() { count = 0; }

    /// Forgets the elements and frees the block.
    void Clear(unsigned step) {
        Shrink(0, step);
        count = 0;
    }

    /// Takes copies of all elements of another block. Empty when memory runs out.
    void Copy(const ElementBlock& other, unsigned step) {
        Clear(step);
        if (other.count == 0 || !Grow(other.count, step))
            return;
        std::memcpy(block, other.block, static_cast<std::size_t>(other.count) * sizeof *block);
        count = other.count;
    }

    /// The last element below `value` where the first is below it and the last is not; 0 where none
    /// is below it. Requires: not empty.
    int Bisect(Value value) const {
        int low = 0;
        int high = count - 1;
        int middle = high / 2;
        while (low != middle) {
            if (block[middle].sortValue < value)
                low = middle;
            else
                high = middle;
            middle = low + (high - low) / 2;
        }
        return middle;
    }

    /// The element with the greatest sort value that is not above `value`; of equal ones, the first
    /// in lists of 3 to 24 elements and any in others. Where all are above it: -1 in lists of up to
    /// 24 elements, 0 in longer ones.
    int FindPrevious(Value value) const {
        if (count >= bisectedCount)
            return BisectPrevious(value);
        if (count <= 2)
            return count == 2 && value >= block[1].sortValue   ? 1
                   : count >= 1 && value >= block[0].sortValue ? 0
                                                               : -1;
        for (int i = 0; i < count; ++i) {
            if (block[i].sortValue >= value)
                return block[i].sortValue == value ? i : i - 1;
        }
        return count - 1;
    }

    /// An element with exactly this sort value, or -1.
    int FindEqual(Value value) const {
        const int found = FindPrevious(value);
        return found >= 0 && block[found].sortValue == value ? found : -1;
    }

    /// First and last of the neighbours of an element that have its sort value, itself included.
    int RunStart(int index) const {
        while (index > 0 && block[index - 1].sortValue == block[index].sortValue)
            --index;
        return index;
    }
    int RunEnd(int index) const {
        while (index + 1 < count && block[index + 1].sortValue == block[index].sortValue)
            ++index;
        return index;
    }

    /// The first element that holds the item, or -1.
    int FindItem(const void* item) const {
        for (int i = 0; i < count; ++i) {
            if (block[i].item == item)
                return i;
        }
        return -1;
    }

    /// True when an item is looked for among the elements with its sort value: in lists of 26
    /// elements or more, unless the value is negative or no number.
    bool SearchesRun(Value value) const { return value >= 0 && count > bisectedCount; }

    /// The first element that holds the item among those with this sort value, or -1.
    int FindItemInRun(const void* item, Value value) const {
        const int found = FindEqual(value);
        if (found < 0)
            return -1;
        for (int i = RunStart(found); i < count && block[i].sortValue == value; ++i) {
            if (block[i].item == item)
                return i;
        }
        return -1;
    }

    /// Looks in the run if asked, then everywhere; false when the item is in neither.
    bool RemoveItem(const void* item, Value value, bool inRun, unsigned step) {
        int index = inRun ? FindItemInRun(item, value) : -1;
        if (index < 0)
            index = FindItem(item);
        if (index < 0)
            return false;
        Remove(index, step);
        return true;
    }

    /// The first element whose sort value is below that of the one before it, or -1; `previous`
    /// stands before the first.
    int FindDescent(Value& previous) const {
        for (int i = 0; i < count; ++i) {
            if (block[i].sortValue < previous)
                return i;
            previous = block[i].sortValue;
        }
        return -1;
    }

    /// What a search that ended at `index` hands to its caller; each place may be null. In an empty
    /// list nothing is written, without a result only the index.
    void* Report(int index, int* indexOut, Value* sortValueOut) const {
        if (count == 0)
            return nullptr;
        if (indexOut != nullptr)
            *indexOut = index;
        return At(index, sortValueOut);
    }

    void* ReportRunStart(int index, int* indexOut) const {
        const bool found = Contains(index) && block[index].item != nullptr;
        return Report(found ? RunStart(index) : -1, indexOut, nullptr);
    }

    void* ReportRunEnd(Value value, int* indexOut) const {
        const int found = FindEqual(value);
        return Report(found < 0 ? -1 : RunEnd(found), indexOut, nullptr);
    }

private:
    /// From here on the search by sort value bisects.
    static constexpr int bisectedCount = 25;

    /// Up to this capacity, 4 KB, memory holds exactly the capacity; above it, half as much again,
    /// so that a step seldom moves the whole list.
    static constexpr int exactSlots = 256;

    static std::size_t WithReserve(int slots) {
        const std::size_t exact = static_cast<std::size_t>(slots);
        return slots <= exactSlots ? exact : exact + exact / 2;
    }

    std::size_t Slots() const { return _msize(block) / sizeof *block; }

    bool Resize(std::size_t slots) {
        void* resized = std::realloc(block, slots * sizeof *block);
        if (resized == nullptr)
            return false;
        block = static_cast<Element<Value>*>(resized);
        return true;
    }

    bool Reallocate(long long newCapacity) {
        if (newCapacity > 0x7FFFFFFF)
            return false;
        const int slots = static_cast<int>(newCapacity);
        const bool fits =
            block != nullptr && slots > exactSlots && Slots() >= static_cast<std::size_t>(slots);
        if (!fits && !Resize(WithReserve(slots)))
            return false;
        capacity = slots;
        return true;
    }

    int BisectPrevious(Value value) const {
        int low = 0;
        int high = count;
        int middle = count / 2;
        do {
            if (block[middle].sortValue == value)
                break;
            if (value >= block[middle].sortValue)
                low = middle;
            else
                high = middle;
            middle = low + (high - low) / 2;
        } while (middle != low);
        return middle + 1 < count && block[middle + 1].sortValue == value ? middle + 1 : middle;
    }

    Element<Value>* block = nullptr;
    int capacity = 0;
    int count = 0;
};

static_assert(sizeof(Element<long long>) == 16 && offsetof(Element<long long>, sortValue) == 8);
static_assert(sizeof(Element<double>) == 16 && offsetof(Element<double>, sortValue) == 8);
static_assert(sizeof(ElementBlock<long long>) == 16 && sizeof(ElementBlock<double>) == 16);

} // namespace vtr

#endif
