#include "utilities/system/locks/SlipLock.h"
#include "tests/support/Dice.h"
#include "tests/support/SteppedThread.h"

#include <gtest/gtest.h>

namespace {

bool OtherThreadGets(CSlipLock& lock, unsigned long milliseconds) {
    return OnOtherThread([&] {
        const bool got = lock.LockWithTimeout(milliseconds);
        if (got)
            lock.Unlock();
        return got;
    });
}

TEST(SlipLock, IsHeldAsOftenAsItsOwnerTookIt) {
    const Watchdog watchdog("CSlipLock");
    CSlipLock lock;
    lock.Lock();
    EXPECT_TRUE(lock.RequestLock());
    EXPECT_TRUE(lock.LockWithTimeout(1000));
    for (int held = 3; held > 0; --held) {
        for (const unsigned long milliseconds : {0ul, 1ul, 60ul}) {
            const ULONGLONG start = GetTickCount64();
            EXPECT_FALSE(OtherThreadGets(lock, milliseconds)) << held;
            // Clocks tick in steps of up to 16 ms.
            EXPECT_GE(GetTickCount64() - start + 16, milliseconds);
        }
        std::thread([&lock] { lock.Unlock(); }).join();
        lock.Unlock();
    }
    EXPECT_TRUE(OtherThreadGets(lock, 1000));
    lock.Unlock();
    lock.Lock();
    EXPECT_FALSE(OtherThreadGets(lock, 0)) << "one unlock too many changes nothing";
    lock.Unlock();
}

TEST(SlipLock, WakesThoseWhoWaitAndIsHeldByOne) {
    CSlipLock lock;
    std::atomic<int> inside{0}, faults{0};
    RunTeam("CSlipLock", 6, [&](unsigned number) {
        Dice dice(200 + number);
        for (int i = 0; i < 2000; ++i) {
            const int time = dice.Below(4);
            const unsigned long milliseconds =
                time < 2 ? static_cast<unsigned long>(time) : INFINITE;
            if (!lock.LockWithTimeout(milliseconds)) {
                faults += milliseconds == INFINITE;
                continue;
            }
            faults += !lock.RequestLock();
            faults += ++inside != 1;
            if (i % 16 == 0)
                SwitchToThread();
            --inside;
            lock.Unlock();
            lock.Unlock();
        }
    });
    EXPECT_EQ(faults, 0);
    EXPECT_TRUE(lock.RequestLock());
}

/// Each place at which one thread that takes the lock can stop, while another comes or goes.
TEST(SlipLock, IsHeldByOneWhereverTheyStop) {
    const Watchdog watchdog("a schedule of two threads", 50);
    const ScheduleWalk walk;
    SteppedThread stopping, other;
    for (const int otherComes : {0, 1, 2}) {
        unsigned place = 1;
        for (; place == 1 || stopping.CameToAStop(); ++place) {
            CSlipLock lock;
            std::atomic<int> inside{0}, faults{0};
            const auto pass = [&] {
                lock.Lock();
                faults += ++inside != 1;
                SteppedThread::Pause();
                --inside;
                lock.Unlock();
            };
            for (int turn = 0; turn < 4; ++turn) {
                if (turn == otherComes)
                    other.Begin(0, pass);
                else if (turn == (otherComes == 0 ? 1 : 0))
                    stopping.Begin(place, pass);
                else
                    stopping.GoOn();
                stopping.UntilHalted();
            }
            SteppedThread::UntilEnded({&stopping, &other});
            ASSERT_EQ(faults, 0) << otherComes << ", " << place;
            EXPECT_TRUE(lock.RequestLock());
            lock.Unlock();
        }
        EXPECT_GT(place, 8u);
    }
}

} // namespace
