#include "utilities/containers/ByteQueue.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

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

TEST(ByteQueue, FixesItsSettingWithItsFirstBlock) {
    CByteQueue queue;
    unsigned char byte = 1;
    EXPECT_FALSE(queue.AddData(nullptr, 4) || queue.AddData(&byte, 0));
    EXPECT_TRUE(queue.AddData(&byte, 1));
    queue.SetRecycleBuffers(false);
    EXPECT_TRUE(queue.RecycleBuffers()) << "there is a block";
    const CByteQueue& self = queue;
    queue = self;
    EXPECT_EQ(queue.TotalBytesAvailable(), 1u);
    queue.RemoveEverything();
    EXPECT_EQ(queue.TotalBytesAvailable(), 0u);
}

} // namespace
