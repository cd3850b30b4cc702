#ifndef VTRUTILS_BASE_NAMEINDEX_H
#define VTRUTILS_BASE_NAMEINDEX_H

#include "utilities/base/OwnedText.h"
#include "utilities/base/SameText.h"

#include <utility>

namespace vtr {

/// Finds the first position of each name in a list, without regard to case. Names are not copied
/// and must stay where they are. Private to the library. One thread at a time.
class NameIndex {
public:
    static constexpr unsigned none = ~0u;

    /// How many names were added, repeated ones included.
    unsigned Count() const { return count; }

    /// True when some name was added more than once.
    bool HasRepeats() const { return used < count; }

    /// Gives the name the next position; of equal names the first position is kept. False, with
    /// nothing changed, when memory runs out.
    bool Add(const char* name) {
        if ((used + 1) * 2 > slotCount && !Grow())
            return false;
        Slot& slot = SlotOf(name, HashText(name));
        if (slot.name == nullptr) {
            slot = {name, HashText(name), count};
            ++used;
        }
        ++count;
        return true;
    }

    unsigned Find(const char* name) const {
        if (slotCount == 0)
            return none;
        const Slot& slot = const_cast<NameIndex*>(this)->SlotOf(name, HashText(name));
        return slot.name != nullptr ? slot.position : none;
    }

private:
    struct Slot {
        const char* name; ///< null: free
        std::size_t hash;
        unsigned position;
    };

    using OwnedSlots = std::unique_ptr<Slot[], Free>;

    Slot& SlotOf(const char* name, std::size_t hash) {
        const std::size_t mask = slotCount - 1;
        std::size_t i = hash & mask;
        while (slots[i].name != nullptr &&
               (slots[i].hash != hash || !SameText(slots[i].name, name)))
            i = (i + 1) & mask;
        return slots[i];
    }

    bool Grow() {
        const std::size_t larger = slotCount > 0 ? slotCount * 2 : 16;
        OwnedSlots grown(static_cast<Slot*>(std::calloc(larger, sizeof(Slot))));
        if (grown == nullptr)
            return false;
        for (std::size_t old = 0; old < slotCount; ++old) {
            const Slot& slot = slots[old];
            if (slot.name == nullptr)
                continue;
            std::size_t i = slot.hash & (larger - 1);
            while (grown[i].name != nullptr)
                i = (i + 1) & (larger - 1);
            grown[i] = slot;
        }
        slots = std::move(grown);
        slotCount = larger;
        return true;
    }

    OwnedSlots slots;
    std::size_t slotCount = 0; ///< a power of two, or 0
    unsigned used = 0;
    unsigned count = 0;
};

} // namespace vtr

#endif
