#include "common/Handles.h"

#include <gtest/gtest.h>
#include <utility>

namespace {

int closed = 0;

struct CountedKind {
    using Type = int;
    static Type None() { return 0; }
    static bool Close(Type handle) {
        closed += handle;
        SetLastError(ERROR_BUSY);
        return true;
    }
};

using Counted = vtr::Owner<CountedKind>;

} // namespace

TEST(Handles, AreClosedOnceAndKeepTheLastError) {
    SetLastError(ERROR_DISK_FULL);
    {
        Counted first(1);
        Counted second(std::move(first));
        EXPECT_FALSE(first);
        EXPECT_EQ(second.Get(), 1);
        second = Counted(10);
        EXPECT_EQ(closed, 1);
        Counted third(100);
        EXPECT_EQ(third.Release(), 100);
        Counted none;
        EXPECT_FALSE(none.Close());
    }
    EXPECT_EQ(closed, 11);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DISK_FULL));
}
