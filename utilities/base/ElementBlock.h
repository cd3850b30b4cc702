#ifndef VTRUTILS_BASE_ELEMENTBLOCK_H
#define VTRUTILS_BASE_ELEMENTBLOCK_H

#include "utilities/base/BlockGrowth.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <xmmintrin.h>

/// Which way elements move: over a removed one, or aside for a new one.
enum _tshift { shiftClose = 0, shiftOpen = 1 };

namespace vtr {

/// The block of elements behind `CMyArrayList` and `CMegaArrayList`: growth, moving and searching.
/// Its three fields are the first of both, which is why the growth step comes with each call.
/// Searches expect ascending sort values; on others they end, at some element. Hosts see it only as
/// a private field. One thread at a time.
template <class Value>
class ElementBlock : private BlockFields {
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
    Element<Value>& operator[](int index) { return Elements()[index]; }
    const Element<Value>& operator[](int index) const { return Elements()[index]; }

    /// Null when out of range; `sortValueOut` may be null and is then not written.
    void* At(int index, Value* sortValueOut) const {
        if (!Contains(index))
            return nullptr;
        if (sortValueOut != nullptr)
            *sortValueOut = Elements()[index].sortValue;
        return Elements()[index].item;
    }

    Element<Value>* begin() { return Elements(); }
    Element<Value>* end() { return Elements() + count; }

    /// Moves the elements from `index` on by one place. Opening requires room for one more.
    void Shift(int index, _tshift direction) {
        if (index >= count)
            return;
        Element<Value>* from = Elements() + index;
        const std::size_t size = static_cast<std::size_t>(count - index) * sizeof *from;
        std::memmove(direction == shiftOpen ? from + 1 : from - 1, from, size);
    }

    /// Room for one more without growing.
    bool HasRoom() const { return block != nullptr && count < capacity; }

    /// Requires: HasRoom().
    void Append(void* item, Value sortValue) { Elements()[count++] = {item, sortValue}; }

    /// False, with nothing changed, when memory runs out. Requires: 0 <= index <= Count().
    bool Insert(int index, void* item, Value sortValue, unsigned step) {
        if (!HasRoom() && !GrowBlock(*this, count + 1, step))
            return false;
        Shift(index, shiftOpen);
        Elements()[index] = {item, sortValue};
        ++count;
        return true;
    }

    /// Requires: Contains(index).
    void Remove(int index, unsigned step) {
        Shift(index + 1, shiftClose);
        --count;
        ShrinkBlock(*this, count, step);
    }

    void ForgetElements() { count = 0; }

    /// Forgets the elements and frees the block.
    void Clear(unsigned step) {
        ShrinkBlock(*this, 0, step);
        count = 0;
    }

    /// Takes copies of all elements of another block. Empty when memory runs out.
    void Copy(const ElementBlock& other, unsigned step) {
        Clear(step);
        if (other.count == 0 || !GrowBlock(*this, other.count, step))
            return;
        std::memcpy(block, other.block, static_cast<std::size_t>(other.count) * elementSize);
        count = other.count;
    }

    /// The last element below `value` where the first is below it and the last is not; 0 where none
    /// is below it. Requires: not empty.
    int Bisect(Value value) const {
        int low = 0;
        int high = count - 1;
        int middle = high / 2;
        while (low != middle) {
            if (Elements()[middle].sortValue < value)
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
            return count == 2 && value >= Elements()[1].sortValue   ? 1
                   : count >= 1 && value >= Elements()[0].sortValue ? 0
                                                                    : -1;
        for (int i = 0; i < count; ++i) {
            if (Elements()[i].sortValue >= value)
                return Elements()[i].sortValue == value ? i : i - 1;
        }
        return count - 1;
    }

    /// An element with exactly this sort value, or -1.
    int FindEqual(Value value) const {
        const int found = FindPrevious(value);
        return found >= 0 && Elements()[found].sortValue == value ? found : -1;
    }

    /// First and last of the neighbours of an element that have its sort value, itself included.
    int RunStart(int index) const {
        while (index > 0 && Elements()[index - 1].sortValue == Elements()[index].sortValue)
            --index;
        return index;
    }
    int RunEnd(int index) const {
        while (index + 1 < count && Elements()[index + 1].sortValue == Elements()[index].sortValue)
            ++index;
        return index;
    }

    /// The first element that holds the item, or -1.
    int FindItem(const void* item) const {
        for (int i = 0; i < count; ++i) {
            if (Elements()[i].item == item)
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
        for (int i = RunStart(found); i < count && Elements()[i].sortValue == value; ++i) {
            if (Elements()[i].item == item)
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
            if (Elements()[i].sortValue < previous)
                return i;
            previous = Elements()[i].sortValue;
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
        const bool found = Contains(index) && Elements()[index].item != nullptr;
        return Report(found ? RunStart(index) : -1, indexOut, nullptr);
    }

    void* ReportRunEnd(Value value, int* indexOut) const {
        const int found = FindEqual(value);
        return Report(found < 0 ? -1 : RunEnd(found), indexOut, nullptr);
    }

private:
    /// From here on the search by sort value bisects.
    static constexpr int bisectedCount = 25;

    int BisectPrevious(Value value) const {
        // The part that is left, told by its start and length so that narrowing it takes no branch,
        // which would be guessed wrong every other time.
        unsigned low = 0;
        unsigned length = static_cast<unsigned>(count);
        unsigned half = length / 2;
        do {
            // Whichever half is left, what it is compared with next is on its way.
            _mm_prefetch(reinterpret_cast<const char*>(Elements() + low + half / 2), _MM_HINT_T0);
            _mm_prefetch(reinterpret_cast<const char*>(Elements() + low + half + half / 2),
                         _MM_HINT_T0);
            const Value middle = Elements()[low + half].sortValue;
            if (middle == value)
                break;
            const unsigned above = value >= middle ? 1 : 0;
            low += half & (0 - above);
            length = half + (above & length);
            half = length / 2;
        } while (half != 0);
        const int found = static_cast<int>(low + half);
        return found + 1 < count && Elements()[found + 1].sortValue == value ? found + 1 : found;
    }

    Element<Value>* Elements() const { return static_cast<Element<Value>*>(block); }
};

static_assert(sizeof(ElementBlock<long long>) == 16 && sizeof(ElementBlock<double>) == 16);

} // namespace vtr

#endif
