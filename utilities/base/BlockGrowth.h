#ifndef VTRUTILS_BASE_BLOCKGROWTH_H
#define VTRUTILS_BASE_BLOCKGROWTH_H

#include <cstddef>

/// The elements of an array list, and how their block grows and shrinks. Private to the library.
/// One thread at a time.

namespace vtr {

template <class Value>
struct Element {
    void* item; ///< never dereferenced
    Value sortValue;
};

/// The size of an element of either kind.
constexpr std::size_t elementSize = 16;
static_assert(sizeof(Element<long long>) == elementSize);
static_assert(sizeof(Element<double>) == elementSize);
static_assert(offsetof(Element<long long>, sortValue) == 8);
static_assert(offsetof(Element<double>, sortValue) == 8);

/// The block itself, whose growth is the same for both kinds.
struct BlockFields {
    void* block = nullptr;
    int capacity = 0;
    int count = 0;
};

/// Makes room for `needed` elements: the first block gets the whole steps above `needed`, a later
/// one is a step larger than before. Up to 64 elements memory holds exactly the capacity; above, a
/// power of two is kept at hand, so that a step seldom moves the whole list, nor do steps to and
/// fro. False, with nothing changed, when memory runs out. Requires: step > 0, needed <= count + 1
/// once there is a block.
bool GrowBlock(BlockFields& fields, int needed, unsigned step);

/// Gives one step back when `newCount` elements leave it unused, and the block when they are none;
/// its capacity then stays as it was until the next block. A block that cannot be made smaller is
/// used as it is.
void ShrinkBlock(BlockFields& fields, int newCount, unsigned step);

} // namespace vtr

#endif
