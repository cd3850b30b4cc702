#include "utilities/containers/ByteQueue.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/Permits.h"
#include "tests/support/ThreadTeam.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

struct Block {
    unsigned char* block;
    unsigned char* readPtr;
    unsigned unread, size, free;
};

/// The blocks as a host that shares the record sees them.
std::vector<Block> BlocksOf(const CByteQueue& queue) {
    Block** blocks = nullptr;
    unsigned count = 0;
    std::memcpy(&blocks, static_cast<const void*>(&queue), sizeof blocks);
    std::memcpy(&count, reinterpret_cast<const char*>(&queue) + sizeof blocks, sizeof count);
    std::vector<Block> copies;
    std::transform(blocks, blocks + count, std::back_inserter(copies), [](auto* b) { return *b; });
    return copies;
}

using Sizes = std::vector<unsigned>;

/// Unread, size and free of each block.
std::vector<Sizes> SizesOf(const CByteQueue& queue) {
    std::vector<Sizes> sizes;
    for (const Block& block : BlocksOf(queue)) {
        EXPECT_EQ(block.readPtr == nullptr, block.unread == 0);
        sizes.push_back({block.unread, block.size, block.free});
    }
    return sizes;
}

/// An endless series of bytes in which no two places near each other look alike.
class Series {
public:
    Bytes Next(std::size_t count) {
        Bytes bytes(count);
        for (unsigned char& byte : bytes)
            byte = static_cast<unsigned char>((place++ * 2654435761u) >> 24);
        return bytes;
    }
    void Back(std::size_t count) { place -= static_cast<unsigned>(count); }

private:
    unsigned place = 0;
};

bool Add(CByteQueue& queue, const Bytes& bytes) {
    return queue.AddData(bytes.data(), static_cast<unsigned long>(bytes.size()));
}

Bytes Get(CByteQueue& queue, std::size_t most) {
    Bytes bytes(most);
    bytes.resize(queue.GetData(bytes.data(), static_cast<unsigned long>(most)));
    return bytes;
}

unsigned RandomSize(std::mt19937& random) {
    const unsigned sizes[] = {1, 7, 100, 5000, 31999, 32000, 32001, 70000, 1000000, 1000001};
    const unsigned size = sizes[random() % (random() % 20 == 0 ? 10u : 8u)];
    return random() % 3 == 0 ? 1 + static_cast<unsigned>(random() % size) : size;
}

TEST(ByteQueue, GivesBytesOutAsTheyCameIn) {
    for (const bool recycle : {true, false}) {
        constexpr unsigned seed = 33;
        std::mt19937 random(seed);
        CByteQueue queue;
        queue.SetRecycleBuffers(recycle);
        Series in, out;
        std::size_t waiting = 0;
        for (int round = 0; round < 1500; ++round) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
            const std::size_t size = RandomSize(random);
            // Fills for a while, then drains.
            if (random() % 8 < (round / 100 % 2 == 0 ? 5u : 3u)) {
                ASSERT_TRUE(Add(queue, in.Next(size)));
                waiting += size;
            } else {
                const Bytes got = Get(queue, size);
                ASSERT_EQ(got.size(), std::min(size, waiting));
                ASSERT_EQ(got, out.Next(got.size()));
                waiting -= got.size();
            }
            ASSERT_EQ(queue.TotalBytesAvailable(), waiting);
        }
        EXPECT_EQ(Get(queue, waiting + 1), out.Next(waiting));
    }
}

TEST(ByteQueue, KeepsItsOrderThroughManySmallBlocks) {
    CByteQueue queue;
    Series in, out;
    for (int i = 0; i < 5000; ++i)
        ASSERT_TRUE(Add(queue, in.Next(3)));
    for (int i = 0; i < 4990; ++i)
        ASSERT_EQ(Get(queue, 3), out.Next(3)) << i;
    ASSERT_TRUE(Add(queue, in.Next(40)));
    EXPECT_EQ(Get(queue, 1000), out.Next(70));
    EXPECT_TRUE(BlocksOf(queue).empty());
}

