#include "utilities/containers/ByteQueue.h"

#include "common/Require.h"
#include "utilities/base/CriticalSection.h"
#include "utilities/base/Layout.h"
#include "utilities/base/PtrArray.h"
#include "utilities/system/locks/Lock.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

constexpr unsigned smallestRecycled = 32000;
constexpr unsigned largestRecycled = 1000000;

/// The slots at the front are closed when they are at least one for so many blocks.
constexpr unsigned blocksPerEmptySlot = 32;

} // namespace

/// The bytes are after the record, in the same allocation.
struct CByteQueue::Block {
    unsigned char* block;
    unsigned char* readPtr; ///< the next unread byte; null when nothing is unread
    unsigned int unread;
    unsigned int size;
    unsigned int free; ///< at the end of `block`

    /// A full block. Null when memory runs out.
    static Block* Make(const unsigned char* data, unsigned int length) {
        void* memory = std::malloc(sizeof(Block) + length);
        if (memory == nullptr)
            return nullptr;
        auto* bytes = static_cast<unsigned char*>(memory) + sizeof(Block);
        std::memcpy(bytes, data, length);
        auto* made = static_cast<Block*>(memory);
        *made = {bytes, bytes, length, length, 0};
        return made;
    }

    void Reset() {
        readPtr = nullptr;
        unread = 0;
        free = size;
    }

    /// Appends what has room and returns how much that is.
    unsigned int Write(const unsigned char* data, unsigned int length) {
        const unsigned int taken = std::min(length, free);
        std::memcpy(block + (size - free), data, taken);
        if (readPtr == nullptr)
            readPtr = block;
        unread += taken;
        free -= taken;
        return taken;
    }

    /// Returns how many bytes there were.
    unsigned int Read(unsigned char* buffer, unsigned int most) {
        const unsigned int taken = std::min(most, unread);
        std::memcpy(buffer, readPtr, taken);
        unread -= taken;
        readPtr = unread > 0 ? readPtr + taken : nullptr;
        return taken;
    }
};

template <>
struct vtr::Internals<CByteQueue> {
    using Block = CByteQueue::Block;
    static_assert(sizeof(Block) == vtr::ByPointer(32, 20));
    VTR_FIELD_AT(Block, readPtr, 8, 4);
    VTR_FIELD_AT(Block, unread, 16, 8);
    VTR_FIELD_AT(Block, size, 20, 12);
    VTR_FIELD_AT(Block, free, 24, 16);

    static_assert(sizeof(CRITICAL_SECTION) == vtr::ByPointer(40, 24));
    static_assert(sizeof(CByteQueue) == vtr::ByPointer(88, 64));
    VTR_FIELD_AT(CByteQueue, blocks, 0);
    VTR_FIELD_AT(CByteQueue, section, 16, 12);
    VTR_FIELD_AT(CByteQueue, recycle, 56, 36);
    VTR_FIELD_AT(CByteQueue, minRecycledSize, 60, 40);
    VTR_FIELD_AT(CByteQueue, maxRecycledSize, 64, 44);

    static void TakeFromFront(CByteQueue& queue, unsigned number);
    static void CopyBlocks(CByteQueue& queue, const CByteQueue& other);
};

using Internals = vtr::Internals<CByteQueue>;

CByteQueue::CByteQueue() noexcept
    : recycle(true), minRecycledSize(smallestRecycled), maxRecycledSize(largestRecycled),
      emptySlots(0), fullBlocks(0), waiting(0) {
    InitializeCriticalSection(&section);
}

CByteQueue::CByteQueue(const CByteQueue& other) noexcept : CByteQueue() {
    const CSmartLock hold(&other.section);
    recycle = other.recycle;
    Internals::CopyBlocks(*this, other);
}

CByteQueue& CByteQueue::operator=(const CByteQueue& other) noexcept {
    if (this == &other)
        return *this;
    // One lock at a time: two queues may be assigned to each other on two threads.
    CByteQueue copy(other);
    const CSmartLock hold(&section);
    vtr::Pointers(blocks).Swap(copy.blocks);
    recycle = copy.recycle;
    emptySlots = copy.emptySlots;
    fullBlocks = copy.fullBlocks;
    waiting = copy.waiting;
    return *this;
}

CByteQueue::~CByteQueue() {
    VTR_REQUIRE(vtr::IsFree(section) || vtr::IsHeldHere(section));
    RemoveEverything();
    DeleteCriticalSection(&section);
}

