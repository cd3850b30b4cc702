#include "utilities/containers/MergeSort.h"

#include "tests/support/AllocationFault.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

bool Less(const int* a, const int* b) {
    return *a / 10 < *b / 10;
}

} // namespace

TEST(MergeSort, ReversesEqualItemsAtEveryLength) {
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    std::vector<int> values(80);
    for (int round = 0; round < 3000; ++round) {
        std::vector<int*> items(random() % values.size());
        const unsigned spread = 1 + random() % 400;
        for (std::size_t i = 0; i < items.size(); ++i) {
            values[i] = static_cast<int>(random() % spread);
            items[i] = &values[i];
        }
        // Often in order up to some place, as a list is that had items appended.
        if (round % 2 == 0 && !items.empty())
            std::sort(items.begin(), items.begin() + static_cast<int>(random() % items.size()),
                      Less);
        std::vector<int*> expected(items.rbegin(), items.rend());
        std::stable_sort(expected.begin(), expected.end(), Less);
        ASSERT_TRUE(vtr::MergeSort(items.data(), static_cast<unsigned>(items.size()), Less));
        ASSERT_EQ(items, expected) << "seed " << seed << ", round " << round;
    }
}

TEST(MergeSort, CostsAPassWhereTheListIsInOrder) {
    std::vector<int> values(1000);
    std::vector<int*> items;
    for (int& value : values) {
        value = 10 * static_cast<int>(items.size());
        items.push_back(&value);
    }
    unsigned comparisons = 0;
    const auto counted = [&comparisons](const int* a, const int* b) {
        ++comparisons;
        return Less(a, b);
    };
    AllocationFault fault("internal_test.exe");
    for (const int last : {9990, 4995}) {
        values[999] = last;
        comparisons = 0;
        fault.FailAt(1);
        EXPECT_TRUE(vtr::MergeSort(items.data(), 1000, counted)) << last;
        EXPECT_LT(comparisons, 1020u) << last;
    }
}

TEST(MergeSort, ChangesNothingWhenMemoryRunsOut) {
    AllocationFault fault("internal_test.exe");
    int values[] = {30, 20, 10};
    int* items[] = {&values[0], &values[1], &values[2]};
    fault.FailAt(1);
    EXPECT_FALSE(vtr::MergeSort(items, 3, Less));
    EXPECT_TRUE(items[0] == &values[0] && items[1] == &values[1] && items[2] == &values[2]);
}
