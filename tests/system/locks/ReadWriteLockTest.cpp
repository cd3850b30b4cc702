#include "utilities/system/locks/ReadWriteLock.h"
#include "tests/support/SteppedThread.h"
#include "tests/support/ThreadTeam.h"

#include <cctype>
#include <gtest/gtest.h>

namespace {

/// The event, where a host that shares the record sees it.
HANDLE NoReaders(CReadWriteLock& lock) {
    return *reinterpret_cast<HANDLE*>(reinterpret_cast<char*>(&lock) + 80);
}

using State = SteppedThread::State;

/// Has another thread take the lock and pause while it holds it: stopped, or waits.
State Take(SteppedThread& thread, CReadWriteLock& lock, bool writes) {
    return thread.Begin(0, [&lock, writes] {
        writes ? lock.WriteLock() : lock.ReadLock();
        SteppedThread::Pause();
        writes ? lock.WriteUnlock() : lock.ReadUnlock();
    });
}

/// Whether it has got in. Only for one that will.
bool GetsIn(const SteppedThread& thread) {
    while (thread.UntilHalted() == State::waits)
        SwitchToThread();
    return thread.UntilHalted() == State::stopped;
}

TEST(ReadWriteLock, HasAWriterWaitForEveryReaderAndNewReadersForTheWriter) {
    const Watchdog watchdog("a writer between readers");
    const ScheduleWalk walk;
    CReadWriteLock lock;
    SteppedThread second, writer, late;
    for (int round = 0; round < 3; ++round) {
        lock.ReadLock();
        EXPECT_EQ(Take(second, lock, false), State::stopped);
        EXPECT_EQ(Take(writer, lock, true), State::waits) << "two readers";
        EXPECT_EQ(Take(late, lock, false), State::waits) << "after a writer that waits";
        lock.ReadUnlock();
        EXPECT_EQ(writer.UntilSettled(NoReaders(lock)), State::waits) << "one reader left";
        SteppedThread::UntilEnded({&second});
        EXPECT_TRUE(GetsIn(writer));
        EXPECT_EQ(late.UntilHalted(), State::waits) << "after a writer that writes";
        SteppedThread::UntilEnded({&writer});
        EXPECT_TRUE(GetsIn(late));
        SteppedThread::UntilEnded({&late});
    }
}

TEST(ReadWriteLock, CountsWhatOneThreadHoldsAndCopiesIt) {
    const Watchdog watchdog("a writer's recursion");
    const ScheduleWalk walk;
    CReadWriteLock lock, copy;
    SteppedThread writer;
    lock.WriteLock();
    lock.WriteLock();
    lock.ReadLock();
    lock.ReadUnlock();
    lock.WriteUnlock();
    EXPECT_EQ(Take(writer, lock, true), State::waits);
    lock.WriteUnlock();
    EXPECT_TRUE(GetsIn(writer));
    SteppedThread::UntilEnded({&writer});
    lock.ReadLock();
    copy = lock;
    lock.ReadUnlock();
    EXPECT_EQ(Take(writer, copy, true), State::waits) << "read as the source was";
    copy.ReadUnlock();
    EXPECT_TRUE(GetsIn(writer));
}

/// Two readers, each of which pauses while it is in, and a writer.
class Meeting {
public:
    /// Returns how often a reader and a writer were in together. The order has a small letter for
    /// each who comes, unless it is still there, and a capital one for who goes on from where it
    /// stopped; at the end all do.
    int Hold(const char* order, unsigned readerStops, unsigned writerStops) {
        CReadWriteLock lock;
        std::atomic<int> readers{0}, writers{0}, faults{0};
        const auto read = [&] {
            lock.ReadLock();
            ++readers;
            faults += writers;
            SteppedThread::Pause();
            --readers;
            lock.ReadUnlock();
        };
        const auto write = [&] {
            lock.WriteLock();
            ++writers;
            faults += readers;
            --writers;
            lock.WriteUnlock();
        };
        for (; *order != '\0'; ++order) {
            if (*order == 'r' && reader.HasEnded())
                reader.Begin(readerStops, read);
            else if (*order == 's' && second.HasEnded())
                second.Begin(0, read);
            else if (*order == 'w' && writer.HasEnded())
                writer.Begin(writerStops, write);
            else if (std::isupper(*order))
                (*order == 'R' ? reader : *order == 'S' ? second : writer).GoOn();
            for (const SteppedThread* each : {&reader, &second, &writer})
                each->UntilSettled(NoReaders(lock));
        }
        SteppedThread::UntilEnded({&reader, &second, &writer});
        return faults;
    }

    SteppedThread reader, second, writer;
};

/// Every pair of places in each order.
TEST(ReadWriteLock, NeverHasAReaderBesideAWriterWhereverTheyStop) {
    struct Row {
        const char *name, *order;
    };
    const Row rows[] = {
        {"a reader that leaves, and one that comes before the writer", "rRswRW"},
        {"a reader that leaves while the writer comes", "rwRsWR"},
        {"a reader that comes while the writer waits", "swrSWR"},
        {"a reader that signals for a writer of an earlier round", "rwRWswRW"},
    };
    const Watchdog watchdog("a schedule of readers and a writer", 50);
    const ScheduleWalk walk;
    Meeting meeting;
    for (const Row& row : rows) {
        bool more = true;
        unsigned reader = 1, schedules = 0;
        for (; more; ++reader) {
            more = false;
            for (unsigned writer = 1; writer == 1 || meeting.writer.CameToAStop(); ++writer) {
                ASSERT_EQ(meeting.Hold(row.order, reader, writer), 0)
                    << row.name << ", which stops at place " << reader << ", the writer at "
                    << writer;
                more = meeting.reader.CameToAStop() || more;
                ++schedules;
            }
        }
        EXPECT_GT(schedules, 30u) << row.name;
    }
}

} // namespace
