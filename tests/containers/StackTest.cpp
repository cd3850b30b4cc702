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

TEST(Stack, GivesOutFirstWhatWasPushedFirstAndIsClearedUpToANullItem) {
    AllocationFault fault("vtrutils.dll");
    int items[3];
    CountingStack stack;
    stack.Push(&items[0]);
    stack.Push(&items[1]);
    EXPECT_EQ(stack.Pop(), &items[0]);
    fault.FailAt(1);
    for (int* each : {&items[0], &items[2], static_cast<int*>(nullptr), &items[0]})
        stack.Push(each);
    EXPECT_EQ(stack.NumNodes(), 4) << "nothing for one without memory";
    EXPECT_EQ(stack.Pop(), &items[1]);
    stack.ClearStack();
    EXPECT_EQ(stack.pops, 4) << "through the derived class";
    EXPECT_EQ(stack.NumNodes(), 0);
    EXPECT_EQ(stack.Pop(), &items[0]) << "after the null item";
    EXPECT_EQ(stack.Pop(), nullptr);
    EXPECT_EQ(stack.NumNodes(), 0) << "never below 0";
    stack.Push(&items[1]);
    EXPECT_EQ(stack.Pop(), &items[1]);
}

} // namespace
