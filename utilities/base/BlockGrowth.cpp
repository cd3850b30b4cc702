#include "utilities/base/BlockGrowth.h"

#include "common/Require.h"

#include <bit>
#include <cstdlib>
#include <cstring>
#include <malloc.h>

namespace vtr {

namespace {

constexpr unsigned exactSlots = 64;

std::size_t SlotsFor(long long capacity) {
    const auto exact = static_cast<unsigned>(capacity);
    return exact <= exactSlots ? exact : std::bit_ceil(exact);
}

/// A block of this many slots with the elements; null, with the block as it was, when memory runs
/// out. Large blocks are not moved by `realloc`, which moves their unused slots too and takes three
/// times as long.
void* MoveBlock(const BlockFields& fields, std::size_t slots) {
    if (slots <= exactSlots)
        return std::realloc(fields.block, slots * elementSize);
    void* moved = std::malloc(slots * elementSize);
    if (moved != nullptr && fields.block != nullptr) {
        std::memcpy(moved, fields.block, static_cast<std::size_t>(fields.count) * elementSize);
        std::free(fields.block);
    }
    return moved;
}

std::size_t SlotsIn(void* block) {
    return block != nullptr ? _msize(block) / elementSize : 0;
}

} // namespace

bool GrowBlock(BlockFields& fields, int needed, unsigned step) {
    VTR_REQUIRE(step > 0 && (fields.block == nullptr || needed <= fields.count + 1LL));
    if (fields.block != nullptr && needed <= fields.capacity)
        return true;
    const long long capacity = fields.block == nullptr
                                   ? (static_cast<unsigned>(needed) / step + 1LL) * step
                                   : static_cast<long long>(fields.capacity) + step;
    if (capacity > 0x7FFFFFFF)
        return false;
    const std::size_t slots = SlotsFor(capacity);
    const bool same = fields.block != nullptr && slots == SlotsFor(fields.capacity);
    // A block that was slow to shrink may have the slots already.
    if (!same && (slots <= exactSlots || SlotsIn(fields.block) < slots)) {
        void* moved = MoveBlock(fields, slots);
        if (moved == nullptr)
            return false;
        fields.block = moved;
    }
    fields.capacity = static_cast<int>(capacity);
    return true;
}

void ShrinkBlock(BlockFields& fields, int newCount, unsigned step) {
    if (fields.block == nullptr || newCount > static_cast<long long>(fields.capacity) - step)
        return;
    if (newCount < 1) {
        std::free(fields.block);
        fields.block = nullptr;
        return;
    }
    const std::size_t before = SlotsFor(fields.capacity);
    fields.capacity -= static_cast<int>(step);
    const std::size_t slots = SlotsFor(fields.capacity);
    if (slots == before || (slots > exactSlots && SlotsIn(fields.block) / 4 < slots))
        return;
    void* moved = MoveBlock(fields, slots);
    if (moved != nullptr)
        fields.block = moved;
}

} // namespace vtr
