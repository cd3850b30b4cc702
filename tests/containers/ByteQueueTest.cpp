#include "utilities/containers/ByteQueue.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

/// Unread, size and free of each block, as a host that shares the record sees them.
std::string BlocksOf(const CByteQueue& queue) {
    struct Block {
        unsigned char *block, *readPtr;
        unsigned unread, size, free;
    };
    struct {
        Block** blocks;
        unsigned count;
    } record;
    std::memcpy(&record, static_cast<const void*>(&queue), sizeof record);
    std::string shown;
    for (const Block* block : std::vector(record.blocks, record.blocks + record.count)) {
        EXPECT_EQ(block->readPtr == nullptr, block->unread == 0);
        for (const unsigned number : {block->unread, block->size, block->free})
            shown += std::to_string(number) + " ";
    }
    return shown;
}

/// A queue, and the endless series of bytes that goes through it, in which no two places near each
/// other look alike.
struct Stream {
    CByteQueue queue;
    unsigned in = 0, out = 0;

    static Bytes Series(unsigned from, unsigned size) {
        Bytes bytes(size);
        for (unsigned char& byte : bytes)
            byte = static_cast<unsigned char>((from++ * 2654435761u) >> 24);
        return bytes;
    }
    /// Whether all found room; what did not is left out.
    bool Add(unsigned size) {
        const bool added = queue.AddData(Series(in, size).data(), size);
        const unsigned before = in;
        in = out + queue.TotalBytesAvailable();
        EXPECT_EQ(added, size > 0 && in - before == size);
        return added;
    }
    void Get(unsigned most) {
        Bytes bytes(most);
        bytes.resize(queue.GetData(bytes.data(), most));
        ASSERT_EQ(bytes, Series(out, std::min(most, in - out)));
        out += static_cast<unsigned>(bytes.size());
        ASSERT_EQ(queue.TotalBytesAvailable(), in - out);
    }
};

TEST(ByteQueue, GivesBytesOutAsTheyCameIn) {
    AllocationFault fault("vtrutils.dll");
    for (const bool recycle : {true, false}) {
        Stream stream;
        stream.queue.SetRecycleBuffers(recycle);
        int refused = 0;
        EachRound(33, 2000, [&](Dice& dice, int round) {
            const int sizes[] = {3, 3, 100, 5000, 31999, 32000, 40000, 70000, 1000001};
            const int kinds = dice.Below(20) == 0 ? 9 : round / 500 % 2 == 0 ? 8 : 2;
            const int largest = sizes[dice.Below(kinds)];
            const auto size =
                static_cast<unsigned>(dice.Below(3) == 0 ? 1 + dice.Below(largest) : largest);
            // Fills for a while, then drains.
            if (dice.Below(8) >= (round / 100 % 2 == 0 ? 3 : 5))
                return stream.Get(size);
            fault.FailAt(dice.Below(20) == 0);
            refused += !stream.Add(size);
            fault.FailAt(round % 16 == 0 ? static_cast<unsigned>(dice.Below(9)) : 1);
            const CByteQueue copy(stream.queue);
            fault.FailAt(0);
            if (copy.TotalBytesAvailable() != 0)
                stream.queue = copy;
        });
        EXPECT_GT(refused, 5);
        stream.Get(stream.in - stream.out + 1);
    }
}

TEST(ByteQueue, FillsRecyclesAndFreesBlocks) {
    constexpr struct {
        const char* name;
        unsigned added, taken;
        const char* blocks;
    } steps[] = {
        {"no room is no room", 10, 4, "6 10 0 "},
        {"a block of its own", 3, 0, "6 10 0 3 3 0 "},
        {"small ones are freed", 31999, 40000, ""},
        {"too large a one is freed", 1000001, 1000001, ""},
        {"the largest is kept", 1000000, 1000000, "0 1000000 1000000 "},
        {"kept behind the smallest", 1032000, 1000000, "32000 32000 0 0 1000000 1000000 "},
        {"filled from the start", 10, 32000, "10 1000000 999990 0 32000 32000 "},
        {"filled up", 999990, 4, "999996 1000000 0 0 32000 32000 "},
        {"filled in order", 32005, 0, "999996 1000000 0 32000 32000 0 5 5 0 "},
        {"kept in order", 0, 2000000, "0 1000000 1000000 0 32000 32000 "},
    };
    Stream stream;
    stream.Add(9);
    stream.queue.RemoveEverything();
    stream.out = stream.in;
    for (const auto& step : steps) {
        EXPECT_EQ(stream.Add(step.added), step.added > 0);
        stream.Get(step.taken);
        EXPECT_EQ(BlocksOf(stream.queue), step.blocks) << step.name;
    }
}

TEST(ByteQueue, TakesOddArgumentsAndFixesItsSetting) {
    CByteQueue queue, other;
    unsigned char byte = 1;
    EXPECT_FALSE(queue.AddData(nullptr, 4) || queue.AddData(&byte, 0));
    EXPECT_TRUE(queue.AddData(&byte, 1));
    EXPECT_EQ(queue.GetData(nullptr, 1), 0u);
    for (CByteQueue* each : {&queue, &other})
        each->SetRecycleBuffers(false);
    EXPECT_TRUE(queue.RecycleBuffers()) << "there is a block";
    EXPECT_FALSE(CByteQueue(other).RecycleBuffers());
    const CByteQueue& self = queue;
    queue = self;
    other = queue;
    EXPECT_TRUE(other.RecycleBuffers());
    EXPECT_EQ(queue.TotalBytesAvailable() + other.TotalBytesAvailable(), 2u);
    EXPECT_EQ(queue.MinRecycleBufferSize(), 32000u);
}

} // namespace
