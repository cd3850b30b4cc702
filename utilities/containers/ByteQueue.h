#ifndef VTRUTILS_CONTAINERS_BYTEQUEUE_H
#define VTRUTILS_CONTAINERS_BYTEQUEUE_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

#include <windows.h>

/// A first-in, first-out queue of bytes between a thread that produces and one that consumes. Each
/// call that adds bytes makes a block of their size. With recycling on, as at the start, empty
/// blocks of 32,000 to 1,000,000 bytes are filled again instead of freed, so that a steady stream
/// needs no allocation.
/// Thread-safety: locked by itself; `Lock` and `Unlock` enclose calls that belong together.
class VTRUTILS_API CByteQueue {
public:
    CByteQueue() noexcept;
    /// Has copies of the waiting bytes and the recycling setting; empty when memory runs out.
    CByteQueue(const CByteQueue& other) noexcept;
    CByteQueue& operator=(const CByteQueue& other) noexcept;
    /// Requires: no other thread is at the queue.
    ~CByteQueue();

    /// Copies the bytes to the end of the queue. False for null or no bytes, and if memory runs
    /// out: what found room in recycled blocks is then in the queue, and the rest is not.
    bool AddData(const unsigned char* data, unsigned long length) noexcept;

    /// Takes up to `maxLength` bytes out of the queue and returns how many; 0 for a null buffer.
    unsigned long GetData(unsigned char* buffer, unsigned long maxLength) noexcept;

    /// The number of bytes in the queue, at most the largest that 32 bits hold.
    unsigned long TotalBytesAvailable() const noexcept;

    /// Frees every block, those kept for reuse included.
    void RemoveEverything() noexcept;

    /// Does nothing while the queue has blocks, those kept for reuse included.
    void SetRecycleBuffers(bool on) noexcept;
    bool RecycleBuffers() const noexcept;

    /// In bytes: smaller blocks are not kept.
    unsigned long MinRecycleBufferSize() const noexcept;

    /// Keeps other threads out of the queue until `Unlock`; a thread may lock again.
    void Lock() noexcept;
    /// Requires: the calling thread holds the lock.
    void Unlock() noexcept;

private:
    friend struct vtr::Internals<CByteQueue>;
    struct Block;

    /// First blocks with waiting bytes, of which all but the last are full, then empty ones.
    vtr::PointerFields<Block> blocks;
    mutable CRITICAL_SECTION section;
    bool recycle;
    unsigned int minRecycledSize;
    unsigned int maxRecycledSize;

    /// Slots at the front without a block: a few of many, so that a block that leaves the front
    /// seldom moves all others.
    unsigned int emptySlots;
    unsigned int fullBlocks; ///< after the empty slots, before the first block with room
    unsigned long long waiting;
};

#endif
