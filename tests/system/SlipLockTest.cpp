#include "utilities/system/SlipLock.h"
#include "tests/support/ThreadTeam.h"

#include <atomic>
#include <gtest/gtest.h>
#include <random>

namespace {

bool OtherThreadGets(CSlipLock& lock, unsigned long milliseconds = 0) {
    bool got = false;
    std::thread([&] {
        got = lock.LockWithTimeout(milliseconds);
        if (got)
            lock.Unlock();
    }).join();
    return got;
}

TEST(SlipLock, CountsRecursion) {
    const Watchdog watchdog("CSlipLock, recursion");
    CSlipLock lock;
    EXPECT_TRUE(OtherThreadGets(lock));
    lock.Lock();
    EXPECT_TRUE(lock.RequestLock());
    EXPECT_TRUE(lock.LockWithTimeout(1000));
    for (int held = 3; held > 0; --held) {
        EXPECT_FALSE(OtherThreadGets(lock)) << held;
        lock.Unlock();
    }
    EXPECT_TRUE(OtherThreadGets(lock));
    lock.Unlock();
    EXPECT_TRUE(OtherThreadGets(lock)) << "one unlock too many changes nothing";
    lock.Lock();
    EXPECT_FALSE(OtherThreadGets(lock));
    lock.Unlock();
}

TEST(SlipLock, StaysHeldWhenAnotherThreadUnlocks) {
    const Watchdog watchdog("CSlipLock, foreign unlock");
    CSlipLock lock;
    lock.Lock();
    std::thread([&] { lock.Unlock(); }).join();
    EXPECT_FALSE(OtherThreadGets(lock));
    lock.Unlock();
    EXPECT_TRUE(OtherThreadGets(lock));
}

TEST(SlipLock, GivesUpInTimeAndLeavesTheLockAsItWas) {
    const Watchdog watchdog("CSlipLock, time-out");
    CSlipLock lock;
    lock.Lock();
    lock.Lock();
    for (const unsigned long milliseconds : {0ul, 1ul, 60ul}) {
        const ULONGLONG start = GetTickCount64();
        EXPECT_FALSE(OtherThreadGets(lock, milliseconds));
        // Clocks tick in steps of up to 16 ms.
        EXPECT_GE(GetTickCount64() - start + 16, milliseconds);
    }
    lock.Unlock();
    EXPECT_FALSE(OtherThreadGets(lock)) << "still held once";
    lock.Unlock();
    EXPECT_TRUE(OtherThreadGets(lock));
}

TEST(SlipLock, WakesOneThatWaitsBehindOneThatGaveUp) {
    const Watchdog watchdog("CSlipLock, waking");
    for (int round = 0; round < 20; ++round) {
        CSlipLock lock;
        lock.Lock();
        std::thread impatient([&] {
            if (lock.LockWithTimeout(1))
                lock.Unlock();
        });
        std::thread patient([&] {
            lock.Lock();
            lock.Unlock();
        });
        if (round % 2 == 0)
            impatient.join();
        lock.Unlock();
        patient.join();
        if (impatient.joinable())
            impatient.join();
        EXPECT_TRUE(lock.RequestLock());
        lock.Unlock();
    }
}

TEST(SlipLock, LosesNoIncrement) {
    for (const unsigned size : {2u, 4u, 8u}) {
        CSlipLock lock;
        std::atomic<int> faults{0};
        std::atomic<long long> taken{0};
        int inside = 0;
        long long total = 0;
        RunTeam("CSlipLock", size, [&](unsigned number) {
            std::mt19937 random(200 + number);
            for (int i = 0; i < 2000; ++i) {
                const unsigned way = static_cast<unsigned>(random() % 8);
                const unsigned long milliseconds = way == 0 ? 0 : way == 1 ? 1 : INFINITE;
                if (!lock.LockWithTimeout(milliseconds)) {
                    faults += milliseconds == INFINITE;
                    continue;
                }
                faults += !lock.RequestLock();
                faults += ++inside != 1;
                if (i % 16 == 0)
                    SwitchToThread();
                ++total;
                ++taken;
                faults += --inside != 0;
                lock.Unlock();
                lock.Unlock();
            }
        });
        EXPECT_EQ(faults, 0) << size;
        EXPECT_EQ(total, taken) << size;
        EXPECT_TRUE(lock.RequestLock()) << size;
        lock.Unlock();
    }
}

TEST(SlipLock, GivesItsEventsBack) {
    DWORD before = 0;
    DWORD after = 0;
    GetProcessHandleCount(GetCurrentProcess(), &before);
    for (int i = 0; i < 100; ++i) {
        CSlipLock lock;
        lock.Lock();
    }
    GetProcessHandleCount(GetCurrentProcess(), &after);
    EXPECT_LT(after, before + 100);
}

} // namespace
