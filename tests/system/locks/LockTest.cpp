#include "utilities/system/locks/Lock.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/ThreadTeam.h"

#include <gtest/gtest.h>

namespace {

bool OtherThreadGets(CLock& lock) {
    return OnOtherThread([&lock] {
        const bool got = lock.TryToLock() != 0;
        if (got)
            lock.Unlock();
        return got;
    });
}

TEST(Lock, IsHeldAsOftenAsItWasTaken) {
    CLock lock, copy;
    auto* section = reinterpret_cast<CRITICAL_SECTION*>(&lock);
    {
        const CSmartLock held(section), again(section), nothing(nullptr);
        EXPECT_FALSE(OtherThreadGets(lock));
    }
    EXPECT_TRUE(OtherThreadGets(lock));
    lock.Lock();
    EXPECT_NE(lock.TryToLock(), 0);
    copy = lock;
    EXPECT_FALSE(OtherThreadGets(copy)) << "held as the source is";
    for (CLock* each : {&lock, &copy}) {
        each->Unlock();
        EXPECT_FALSE(OtherThreadGets(*each));
        each->Unlock();
        EXPECT_TRUE(OtherThreadGets(*each));
    }
}

FARPROC WINAPI FindNoFunction(HMODULE, const char*) {
    return nullptr;
}

/// In a process of its own, in which no lock was made before: what was looked up is kept.
TEST(Lock, TryingWaitsWhereWindowsCannotTry) {
    const Watchdog watchdog("trying where Windows cannot");
    if (!InOwnProcess())
        return;
    const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "GetProcAddress",
                            reinterpret_cast<void*>(&FindNoFunction));
    CLock lock;
    int result = 0;
    EXPECT_TRUE(WaitsAt(reinterpret_cast<CRITICAL_SECTION&>(lock), [&] {
        result = lock.TryToLock();
        lock.Unlock();
    }));
    EXPECT_EQ(result, 1);
}

} // namespace
