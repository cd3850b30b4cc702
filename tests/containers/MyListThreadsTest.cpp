#include "tests/support/ThreadTeam.h"
#include "utilities/containers/MyList.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

TEST(MyListThreads, LoseNoItemAndKeepTheOrder) {
    constexpr unsigned seed = 300;
    constexpr int rounds = 1500;
    for (const unsigned size : {2u, 4u, 8u}) {
        CMyList list;
        std::vector<std::vector<int>> items(size, std::vector<int>(rounds));
        std::atomic<int> faults{0};
        RunTeam("CMyList", size, [&](unsigned number) {
            std::mt19937 random(seed + number);
            auto& own = items[number];
            for (int i = 0; i < rounds; ++i) {
                auto* item = &own[static_cast<std::size_t>(i)];
                faults += list.AddSorted(item, static_cast<long long>(random() % 500), true) < 0;
                // Every other item goes again; no thread can find another's.
                if (i % 2 == 1)
                    faults += !list.Remove(item);
                faults += list.Member(&own[0]) != 1;
                faults += list.Index(static_cast<int>(random() % 2), nullptr) == nullptr && i > 2;
                if (i % 50 == 0) {
                    const CMyList copy(list);
                    CMyList other;
                    other = copy;
                    faults += other.NumNodes() < i / 2;
                }
            }
        });
        EXPECT_EQ(faults, 0) << "seed " << seed << ", " << size << " threads";
        std::vector<void*> expected;
        for (auto& own : items) {
            for (std::size_t i = 0; i < own.size(); i += 2)
                expected.push_back(&own[i]);
        }
        std::vector<void*> found;
        long long previous = 0;
        for (int i = 0; i < list.NumNodes(); ++i) {
            long long value = -1;
            found.push_back(list.Index(i, &value));
            EXPECT_GE(value, previous);
            previous = value;
        }
        std::sort(found.begin(), found.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(found, expected) << size;
    }
}

TEST(MyListThreads, AssignTwoListsToEachOther) {
    CMyList left;
    CMyList right;
    int item = 0;
    for (int i = 0; i < 20; ++i) {
        left.AppendToTail(&item, i);
        right.AppendToTail(&item, i);
    }
    RunTeam("assigning", 2, [&](unsigned number) {
        for (int i = 0; i < 2000; ++i)
            number == 0 ? left = right : right = left;
    });
    EXPECT_EQ(left.NumNodes(), 20);
    EXPECT_EQ(right.NumNodes(), 20);
}

TEST(MyListThreads, PassItemsFromOneToAnother) {
    constexpr int total = 20'000;
    CMyList list;
    std::vector<int> items(total);
    std::vector<void*> taken;
    RunTeam("producer and consumer", 2, [&](unsigned number) {
        for (int i = 0; number == 0 && i < total; ++i)
            list.AppendToTail(&items[static_cast<std::size_t>(i)], 0);
        while (number == 1 && taken.size() < items.size()) {
            void* first = list.Index(0, nullptr);
            if (first == nullptr)
                SwitchToThread();
            else if (list.Remove(first))
                taken.push_back(first);
        }
    });
    ASSERT_EQ(taken.size(), items.size());
    for (std::size_t i = 0; i < items.size(); ++i)
        ASSERT_EQ(taken[i], &items[i]) << i;
    EXPECT_EQ(list.NumNodes(), 0);
}

} // namespace
