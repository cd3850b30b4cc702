#ifndef VTRUTILS_BASE_BLOCKGROWTH_H
#define VTRUTILS_BASE_BLOCKGROWTH_H

#include <cstddef>

/// How the block of an array list grows and shrinks. Private to the library. One thread at a time.

/// Which way elements move: over a removed one, or aside for a new one.
enum _tshift { shiftClose = 0, shiftOpen = 1 };

namespace vtr {

/// The size of an element of either kind.
constexpr std::size_t elementSize = 16;

/// The fields of a list, without the kind of its elements, which growth does not ask for.
struct BlockFields {
    void* block;
    int capacity;
    int count;
};

/// Makes room for `needed` elements: the first block gets the whole steps above `needed`, a later
/// one is a step larger than before. Up to 64 elements memory holds exactly the capacity; above, a
/// power of two is kept at hand, so that a step seldom moves the whole list, nor do steps to and
/// fro. False, with nothing changed, when memory runs out. Requires: step > 0, needed <= count + 1
/// once there is a block.
bool GrowBlock(BlockFields& fields, int needed, unsigned step);

/// Gives one step back if `newCount` elements do not need it, and the block if `newCount` is 0; the
/// capacity then stays as it was until the next block. A block that cannot be made smaller is used
/// as it is.
void ShrinkBlock(BlockFields& fields, int newCount, unsigned step);

} // namespace vtr

#endif
