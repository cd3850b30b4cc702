#include "utilities/system/ReadWriteLock.h"
#include "tests/support/ThreadTeam.h"

#include <atomic>
#include <gtest/gtest.h>
#include <random>

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
    Attempt(const Attempt&) = delete;
    Attempt& operator=(const Attempt&) = delete;
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
    Signal started;
    Signal passed;
    Signal mayLeave;
    std::thread thread;
};

TEST(ReadWriteLock, LetsReadersInTogether) {
    const Watchdog watchdog("readers together");
    CReadWriteLock lock;
    lock.ReadLock();
    const Attempt reader(lock, false);
    reader.UntilPassed();
    lock.ReadUnlock();
}

TEST(ReadWriteLock, HasAWriterWaitForEveryReaderAndNewReadersForTheWriter) {
    const Watchdog watchdog("a writer between readers");
    CReadWriteLock lock;
    for (int round = 0; round < 5; ++round) {
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

TEST(ReadWriteLock, CountsAWritersRecursion) {
    const Watchdog watchdog("a writer's recursion");
    CReadWriteLock lock;
    lock.WriteLock();
    lock.WriteLock();
    lock.ReadLock();
    lock.ReadUnlock();
    lock.WriteUnlock();
    Attempt writer(lock, true);
    EXPECT_TRUE(writer.Waits());
    lock.WriteUnlock();
    writer.UntilPassed();
}

TEST(ReadWriteLock, CopiesItsState) {
    const Watchdog watchdog("a copied lock");
    CReadWriteLock lock;
    lock.ReadLock();
    {
        CReadWriteLock copy;
        copy = lock;
        Attempt writer(copy, true);
        EXPECT_TRUE(writer.Waits()) << "read as the source is";
        copy.ReadUnlock();
        writer.UntilPassed();
    }
    lock.ReadUnlock();
    lock.WriteLock();
    lock.WriteUnlock();
}

TEST(ReadWriteLock, NeverHasAReaderBesideAWriter) {
    for (const unsigned size : {2u, 4u, 8u}) {
        CReadWriteLock lock;
        std::atomic<int> readers{0};
        std::atomic<int> writers{0};
        std::atomic<int> faults{0};
        long long written = 0;
        std::atomic<long long> expected{0};
        RunTeam("CReadWriteLock", size, [&](unsigned number) {
            std::mt19937 random(100 + number);
            for (int i = 0; i < 3000; ++i) {
                if (random() % 4 == 0) {
                    const bool twice = random() % 2 == 0;
                    lock.WriteLock();
                    if (twice)
                        lock.WriteLock();
                    faults += ++writers != 1 || readers != 0;
                    ++written;
                    ++expected;
                    --writers;
                    if (twice)
                        lock.WriteUnlock();
                    lock.WriteUnlock();
                } else {
                    lock.ReadLock();
                    ++readers;
                    const long long before = written;
                    if (i % 16 == 0)
                        SwitchToThread();
                    faults += writers != 0 || written != before;
                    --readers;
                    lock.ReadUnlock();
                }
            }
        });
        EXPECT_EQ(faults, 0) << size;
        EXPECT_EQ(written, expected) << size;
    }
}

} // namespace