TEST(ByteQueue, FillsBlocksInOrder) {
    CByteQueue queue;
    Series in, out;
    const auto add = [&](std::size_t size) { ASSERT_TRUE(Add(queue, in.Next(size))); };
    const auto get = [&](std::size_t size) { ASSERT_EQ(Get(queue, size), out.Next(size)); };
    add(10);
    get(4);
    add(3);
    EXPECT_EQ(SizesOf(queue), (std::vector<Sizes>{{6, 10, 0}, {3, 3, 0}})) << "no room is no room";
    get(9);
    EXPECT_TRUE(SizesOf(queue).empty()) << "small blocks are freed";

    add(40000);
    add(32000);
    get(40001);
    EXPECT_EQ(SizesOf(queue), (std::vector<Sizes>{{31999, 32000, 0}, {0, 40000, 40000}}));
    add(10);
    get(31999);
    EXPECT_EQ(SizesOf(queue), (std::vector<Sizes>{{10, 40000, 39990}, {0, 32000, 32000}}));
    get(4);
    add(39990);
    EXPECT_EQ(SizesOf(queue), (std::vector<Sizes>{{39996, 40000, 0}, {0, 32000, 32000}}));
    add(32005);
    EXPECT_EQ(SizesOf(queue),
              (std::vector<Sizes>{{39996, 40000, 0}, {32000, 32000, 0}, {5, 5, 0}}));
    get(39996 + 32000 + 5);
    EXPECT_EQ(SizesOf(queue), (std::vector<Sizes>{{0, 40000, 40000}, {0, 32000, 32000}}));
    EXPECT_EQ(Get(queue, 1), Bytes());
}

TEST(ByteQueue, ReusesBlocksOfSomeSizes) {
    AllocationFault fault("vtrutils.dll");
    for (const auto& [size, reused] :
         {std::pair(1000u, false), std::pair(31999u, false), std::pair(32000u, true),
          std::pair(1000000u, true), std::pair(1000001u, false)}) {
        for (const bool recycle : {true, false}) {
            CByteQueue queue;
            queue.SetRecycleBuffers(recycle);
            ASSERT_TRUE(Add(queue, Bytes(size)));
            queue.SetRecycleBuffers(!recycle);
            EXPECT_EQ(queue.RecycleBuffers(), recycle) << "fixed while there are blocks";
            ASSERT_EQ(Get(queue, size), Bytes(size));
            EXPECT_EQ(BlocksOf(queue).size(), reused && recycle ? 1u : 0u) << size;
            fault.FailAt(0);
            ASSERT_TRUE(Add(queue, Bytes(size)));
            EXPECT_EQ(fault.Count() == 0, reused && recycle) << size;
            queue.RemoveEverything();
            queue.SetRecycleBuffers(!recycle);
            EXPECT_EQ(queue.RecycleBuffers(), !recycle);
            EXPECT_EQ(queue.TotalBytesAvailable(), 0u);
        }
    }
    EXPECT_EQ(CByteQueue().MinRecycleBufferSize(), 32000u);
}

TEST(ByteQueue, StreamsWithoutAllocating) {
    AllocationFault fault("vtrutils.dll");
    struct Row {
        const char* name;
        unsigned behind, write, read;
    };
    const Row rows[] = {{"as written", 0, 40000, 40000},
                        {"some behind", 9, 40000, 40000},
                        {"in other parts", 3, 32000, 1600},
                        {"many behind", 70, 32000, 64000}};
    for (const Row& row : rows) {
        CByteQueue queue;
        Series in, out;
        for (unsigned i = 0; i < row.behind; ++i)
            ASSERT_TRUE(Add(queue, in.Next(row.write)));
        for (int round = 0; round < 60; ++round) {
            if (round == 3)
                fault.FailAt(0);
            for (unsigned written = 0; written < row.read; written += row.write)
                ASSERT_TRUE(Add(queue, in.Next(row.write)));
            for (unsigned read = 0; read < std::max(row.read, row.write); read += row.read)
                ASSERT_EQ(Get(queue, row.read), out.Next(row.read));
        }
        EXPECT_EQ(fault.Count(), 0u) << row.name;
    }
}

TEST(ByteQueue, CopiesDeeply) {
    CByteQueue queue;
    Series series;
    const Bytes bytes = series.Next(40100);
    ASSERT_TRUE(Add(queue, Bytes(bytes.begin(), bytes.begin() + 100)));
    ASSERT_TRUE(Add(queue, Bytes(bytes.begin() + 100, bytes.end())));
    ASSERT_EQ(Get(queue, 1).size(), 1u);
    const Bytes rest(bytes.begin() + 1, bytes.end());
    CByteQueue copy(queue);
    CByteQueue assigned;
    assigned.SetRecycleBuffers(false);
    Add(assigned, Bytes(5));
    assigned = queue;
    CByteQueue& self = assigned;
    assigned = self;
    EXPECT_TRUE(assigned.RecycleBuffers());
    queue.RemoveEverything();
    for (CByteQueue* each : {&copy, &assigned}) {
        EXPECT_EQ(each->TotalBytesAvailable(), rest.size());
        ASSERT_TRUE(Add(*each, Bytes(3)));
        EXPECT_EQ(Get(*each, rest.size()), rest);
        EXPECT_EQ(Get(*each, 9), Bytes(3));
    }
}

