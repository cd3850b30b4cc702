#include "utilities/containers/Stack.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/Permits.h"
#include "tests/support/ThreadTeam.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace {

/// Counts the calls that come through the slot of `Pop`.
class CountingStack : public CStack {
public:
    void* Pop() override {
        ++pops;
        return CStack::Pop();
    }
    int pops = 0;
};

TEST(Stack, GivesOutFirstWhatWasPushedFirst) {
    int items[3];
    CStack stack;
    EXPECT_EQ(stack.Pop(), nullptr);
    EXPECT_EQ(stack.NumNodes(), 0);
    stack.Push(&items[0]);
    stack.Push(&items[1]);
    EXPECT_EQ(stack.Pop(), &items[0]);
    stack.Push(&items[2]);
    EXPECT_EQ(stack.NumNodes(), 2);
    EXPECT_EQ(stack.Pop(), &items[1]);
    EXPECT_EQ(stack.Pop(), &items[2]);
    EXPECT_EQ(stack.Pop(), nullptr);
    stack.Push(&items[1]);
    EXPECT_EQ(stack.Pop(), &items[1]) << "after it was empty";
}

TEST(Stack, IsClearedUpToANullItem) {
    int item = 0;
    CountingStack stack;
    for (void* each : {static_cast<void*>(&item), static_cast<void*>(nullptr),
                       static_cast<void*>(&item), static_cast<void*>(&item)})
        stack.Push(each);
    stack.ClearStack();
    EXPECT_EQ(stack.pops, 2) << "through the derived class";
    EXPECT_EQ(stack.NumNodes(), 0);
    EXPECT_EQ(stack.Pop(), &item) << "behind the null item";
    EXPECT_EQ(stack.NumNodes(), 0) << "never below 0";
    stack.Push(nullptr);
    EXPECT_EQ(stack.NumNodes(), 1);
    stack.ClearStack();
    EXPECT_EQ(stack.pops, 5);
    EXPECT_EQ(stack.Pop(), nullptr);
    EXPECT_EQ(stack.NumNodes(), 0);
}

TEST(Stack, LosesOnlyWhatHasNoMemory) {
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([](unsigned n) {
        std::vector<int> items(5);
        CStack stack;
        for (int& item : items)
            stack.Push(&item);
        EXPECT_EQ(stack.NumNodes(), n <= 5 ? 4 : 5);
        for (unsigned i = 0; i < 5; ++i) {
            if (i + 1 == n)
                continue;
            EXPECT_EQ(stack.Pop(), &items[i]) << n;
        }
        EXPECT_EQ(stack.Pop(), nullptr);
    });
    EXPECT_EQ(failures, 5u);
}

TEST(Stack, LosesNothingAmongEightThreads) {
    constexpr unsigned pushers = 4, each = 20000;
    std::vector<unsigned> numbers(pushers * each);
    std::vector<unsigned*> popped[pushers];
    Permits available(0);
    CStack stack;
    RunTeam("stack", 2 * pushers, [&](unsigned number) {
        for (unsigned i = 0; i < each; ++i) {
            if (number < pushers) {
                stack.Push(&numbers[number * each + i]);
                available.Give();
            } else {
                available.Take();
                popped[number - pushers].push_back(static_cast<unsigned*>(stack.Pop()));
            }
        }
    });
    for (const auto& items : popped) {
        unsigned* last[pushers] = {};
        for (unsigned* item : items) {
            ASSERT_NE(item, nullptr);
            unsigned*& before = last[static_cast<std::size_t>(item - numbers.data()) / each];
            ASSERT_LT(before, item) << "out of order";
            before = item;
            ++*item;
        }
    }
    EXPECT_EQ(std::count(numbers.begin(), numbers.end(), 1u), pushers * each);
    EXPECT_EQ(stack.NumNodes(), 0);
}

} // namespace
