#ifndef VTRUTILS_TESTS_SUPPORT_STEPPEDTHREAD_H
#define VTRUTILS_TESTS_SUPPORT_STEPPEDTHREAD_H

#include "tests/support/ImportPatch.h"
#include "tests/support/ThreadTeam.h"

#include <functional>
#include <initializer_list>
#include <thread>
#include <utility>

/// To walk the schedule of threads that meet in vtrutils.dll: each runs one operation, and can be
/// stopped before and after each atomic instruction and each call that the operation executes
/// inside the DLL. Whether a thread waits is known, not guessed: the DLL's waiting calls are
/// patched while this lives. One at a time in a process.
class ScheduleWalk {
public:
    ScheduleWalk();
    ScheduleWalk(const ScheduleWalk&) = delete;
    ScheduleWalk& operator=(const ScheduleWalk&) = delete;
    ~ScheduleWalk();

private:
    ImportPatch wait;
    ImportPatch enter;
    void* handler;
};

class SteppedThread {
public:
    enum class State { running, stopped, waits, ended };

    SteppedThread();
    SteppedThread(const SteppedThread&) = delete;
    SteppedThread& operator=(const SteppedThread&) = delete;
    ~SteppedThread();

    /// Begins an operation, which stops at the n-th place, counted from 1; 0: nowhere. Returns when
    /// the thread has stopped, waits or has ended. Requires: the operation before has ended.
    State Begin(unsigned n, std::function<void()> newOperation);

    State UntilHalted() const;

    /// The same, and a thread that waits for an event is not about to be woken by it.
    State UntilSettled(HANDLE event) const;

    /// Lets it go on from where it stopped. Does nothing if it has not.
    void GoOn();

    /// Lets all go on from wherever they stop, until they have ended.
    static void UntilEnded(std::initializer_list<SteppedThread*> threads);

    bool HasEnded() const { return state == State::ended; }

    /// Whether an operation was long enough for its stop, since this was last asked.
    bool CameToAStop() { return std::exchange(cameToAStop, false); }

    /// Stops the calling thread, inside its operation.
    static void Pause();

private:
    friend class ScheduleWalk;

    static long __stdcall OnStep(EXCEPTION_POINTERS* exception);
    static DWORD __stdcall Wait(HANDLE object, DWORD milliseconds);
    static void __stdcall Enter(CRITICAL_SECTION* section);
    template <class Call>
    static auto Waiting(const void* object, Call call);

    bool IsAtItsStop(std::uintptr_t instruction);

    void Work();

    std::function<void()> operation;
    unsigned stopAt = 0;
    bool cameToAStop = false;
    unsigned places = 0;                        ///< passed
    bool afterPlace = false;                    ///< the instruction before was one, or outside
    std::atomic<unsigned> waits{0};             ///< how often it has come to wait
    std::atomic<const void*> waitsFor{nullptr}; ///< last
    std::atomic<State> state{State::ended};
    vtr::KernelHandle begin; ///< signalled when there is an operation, or none to come
    std::thread thread;
};

#endif
