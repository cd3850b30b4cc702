#include "utilities/base/MergeSort.h"

#include "tests/support/AllocationFault.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <vector>

namespace {

bool Less(const int* a, const int* b) {
    return *a / 10 < *b / 10;
}

} // namespace

TEST(MergeSort, ReversesEqualItemsAtEveryLength) {
    EachRound(11, 3000, [](Dice& dice, int round) {
        std::vector<int> values(static_cast<std::size_t>(dice.Below(80)));
        std::vector<int*> items;
        const int spread = 1 + dice.Below(400);
        for (int& value : values) {
            value = dice.Below(spread);
            items.push_back(&value);
        }
        // Often in order up to some place, as a list is that had items appended.
        if (round % 2 == 0 && !items.empty())
            std::sort(items.begin(), items.begin() + dice.Below(static_cast<int>(items.size())),
                      Less);
        std::vector<int*> expected(items.rbegin(), items.rend());
        std::stable_sort(expected.begin(), expected.end(), Less);
        ASSERT_TRUE(vtr::MergeSort(items.data(), static_cast<unsigned>(items.size()), Less));
        ASSERT_EQ(items, expected);
    });
}

TEST(MergeSort, LeavesTheListWithoutMemory) {
    AllocationFault fault("internal_test.exe");
    int values[100];
    std::vector<int*> items;
    for (int& value : values) {
        value = static_cast<int>(&value - values) * 7 % 100;
        items.push_back(&value);
    }
    const std::vector<int*> before = items;
    fault.FailAt(1);
    EXPECT_FALSE(vtr::MergeSort(items.data(), 100, Less));
    EXPECT_EQ(items, before);
}
