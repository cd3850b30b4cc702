#include "utilities/system/locks/ReadWriteLock.h"
#include "tests/support/Dice.h"
#include "tests/support/ThreadTeam.h"

#include <gtest/gtest.h>

namespace {

/// Whether another thread gets through the pair of operations without waiting. It is left behind to
/// finish when the lock is free.
class Attempt {
public:
    Attempt(CReadWriteLock& lock, bool writes)
        : thread([this, &lock, writes] {
              started.Set();
              writes ? lock.WriteLock() : lock.ReadLock();
              passed.Set();
              mayLeave.Wait();
              writes ? lock.WriteUnlock() : lock.ReadUnlock();
          }) {
        started.Wait();
    }
    ~Attempt() {
        Leave();
        thread.join();
    }

    bool Waits() const {
        for (int i = 0; i < 100; ++i)
            SwitchToThread();
        return !passed.IsSet();
    }
    void UntilPassed() const { passed.Wait(); }
    void Leave() const { mayLeave.Set(); }

private:
    Signal started, passed, mayLeave;
    std::thread thread;
};

TEST(ReadWriteLock, HasAWriterWaitForEveryReaderAndNewReadersForTheWriter) {
    const Watchdog watchdog("a writer between readers");
    CReadWriteLock lock;
    for (int round = 0; round < 3; ++round) {
        lock.ReadLock();
        Attempt second(lock, false);
        second.UntilPassed();
        Attempt writer(lock, true);
        EXPECT_TRUE(writer.Waits()) << "two readers";
        const Attempt late(lock, false);
        EXPECT_TRUE(late.Waits()) << "behind a writer that waits";
        lock.ReadUnlock();
        EXPECT_TRUE(writer.Waits()) << "one reader left";
        EXPECT_TRUE(late.Waits());
        second.Leave();
        writer.UntilPassed();
        EXPECT_TRUE(late.Waits()) << "behind a writer that writes";
        writer.Leave();
        late.UntilPassed();
    }
}

TEST(ReadWriteLock, CountsWhatOneThreadHoldsAndCopiesIt) {
    const Watchdog watchdog("a writer's recursion");
    CReadWriteLock lock, copy;
    lock.WriteLock();
    lock.WriteLock();
    lock.ReadLock();
    lock.ReadUnlock();
    lock.WriteUnlock();
    {
        const Attempt writer(lock, true);
        EXPECT_TRUE(writer.Waits());
        lock.WriteUnlock();
        writer.UntilPassed();
    }
    lock.ReadLock();
    copy = lock;
    lock.ReadUnlock();
    const Attempt writer(copy, true);
    EXPECT_TRUE(writer.Waits()) << "read as the source was";
    copy.ReadUnlock();
    writer.UntilPassed();
}

TEST(ReadWriteLock, NeverHasAReaderBesideAWriter) {
    CReadWriteLock lock;
    std::atomic<int> readers{0}, writers{0}, faults{0};
    RunTeam("CReadWriteLock", 6, [&](unsigned number) {
        Dice dice(100 + number);
        for (int i = 0; i < 3000; ++i) {
            const bool writes = dice.Below(4) == 0;
            writes ? lock.WriteLock() : lock.ReadLock();
            ++(writes ? writers : readers);
            if (i % 16 == 0)
                SwitchToThread();
            faults += writes ? writers != 1 || readers != 0 : writers != 0;
            --(writes ? writers : readers);
            writes ? lock.WriteUnlock() : lock.ReadUnlock();
        }
    });
    EXPECT_EQ(faults, 0);
}

} // namespace