bool CByteQueue::AddData(const unsigned char* data, unsigned long length) noexcept {
    if (data == nullptr || length == 0)
        return false;
    const CSmartLock hold(&section);
    vtr::Pointers list(blocks);
    for (unsigned i = emptySlots + fullBlocks; recycle && i < list.Count() && length > 0; ++i) {
        const unsigned int taken = list[i]->Write(data, length);
        data += taken;
        length -= taken;
        waiting += taken;
        if (list[i]->free == 0)
            ++fullBlocks;
    }
    if (length == 0)
        return true;
    Block* added = Block::Make(data, length);
    if (added == nullptr || !list.Append(added)) {
        std::free(added);
        return false;
    }
    ++fullBlocks;
    waiting += length;
    return true;
}

unsigned long CByteQueue::GetData(unsigned char* buffer, unsigned long maxLength) noexcept {
    if (buffer == nullptr)
        return 0;
    const CSmartLock hold(&section);
    const vtr::Pointers list(blocks);
    unsigned long copied = 0;
    unsigned next = emptySlots;
    while (copied < maxLength && next < list.Count() && list[next]->unread > 0) {
        copied += list[next]->Read(buffer + copied, maxLength - copied);
        if (list[next]->unread == 0)
            ++next;
    }
    waiting -= copied;
    Internals::TakeFromFront(*this, next - emptySlots);
    return copied;
}

unsigned long CByteQueue::TotalBytesAvailable() const noexcept {
    const CSmartLock hold(&section);
    constexpr unsigned long most = std::numeric_limits<unsigned long>::max();
    return waiting < most ? static_cast<unsigned long>(waiting) : most;
}

void CByteQueue::RemoveEverything() noexcept {
    const CSmartLock hold(&section);
    vtr::Pointers(blocks).Clear(std::free);
    emptySlots = fullBlocks = 0;
    waiting = 0;
}

void CByteQueue::SetRecycleBuffers(bool on) noexcept {
    const CSmartLock hold(&section);
    if (blocks.count == 0)
        recycle = on;
}

bool CByteQueue::RecycleBuffers() const noexcept {
    const CSmartLock hold(&section);
    return recycle;
}

unsigned long CByteQueue::MinRecycleBufferSize() const noexcept {
    return minRecycledSize;
}

void CByteQueue::Lock() noexcept {
    EnterCriticalSection(&section);
}

void CByteQueue::Unlock() noexcept {
    VTR_REQUIRE(vtr::IsHeldHere(section));
    LeaveCriticalSection(&section);
}

/// Moves the first blocks, which are drained, to the end, or frees those of other sizes.
void Internals::TakeFromFront(CByteQueue& queue, unsigned number) {
    vtr::Pointers blocks(queue.blocks);
    queue.fullBlocks -= std::min(queue.fullBlocks, number);
    Block** const first = blocks.begin() + queue.emptySlots;
    Block** const end = first + number;
    Block** kept = end;
    for (Block** place = end; place != first;) {
        Block* drained = *--place;
        if (queue.recycle && drained->size >= queue.minRecycledSize &&
            drained->size <= queue.maxRecycledSize) {
            drained->Reset();
            *--kept = drained;
        } else {
            std::free(drained);
        }
    }
    std::rotate(kept, end, blocks.end());
    std::fill(first, kept, nullptr);
    queue.emptySlots += static_cast<unsigned>(kept - first);
    if (queue.emptySlots > 0 &&
        queue.emptySlots >= (blocks.Count() - queue.emptySlots) / blocksPerEmptySlot) {
        blocks.RemoveIf([](const Block* block) { return block == nullptr; }, [](Block*) {});
        queue.emptySlots = 0;
    }
}

/// Requires: no blocks, and the other queue is locked.
void Internals::CopyBlocks(CByteQueue& queue, const CByteQueue& other) {
    VTR_REQUIRE(queue.blocks.count == 0 && IsHeldHere(other.section));
    vtr::Pointers blocks(queue.blocks);
    for (const Block* block : vtr::ConstPointers(other.blocks)) {
        if (block == nullptr || block->unread == 0)
            continue;
        Block* copy = Block::Make(block->readPtr, block->unread);
        if (copy == nullptr || !blocks.Append(copy)) {
            std::free(copy);
            queue.RemoveEverything();
            return;
        }
        ++queue.fullBlocks;
        queue.waiting += block->unread;
    }
}
