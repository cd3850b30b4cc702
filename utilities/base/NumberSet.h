#ifndef VTRUTILS_BASE_NUMBERSET_H
#define VTRUTILS_BASE_NUMBERSET_H

#include "common/Require.h"
#include "utilities/base/OwnedText.h"

#include <cstddef>
#include <cstdlib>
#include <utility>

namespace vtr {

/// Numbers below a limit, each with a value: a table of few of them. A lack of memory is reported.
/// Private to the library. One thread at a time.
class NumberTable {
public:
    static constexpr unsigned none = ~0u;

    /// False when memory runs out. Requires: a number other than `none`.
    bool Set(unsigned number, unsigned value) {
        VTR_REQUIRE(number != none);
        if (used * 2 >= size && !Grow())
            return false;
        Slot& slot = slots[PlaceOf(number)];
        used += slot.key == 0 ? 1 : 0;
        slot = {number + 1, value};
        return true;
    }

    /// `none` for a number that was not set, or to that.
    unsigned Find(unsigned number) const {
        if (used == 0)
            return none;
        const Slot& slot = slots[PlaceOf(number)];
        return slot.key != 0 ? slot.value : none;
    }

    template <class Action>
    void ForEach(Action action) const {
        for (std::size_t i = 0; i < size; ++i) {
            if (slots[i].key != 0)
                action(slots[i].key - 1);
        }
    }

    void Clear() {
        slots.reset();
        size = used = 0;
    }

private:
    struct Slot {
        unsigned key; ///< the number + 1; 0: free
        unsigned value;
    };

    std::size_t PlaceOf(unsigned number) const {
        constexpr unsigned scatter = 0x9E3779B1;
        std::size_t i = (number * scatter) >> 7 & (size - 1);
        while (slots[i].key != 0 && slots[i].key != number + 1)
            i = (i + 1) & (size - 1);
        return i;
    }

    bool Grow() {
        NumberTable grown;
        grown.size = size == 0 ? 8 : size * 2;
        grown.slots.reset(static_cast<Slot*>(std::calloc(grown.size, sizeof(Slot))));
        if (grown.slots == nullptr)
            return false;
        for (unsigned i = 0; i < size; ++i) {
            if (slots[i].key != 0)
                grown.slots[grown.PlaceOf(slots[i].key - 1)] = slots[i];
        }
        slots = std::move(grown.slots);
        size = grown.size;
        return true;
    }

    std::unique_ptr<Slot[], Free> slots;
    unsigned size = 0; ///< a power of two
    unsigned used = 0;
};

/// A set of numbers below a limit: a table while it has few, a bit for each number below the limit
/// from then on, so that two large sets are compared 64 numbers at a time. Private to the library.
/// One thread at a time.
class NumberSet {
public:
    bool Has(unsigned number) const {
        if (words != nullptr)
            return (words[number / wordBits] >> number % wordBits & 1) != 0;
        return few.Find(number) != NumberTable::none;
    }

    /// Returns false, with the set unchanged, when memory runs out. Requires: a number below the
    /// limit, which is always the same, and that the set does not have.
    bool Add(unsigned number, unsigned limit) {
        VTR_REQUIRE(number < limit && !Has(number));
        if (words == nullptr && count >= limit / wordBits && !MakeWords(limit))
            return false;
        if (words == nullptr ? !few.Set(number, 0) : !SetBit(number))
            return false;
        ++count;
        return true;
    }

    /// False also where it would take long to tell. Requires: the same limit.
    bool IsKnownPartOf(const NumberSet& other, unsigned limit) const {
        if (words == nullptr || other.words == nullptr)
            return false;
        for (unsigned i = 0; i < WordsFor(limit); ++i) {
            if ((words[i] & ~other.words[i]) != 0)
                return false;
        }
        return true;
    }

private:
    using Word = unsigned long long;
    static constexpr unsigned wordBits = 64;

    static unsigned WordsFor(unsigned limit) { return limit / wordBits + 1; }

    bool SetBit(unsigned number) {
        words[number / wordBits] |= Word{1} << number % wordBits;
        return true;
    }

    bool MakeWords(unsigned limit) {
        words.reset(static_cast<Word*>(std::calloc(WordsFor(limit), sizeof(Word))));
        if (words == nullptr)
            return false;
        few.ForEach([this](unsigned number) { SetBit(number); });
        few.Clear();
        return true;
    }

    NumberTable few;
    std::unique_ptr<Word[], Free> words;
    unsigned count = 0;
};

} // namespace vtr

#endif
