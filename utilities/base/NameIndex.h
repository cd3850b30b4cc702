#ifndef VTRUTILS_BASE_NAMEINDEX_H
#define VTRUTILS_BASE_NAMEINDEX_H

#include "utilities/base/SameText.h"

#include <vector>

namespace vtr {

/// Finds the first position of each name in a list, without regard to case. Names are not copied
/// and must stay where they are. Private to the library; throws `std::bad_alloc`. One thread at a
/// time.
class NameIndex {
public:
    static constexpr unsigned none = ~0u;

    /// How many names were added, repeated ones included.
    unsigned Count() const { return count; }

    /// True when some name was added more than once.
    bool HasRepeats() const { return used < count; }

    /// Gives the name the next position; of equal names the first position is kept.
    void Add(const char* name) {
        if ((used + 1) * 2 > slots.size())
            Grow();
        Slot& slot = SlotOf(name, HashText(name));
        if (slot.name == nullptr) {
            slot = {name, HashText(name), count};
            ++used;
        }
        ++count;
    }

    unsigned Find(const char* name) const {
        if (slots.empty())
            return none;
        const Slot& slot = const_cast<NameIndex*>(this)->SlotOf(name, HashText(name));
        return slot.name != nullptr ? slot.position : none;
    }

private:
    struct Slot {
        const char* name = nullptr;
        std::size_t hash = 0;
        unsigned position = none;
    };

    Slot& SlotOf(const char* name, std::size_t hash) {
        const std::size_t mask = slots.size() - 1;
        std::size_t i = hash & mask;
        while (slots[i].name != nullptr &&
               (slots[i].hash != hash || !SameText(slots[i].name, name)))
            i = (i + 1) & mask;
        return slots[i];
    }

    void Grow() {
        std::vector<Slot> old(slots.empty() ? 16 : slots.size() * 2);
        old.swap(slots);
        for (const Slot& slot : old) {
            if (slot.name == nullptr)
                continue;
            std::size_t i = slot.hash & (slots.size() - 1);
            while (slots[i].name != nullptr)
                i = (i + 1) & (slots.size() - 1);
            slots[i] = slot;
        }
    }

    std::vector<Slot> slots;
    unsigned used = 0;
    unsigned count = 0;
};

} // namespace vtr

#endif