TEST(ByteQueue, TakesOddArguments) {
    CByteQueue queue;
    const unsigned char byte = 1;
    unsigned char out = 0;
    EXPECT_FALSE(queue.AddData(nullptr, 4));
    EXPECT_FALSE(queue.AddData(&byte, 0));
    EXPECT_EQ(queue.GetData(&out, 1), 0u);
    queue.Lock();
    EXPECT_TRUE(queue.AddData(&byte, 1)) << "the lock may be taken again";
    queue.Unlock();
    EXPECT_EQ(queue.GetData(nullptr, 1), 0u);
    EXPECT_EQ(queue.GetData(&out, 0), 0u);
    EXPECT_EQ(queue.TotalBytesAvailable(), 1u);
}

TEST(ByteQueue, LosesOnlyTheRemainderWithoutMemory) {
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([](unsigned n) {
        SCOPED_TRACE(n);
        CByteQueue queue;
        Series in, out;
        std::size_t waiting = 0;
        int refused = 0;
        for (const unsigned size : {10u, 40000u, 32000u, 100u, 90000u, 50u, 50u, 50u, 50u, 50u}) {
            const bool added = Add(queue, in.Next(size));
            const std::size_t kept = queue.TotalBytesAvailable() - waiting;
            in.Back(size - kept);
            EXPECT_LE(kept, size);
            EXPECT_EQ(added, kept == size);
            refused += added ? 0 : 1;
            waiting += kept;
            if (size == 100) {
                EXPECT_EQ(Get(queue, waiting), out.Next(waiting));
                waiting = 0;
            }
        }
        CByteQueue copy(queue);
        copy = queue;
        if (copy.TotalBytesAvailable() != 0) {
            EXPECT_EQ(copy.TotalBytesAvailable(), waiting);
            EXPECT_EQ(Get(copy, waiting), Get(queue, waiting));
        } else {
            ++refused;
            EXPECT_EQ(Get(queue, waiting), out.Next(waiting));
        }
        EXPECT_LE(refused, 1);
    });
    EXPECT_GE(failures, 15u);
}

TEST(ByteQueue, StreamsFromOneThreadToAnother) {
    constexpr std::size_t total = 20'000'000;
    CByteQueue queue;
    Permits available(0), room(64);
    std::size_t received = 0;
    bool inOrder = true;
    RunTeam("queue of two", 2, [&](unsigned number) {
        std::mt19937 random(number);
        Series series;
        for (std::size_t done = 0; done < total;) {
            const std::size_t size = std::min<std::size_t>(1 + random() % 60000, total - done);
            if (number == 0) {
                room.Take();
                Add(queue, series.Next(size));
                done += size;
                available.Give();
                continue;
            }
            available.Take();
            // All of one write, and parts of those around it.
            for (Bytes got = Get(queue, size); !got.empty(); got = Get(queue, size)) {
                inOrder = inOrder && got == series.Next(got.size());
                done += got.size();
                received += got.size();
            }
            room.Give();
        }
    });
    EXPECT_TRUE(inOrder);
    EXPECT_EQ(received, total);
}

TEST(ByteQueue, IsAssignedBothWaysAtOnce) {
    const Bytes bytes = Series().Next(5000);
    CByteQueue queues[2];
    for (CByteQueue& queue : queues)
        ASSERT_TRUE(Add(queue, bytes));
    RunTeam("queues assigned", 2, [&](unsigned number) {
        for (int i = 0; i < 1000; ++i)
            queues[number] = queues[1 - number];
    });
    for (CByteQueue& queue : queues)
        EXPECT_EQ(Get(queue, bytes.size() + 1), bytes);
}

TEST(ByteQueue, LosesNothingAmongEightThreads) {
    struct Item {
        unsigned producer, number;
    };
    constexpr unsigned producers = 4, each = 20000;
    CByteQueue queue;
    Permits available(0);
    std::vector<Item> received[producers];
    RunTeam("queue of eight", 2 * producers, [&](unsigned number) {
        for (unsigned i = 0; i < each; ++i) {
            Item item{number, i};
            auto* bytes = reinterpret_cast<unsigned char*>(&item);
            if (number < producers) {
                queue.AddData(bytes, sizeof item);
                available.Give();
            } else {
                available.Take();
                queue.GetData(bytes, sizeof item);
                received[number - producers].push_back(item);
            }
        }
    });
    std::vector<unsigned> counts(producers * each);
    for (const auto& items : received) {
        unsigned next[producers] = {};
        for (const Item& item : items) {
            ASSERT_LT(item.producer, producers);
            ASSERT_LT(item.number, each);
            ASSERT_GE(item.number, next[item.producer]) << "out of order";
            next[item.producer] = item.number + 1;
            ++counts[item.producer * each + item.number];
        }
    }
    EXPECT_EQ(std::count(counts.begin(), counts.end(), 1u), producers * each);
    EXPECT_EQ(queue.TotalBytesAvailable(), 0u);
}

} // namespace
