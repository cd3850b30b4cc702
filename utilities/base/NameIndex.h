#ifndef VTRUTILS_BASE_NAMEINDEX_H
#define VTRUTILS_BASE_NAMEINDEX_H

#include "utilities/base/OwnedText.h"
#include "utilities/base/SameText.h"

#include <cstdlib>
#include <utility>

namespace vtr {

/// Gives each of many names a number, the same one to names that are the same without regard to
/// case. Names are not copied and must stay where they are. Private to the library. One thread at a
/// time.
class NameIndex {
public:
    static constexpr unsigned none = ~0u;

    /// How many different names have a number.
    unsigned Count() const { return used; }

    /// The number of the name, which gets `ifNew` when it has none. `none` when memory runs out.
    unsigned Number(const char* name, unsigned ifNew) {
        if (used * 2 >= size && !Grow())
            return none;
        const std::size_t hash = HashText(name);
        Slot& slot = SlotOf(name, hash);
        if (slot.name == nullptr) {
            slot = {name, hash, ifNew};
            ++used;
        }
        return slot.number;
    }

    /// `none` for a name that has no number.
    unsigned Find(const char* name) const {
        if (used == 0)
            return none;
        const Slot& slot = SlotOf(name, HashText(name));
        return slot.name != nullptr ? slot.number : none;
    }

private:
    struct Slot {
        const char* name; ///< null: free
        std::size_t hash;
        unsigned number;
    };

    using OwnedSlots = std::unique_ptr<Slot[], Free>;

    Slot& SlotOf(const char* name, std::size_t hash) const {
        std::size_t i = hash & (size - 1);
        while (slots[i].name != nullptr &&
               (slots[i].hash != hash || !SameText(slots[i].name, name)))
            i = (i + 1) & (size - 1);
        return slots[i];
    }

    bool Grow() {
        const std::size_t newSize = size == 0 ? 16 : size * 2;
        OwnedSlots grown(static_cast<Slot*>(std::calloc(newSize, sizeof(Slot))));
        if (grown == nullptr)
            return false;
        for (std::size_t i = 0; i < size; ++i) {
            if (slots[i].name == nullptr)
                continue;
            std::size_t place = slots[i].hash & (newSize - 1);
            while (grown[place].name != nullptr)
                place = (place + 1) & (newSize - 1);
            grown[place] = slots[i];
        }
        slots = std::move(grown);
        size = newSize;
        return true;
    }

    OwnedSlots slots;
    std::size_t size = 0; ///< a power of two
    unsigned used = 0;
};

} // namespace vtr

#endif
