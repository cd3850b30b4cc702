// Locking and unlocking, by one thread and by two at once, beside what Windows and the standard
// library have.

#include "bench/support/Comparison.h"
#include "common/Owner.h"
#include "utilities/system/locks/Lock.h"
#include "utilities/system/locks/ReadWriteLock.h"
#include "utilities/system/locks/SlipLock.h"

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <windows.h>

namespace {

struct Section {
    Section() { InitializeCriticalSection(&section); }
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;
    ~Section() { DeleteCriticalSection(&section); }
    void Lock() { EnterCriticalSection(&section); }
    void Unlock() { LeaveCriticalSection(&section); }
    CRITICAL_SECTION section;
};

template <class Mutex>
struct Standard {
    void Lock() { mutex.lock(); }
    void Unlock() { mutex.unlock(); }
    Mutex mutex;
};

struct Exclusive {
    void Lock() { AcquireSRWLockExclusive(&lock); }
    void Unlock() { ReleaseSRWLockExclusive(&lock); }
    SRWLOCK lock = SRWLOCK_INIT;
};

struct Shared {
    void Lock() { AcquireSRWLockShared(&lock); }
    void Unlock() { ReleaseSRWLockShared(&lock); }
    SRWLOCK lock = SRWLOCK_INIT;
};

struct Event {
    void Lock() { WaitForSingleObject(event.Get(), INFINITE); }
    void Unlock() { SetEvent(event.Get()); }
    vtr::KernelHandle event{CreateEventA(/*lpEventAttributes=*/nullptr, /*bManualReset=*/FALSE,
                                         /*bInitialState=*/TRUE, /*lpName=*/nullptr)};
};

struct Reading {
    void Lock() { lock.ReadLock(); }
    void Unlock() { lock.ReadUnlock(); }
    CReadWriteLock lock;
};

struct Writing {
    void Lock() { lock.WriteLock(); }
    void Unlock() { lock.WriteUnlock(); }
    CReadWriteLock lock;
};

template <class Lock>
void MeasureUncontended(const std::string& work, const std::string& contender) {
    bench::Measure(work + ", one thread", "", contender, [](benchmark::State& state) {
        Lock lock;
        for (auto _ : state) {
            lock.Lock();
            benchmark::ClobberMemory();
            lock.Unlock();
        }
    });
}

/// A turn is a lock, a little work and an unlock, on each of two threads.
template <class Lock>
void MeasureContended(const std::string& work, const std::string& contender) {
    bench::Measure(work + ", two threads", "50,000 turns each", contender,
                   [](benchmark::State& state) {
                       for (auto _ : state) {
                           Lock lock;
                           volatile int counter = 0;
                           const auto turns = [&] {
                               for (int i = 0; i < 50'000; ++i) {
                                   lock.Lock();
                                   counter = counter + 1;
                                   lock.Unlock();
                               }
                           };
                           std::thread other(turns);
                           turns();
                           other.join();
                       }
                   });
}

void ToReach(const std::string& work, const std::string& peer) {
    for (const char* threads : {", one thread", ", two threads"})
        bench::ToReach(work + threads, peer, bench::asFast);
}

template <class Lock>
void Measure(const std::string& work, const std::string& contender) {
    MeasureUncontended<Lock>(work, contender);
    MeasureContended<Lock>(work, contender);
}

void MeasurePlainLocks() {
    static constexpr char work[] = "CLock";
    Measure<CLock>(work, bench::ours);
    Measure<Section>(work, "CRITICAL_SECTION");
    Measure<Standard<std::mutex>>(work, "std::mutex");
    Measure<Exclusive>(work, "SRWLOCK");
    ToReach(work, "CRITICAL_SECTION");
}

void MeasureSlipLock() {
    static constexpr char work[] = "CSlipLock";
    Measure<CSlipLock>(work, bench::ours);
    Measure<Section>(work, "CRITICAL_SECTION");
    Measure<Standard<std::recursive_timed_mutex>>(work, "std::recursive_timed_mutex");
    MeasureUncontended<Event>(work, "auto-reset event");
    ToReach(work, "std::recursive_timed_mutex");
    ToReach(work, "auto-reset event");
    for (const char* threads : {", one thread", ", two threads"})
        bench::Explain(std::string(work) + threads, "std::recursive_timed_mutex",
                       "both take one atomic exchange to lock and one to unlock; ours are calls "
                       "into the DLL, the peer's are inlined");
}

void MeasureReadWriteLock() {
    static constexpr char reading[] = "CReadWriteLock, reading";
    Measure<Reading>(reading, bench::ours);
    Measure<Shared>(reading, "SRWLOCK");
    ToReach(reading, "SRWLOCK");
    static constexpr char writing[] = "CReadWriteLock, writing";
    Measure<Writing>(writing, bench::ours);
    Measure<Exclusive>(writing, "SRWLOCK");
    Measure<Section>(writing, "CRITICAL_SECTION");
    ToReach(writing, "SRWLOCK");
}

} // namespace

int main(int argc, char** argv) {
    MeasurePlainLocks();
    MeasureSlipLock();
    MeasureReadWriteLock();
    return bench::Run(argc, argv);
}
