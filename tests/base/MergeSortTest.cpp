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

TEST(MergeSort, CostsAPassAndNoMemoryWhereTheListIsInOrder) {
    AllocationFault fault("internal_test.exe");
    std::vector<int> values(1000);
    std::vector<int*> items;
    for (int& value : values) {
        value = 10 * static_cast<int>(items.size());
        items.push_back(&value);
    }
    const auto sort = [&items, &fault](unsigned failing) {
        unsigned comparisons = 0;
        fault.FailAt(failing);
        const bool sorted = vtr::MergeSort(items.data(), 1000, [&](const int* a, const int* b) {
            ++comparisons;
            return Less(a, b);
        });
        fault.FailAt(0);
        return sorted ? comparisons : 0;
    };
    for (const int last : {9990, 4995}) {
        values[999] = last;
        const unsigned comparisons = sort(1);
        EXPECT_TRUE(comparisons > 0 && comparisons < 1020) << last;
    }
    values[7] = 5000;
    const std::vector<int*> before = items;
    EXPECT_EQ(sort(1), 0u) << "memory runs out";
    EXPECT_EQ(items, before);
}
