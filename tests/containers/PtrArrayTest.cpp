#include "utilities/containers/PtrArray.h"

#include "tests/support/AllocationFault.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

std::vector<int*> Items(const vtr::PtrArray<int>& array) {
    return {array.begin(), array.end()};
}

} // namespace

TEST(PtrArray, GrowsByDoublingAndShrinksByHalving) {
    vtr::PtrArray<int> array;
    int item = 0;
    EXPECT_EQ(array.Capacity(), 0u);
    std::vector<unsigned> capacities;
    for (int i = 0; i < 33; ++i) {
        ASSERT_TRUE(array.Append(&item));
        if (capacities.empty() || capacities.back() != array.Capacity())
            capacities.push_back(array.Capacity());
    }
    EXPECT_EQ(capacities, (std::vector<unsigned>{8, 16, 32, 64}));
    capacities.clear();
    while (array.Count() > 0) {
        array.Remove(array.Count() - 1);
        if (capacities.empty() || capacities.back() != array.Capacity())
            capacities.push_back(array.Capacity());
        EXPECT_TRUE(array.Capacity() == 8 || array.Count() > array.Capacity() / 2)
            << array.Count() << " in " << array.Capacity();
    }
    EXPECT_EQ(capacities, (std::vector<unsigned>{32, 16, 8}));
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
        switch (random() % 8) {
        case 0:
        case 1:
        case 2:
            ASSERT_TRUE(array.Append(item));
            model.push_back(item);
            break;
        case 3:
            ASSERT_TRUE(array.Insert(place, item));
            model.insert(at, item);
            break;
        case 4:
        case 5:
            if (place < model.size()) {
                ASSERT_EQ(array.Remove(place), *at);
                model.erase(at);
            }
            break;
        case 6:
            if (random() % 50 == 0) {
                unsigned disposed = 0;
                const auto unwanted = [item](const int* other) { return other < item; };
                const unsigned removed =
                    array.RemoveIf(unwanted, [&disposed](int*) { ++disposed; });
                ASSERT_EQ(removed, std::erase_if(model, unwanted));
                ASSERT_EQ(disposed, removed);
            }
            break;
        default:
            if (random() % 200 == 0) {
                array.Clear([](int*) {});
                model.clear();
            }
        }
        ASSERT_EQ(Items(array), model) << "seed " << seed << ", round " << round;
        ASSERT_EQ(array.At(array.Count()), nullptr);
    }
}

TEST(PtrArray, StaysAsItIsWhenMemoryRunsOut) {
    AllocationFault fault("internal_test.exe");
    vtr::PtrArray<int> array;
    int item = 0;
    fault.FailAt(1);
    EXPECT_FALSE(array.Append(&item));
    EXPECT_EQ(array.Count(), 0u);
    for (int i = 0; i < 8; ++i)
        ASSERT_TRUE(array.Append(&item));
    fault.FailAt(1);
    EXPECT_FALSE(array.Append(&item));
    EXPECT_EQ(array.Count(), 8u);
    EXPECT_TRUE(array.Append(&item));
    fault.FailAt(1);
    EXPECT_EQ(array.Remove(0), &item) << "a block that cannot shrink serves as it is";
    EXPECT_EQ(array.Count(), 8u);
}
