#include "utilities/system/Lock.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/ThreadTeam.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <process.h>
#include <string>

namespace {

constexpr char withoutTry[] = "Lock.TryingWaitsWhereWindowsCannotTry";

bool OtherThreadGets(CLock& lock) {
    bool got = false;
    std::thread([&] {
        got = lock.TryToLock() != 0;
        if (got)
            lock.Unlock();
    }).join();
    return got;
}

TEST(Lock, CountsRecursion) {
    CLock lock;
    lock.Lock();
    EXPECT_NE(lock.TryToLock(), 0);
    EXPECT_FALSE(OtherThreadGets(lock));
    lock.Unlock();
    EXPECT_FALSE(OtherThreadGets(lock));
    lock.Unlock();
    EXPECT_TRUE(OtherThreadGets(lock));
}

TEST(Lock, LosesNoIncrement) {
    for (const unsigned size : {2u, 8u}) {
        CLock lock;
        int inside = 0;
        long long total = 0;
        RunTeam("CLock", size, [&](unsigned number) {
            for (int i = 0; i < 20'000; ++i) {
                if (number % 2 == 0) {
                    lock.Lock();
                } else {
                    while (lock.TryToLock() == 0)
                        SwitchToThread();
                }
                EXPECT_EQ(++inside, 1);
                ++total;
                --inside;
                lock.Unlock();
            }
        });
        EXPECT_EQ(total, 20'000 * static_cast<long long>(size));
    }
}

TEST(Lock, CopiesItsState) {
    CLock held;
    held.Lock();
    {
        CLock copy;
        copy = held;
        EXPECT_FALSE(OtherThreadGets(copy)) << "held as the source is";
        copy.Unlock();
        EXPECT_TRUE(OtherThreadGets(copy));
        EXPECT_FALSE(OtherThreadGets(held)) << "but a lock of its own";
        const CLock& self = copy;
        copy = self;
    }
    held.Unlock();
    EXPECT_TRUE(OtherThreadGets(held)) << "the copy is gone, the source is whole";
}

TEST(SmartLock, HoldsToTheEndOfTheScope) {
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    const auto isFree = [&section] {
        bool free = false;
        std::thread([&] {
            free = TryEnterCriticalSection(&section) != FALSE;
            if (free)
                LeaveCriticalSection(&section);
        }).join();
        return free;
    };
    {
        const CSmartLock lock(&section);
        const CSmartLock again(&section);
        const CSmartLock nothing(nullptr);
        EXPECT_FALSE(isFree());
    }
    EXPECT_TRUE(isFree());
    DeleteCriticalSection(&section);
}

FARPROC WINAPI FindNoFunction(HMODULE, const char*) {
    return nullptr;
}

/// In a process of its own, in which no lock was made before: what was looked up is kept.
TEST(Lock, TryingWaitsWhereWindowsCannotTry) {
    const Watchdog watchdog(withoutTry);
    if (std::getenv("VTRUTILS_WITHOUT_TRY") == nullptr) {
        char program[MAX_PATH];
        GetModuleFileNameA(nullptr, program, sizeof program);
        SetEnvironmentVariableA("VTRUTILS_WITHOUT_TRY", "1");
        EXPECT_EQ(_spawnl(_P_WAIT, program, "locks_test",
                          (std::string("--gtest_filter=") + withoutTry).c_str(), nullptr),
                  0);
        SetEnvironmentVariableA("VTRUTILS_WITHOUT_TRY", nullptr);
        return;
    }
    const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "GetProcAddress",
                            reinterpret_cast<void*>(&FindNoFunction));
    CLock lock;
    lock.Lock();
    const Signal trying;
    const Signal got;
    int result = 0;
    std::thread other([&] {
        trying.Set();
        result = lock.TryToLock();
        got.Set();
        lock.Unlock();
    });
    trying.Wait();
    // One that did not wait would have come back long before these turns are over.
    for (int i = 0; i < 200; ++i)
        SwitchToThread();
    EXPECT_FALSE(got.IsSet());
    lock.Unlock();
    other.join();
    EXPECT_EQ(result, 1);
}

} // namespace
