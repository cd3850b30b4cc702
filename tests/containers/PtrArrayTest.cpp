#include "utilities/containers/PtrArray.h"

#include "tests/support/AllocationFault.h"

#include <algorithm>
#include <bit>
#include <gtest/gtest.h>
#include <random>
#include <vector>

TEST(PtrArray, GrowsByDoublingAndShrinksByHalving) {
    vtr::PtrArray<int> array;
    int item = 0;
    for (unsigned count = 1; count <= 33; ++count) {
        ASSERT_TRUE(array.Append(&item));
        EXPECT_EQ(array.Capacity(), std::max(8u, std::bit_ceil(count)));
    }
    for (unsigned count = 33; count-- > 0;) {
        array.Remove(count);
        EXPECT_EQ(array.Capacity(), std::max(8u, std::bit_ceil(count)));
    }
}

TEST(PtrArray, DoesWhatAVectorDoes) {
    constexpr unsigned seed = 3;
    std::mt19937 random(seed);
    int pool[16] = {};
    vtr::PtrArray<int> array;
    std::vector<int*> model;
    for (int round = 0; round < 20'000; ++round) {
        int* item = &pool[random() % 16];
        const unsigned place = static_cast<unsigned>(random() % (model.size() + 1));
        const auto at = model.begin() + place;
        const unsigned kind = random() % 400;
        if (kind == 0) {
            array.Clear([](int*) {});
            model.clear();
        } else if (kind < 5) {
            unsigned disposed = 0;
            const auto unwanted = [item](const int* other) { return other < item; };
            const auto removed = std::erase_if(model, unwanted);
            ASSERT_EQ(array.RemoveIf(unwanted, [&disposed](int*) { ++disposed; }), removed);
            ASSERT_EQ(disposed, removed);
        } else if (kind < 200) {
            ASSERT_TRUE(array.Append(item));
            model.push_back(item);
        } else if (kind < 270) {
            ASSERT_TRUE(array.Insert(place, item));
            model.insert(at, item);
        } else if (place < model.size()) {
            ASSERT_EQ(array.Remove(place), *at);
            model.erase(at);
        }
        ASSERT_EQ(std::vector<int*>(array.begin(), array.end()), model)
            << "seed " << seed << ", round " << round;
        ASSERT_EQ(array.At(array.Count()), nullptr);
    }
}

TEST(PtrArray, StaysAsItIsWhenMemoryRunsOut) {
    AllocationFault fault("internal_test.exe");
    vtr::PtrArray<int> array;
    int item = 0;
    for (const unsigned count : {0u, 8u}) {
        while (array.Count() < count)
            ASSERT_TRUE(array.Append(&item));
        fault.FailAt(1);
        EXPECT_FALSE(array.Append(&item));
        EXPECT_EQ(array.Count(), count);
    }
    EXPECT_TRUE(array.Append(&item));
    fault.FailAt(1);
    EXPECT_EQ(array.Remove(0), &item) << "a block that cannot shrink serves as it is";
    EXPECT_EQ(array.Count(), 8u);
}
