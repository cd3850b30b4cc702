#ifndef VTRUTILS_BASE_ELEMENTBLOCK_H
#define VTRUTILS_BASE_ELEMENTBLOCK_H

#include "common/Require.h"
#include "utilities/Fields.h"
#include "utilities/base/BisectElements.h"
#include "utilities/base/BlockGrowth.h"

#include <cstddef>
#include <cstring>

namespace vtr {

/// Works on the elements of a `CMyArrayList` or `CMegaArrayList`: growth, moving and searching.
/// Only one of the two has its growth step among its fields, which is why that comes with each
/// call. Searches expect ascending sort values; on others they end, at some element. Private to the
/// library. One thread at a time.
template <class Value>
class ElementBlock {
    static_assert(sizeof(Element<Value>) == elementSize);

public:
    explicit ElementBlock(ElementFields<Value>& record) : fields(record) {}

    bool HasBlock() const { return fields.block != nullptr; }
    int Count() const { return fields.count; }
    bool IsEmpty() const { return Count() == 0; }
    bool Contains(int index) const { return index >= 0 && index < Count(); }

    /// Requires: Contains(index).
    Element<Value>& operator[](int index) const {
        VTR_REQUIRE(Contains(index));
        return fields.block[index];
    }

    Element<Value>* begin() const { return fields.block; }
    Element<Value>* end() const { return fields.block + Count(); }

    /// Moves the elements from `index` on by one place. Opening requires room for one more.
    void Shift(int index, _tshift direction) {
        if (index >= Count())
            return;
        Element<Value>* from = fields.block + index;
        const std::size_t size = static_cast<std::size_t>(Count() - index) * sizeof *from;
        std::memmove(direction == shiftOpen ? from + 1 : from - 1, from, size);
    }

    /// Room for this many; see `GrowBlock`. False, with nothing changed, when memory runs out.
    bool Grow(int needed, unsigned step) {
        BlockFields plain{fields.block, fields.capacity, fields.count};
        const bool grown = GrowBlock(plain, needed, step);
        Take(plain);
        return grown;
    }

    /// See `ShrinkBlock`.
    void Shrink(int newCount, unsigned step) {
        BlockFields plain{fields.block, fields.capacity, fields.count};
        ShrinkBlock(plain, newCount, step);
        Take(plain);
    }

    /// False, with nothing changed, when memory runs out. Requires: 0 <= index <= Count().
    bool Insert(int index, void* item, Value sortValue, unsigned step) {
        VTR_REQUIRE(index >= 0 && index <= Count());
        const bool hasRoom = HasBlock() && Count() < fields.capacity;
        if (!hasRoom && !Grow(Count() + 1, step))
            return false;
        Shift(index, shiftOpen);
        fields.block[index] = {item, sortValue};
        ++fields.count;
        return true;
    }

    /// Requires: Contains(index).
    void Remove(int index, unsigned step) {
        VTR_REQUIRE(Contains(index));
        Shift(index + 1, shiftClose);
        --fields.count;
        Shrink(Count(), step);
    }

    void ForgetElements() { fields.count = 0; }

    /// Forgets the elements and frees the block.
    void Clear(unsigned step) {
        Shrink(0, step);
        fields.count = 0;
    }

    /// Takes copies of all elements of another list. Empty when memory runs out.
    void Copy(const ElementFields<Value>& other, unsigned step) {
        Clear(step);
        if (other.count == 0 || !Grow(other.count, step))
            return;
        std::memcpy(fields.block, other.block,
                    static_cast<std::size_t>(other.count) * sizeof *other.block);
        fields.count = other.count;
    }

    /// The last element below `value` where the first is below it and the last is not; 0 where none
    /// is below it. Requires: not empty.
    int Bisect(Value value) const {
        VTR_REQUIRE(!IsEmpty());
        int low = 0;
        int high = Count() - 1;
        int middle = high / 2;
        while (low != middle) {
            if (fields.block[middle].sortValue < value)
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
        if (Count() >= bisectedCount)
            return BisectElements(fields.block, Count(), value);
        if (Count() <= 2)
            return Count() == 2 && value >= fields.block[1].sortValue   ? 1
                   : Count() >= 1 && value >= fields.block[0].sortValue ? 0
                                                                        : -1;
        for (int i = 0; i < Count(); ++i) {
            if (fields.block[i].sortValue >= value)
                return fields.block[i].sortValue == value ? i : i - 1;
        }
        return Count() - 1;
    }

    /// An element with exactly this sort value, or -1.
    int FindEqual(Value value) const {
        const int found = FindPrevious(value);
        return found >= 0 && fields.block[found].sortValue == value ? found : -1;
    }

    /// The first and the last of the neighbours of an element that have its sort value, itself
    /// included.
    int RunStart(int index) const {
        while (index > 0 && fields.block[index - 1].sortValue == fields.block[index].sortValue)
            --index;
        return index;
    }
    int RunEnd(int index) const {
        while (index + 1 < Count() &&
               fields.block[index + 1].sortValue == fields.block[index].sortValue)
            ++index;
        return index;
    }

    /// The first element that holds the item, or -1.
    int FindItem(const void* item) const {
        for (int i = 0; i < Count(); ++i) {
            if (fields.block[i].item == item)
                return i;
        }
        return -1;
    }

    /// True when an item is looked for among the elements with its sort value: in lists of 26
    /// elements or more, unless the value is negative or not a number.
    bool SearchesRun(Value value) const { return value >= 0 && Count() > bisectedCount; }

    /// The first element that holds the item among those with this sort value, or -1.
    int FindItemInRun(const void* item, Value value) const {
        const int found = FindEqual(value);
        if (found < 0)
            return -1;
        for (int i = RunStart(found); i < Count() && fields.block[i].sortValue == value; ++i) {
            if (fields.block[i].item == item)
                return i;
        }
        return -1;
    }

    /// Looks in the run if asked, then everywhere; false when the item is in neither.
    bool RemoveItem(const void* item, Value value, bool inRun, unsigned step) {
        int index = inRun ? FindItemInRun(item, value) : -1;
        if (index < 0)
            index = FindItem(item);
        if (index >= 0)
            Remove(index, step);
        return index >= 0;
    }

    /// The first element whose sort value is below the one before it, `previous` at first; or -1.
    int FindDescent(Value& previous) const {
        for (int i = 0; i < Count(); ++i) {
            if (fields.block[i].sortValue < previous)
                return i;
            previous = fields.block[i].sortValue;
        }
        return -1;
    }

    /// What a search that ended at `index` hands to its caller; each place may be null. Writes
    /// nothing in an empty list, and only the index if there is no result.
    void* Report(int index, int* indexOut, Value* sortValueOut) const {
        if (Count() == 0)
            return nullptr;
        if (indexOut != nullptr)
            *indexOut = index;
        return fields.At(index, sortValueOut);
    }

    void* ReportRunStart(int index, int* indexOut) const {
        const bool found = Contains(index) && fields.block[index].item != nullptr;
        return Report(found ? RunStart(index) : -1, indexOut, nullptr);
    }

    void* ReportRunEnd(Value value, int* indexOut) const {
        const int found = FindEqual(value);
        return Report(found < 0 ? -1 : RunEnd(found), indexOut, nullptr);
    }

private:
    /// From here on the search by sort value bisects.
    static constexpr int bisectedCount = 25;

    void Take(const BlockFields& plain) {
        fields.block = static_cast<Element<Value>*>(plain.block);
        fields.capacity = plain.capacity;
    }

    ElementFields<Value>& fields;
};

} // namespace vtr

#endif
