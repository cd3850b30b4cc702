#include "utilities/containers/Stack.h"
#include "tests/support/AllocationFault.h"

#include <gtest/gtest.h>

namespace {

/// Counts the calls that come through the slot of `Pop`.
struct CountingStack : CStack {
    void* Pop() override {
        ++pops;
        return CStack::Pop();
    }
    int pops = 0;
};

TEST(Stack, GivesOutFirstWhatWasPushedFirst) {
    AllocationFault fault("vtrutils.dll");
    int items[3];
    CStack stack;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(stack.Pop(), nullptr);
        stack.Push(&items[0]);
        stack.Push(&items[1]);
        EXPECT_EQ(stack.Pop(), &items[0]);
        fault.FailAt(1);
        stack.Push(&items[0]);
        stack.Push(&items[2]);
        EXPECT_EQ(stack.NumNodes(), 2) << "nothing for one without memory";
        EXPECT_EQ(stack.Pop(), &items[1]);
        EXPECT_EQ(stack.Pop(), &items[2]);
    }
}

TEST(Stack, IsClearedUpToANullItem) {
    int item = 0;
    CountingStack stack;
    for (int* each : {&item, static_cast<int*>(nullptr), &item})
        stack.Push(each);
    stack.ClearStack();
    EXPECT_EQ(stack.pops, 2) << "through the derived class";
    EXPECT_EQ(stack.NumNodes(), 0);
    EXPECT_EQ(stack.Pop(), &item) << "behind the null item";
    EXPECT_EQ(stack.NumNodes(), 0) << "never below 0";
}

} // namespace
