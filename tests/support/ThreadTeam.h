#ifndef VTRUTILS_TESTS_SUPPORT_THREADTEAM_H
#define VTRUTILS_TESTS_SUPPORT_THREADTEAM_H

#include "common/Owner.h"
#include "tests/support/Watchdog.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>
#include <windows.h>

/// What `ask` answers on another thread.
template <class Ask>
auto OnOtherThread(Ask ask) {
    decltype(ask()) answer{};
    std::thread([&] { answer = ask(); }).join();
    return answer;
}

/// Whether `operation`, on another thread, waits at the critical section, which is free when this
/// is called. That it waits is seen in the section, whatever the time. `meanwhile` is called then.
inline bool WaitsAt(
    CRITICAL_SECTION& section, const std::function<void()>& operation,
    const std::function<void()>& meanwhile = [] {}) {
    EnterCriticalSection(&section);
    const volatile LONG& locks = section.LockCount;
    const LONG held = locks;
    std::atomic<bool> done{false};
    std::thread other([&] {
        operation();
        done = true;
    });
    while (!done && locks == held)
        SwitchToThread();
    const bool waits = !done;
    meanwhile();
    LeaveCriticalSection(&section);
    other.join();
    return waits;
}

/// Runs `work` with the numbers from 0 on, each on a thread of its own, and returns when all have
/// ended. No thread begins before all are there. A team that hangs ends the program.
inline void RunTeam(const std::string& name, unsigned size,
                    const std::function<void(unsigned)>& work) {
    const Watchdog watchdog(name);
    // An event: what the compiler's own latch waits at loses wake-ups here.
    const vtr::KernelHandle begin(CreateEventA(/*lpEventAttributes=*/nullptr,
                                               /*bManualReset=*/TRUE, /*bInitialState=*/FALSE,
                                               /*lpName=*/nullptr));
    std::vector<std::thread> threads;
    for (unsigned number = 0; number < size; ++number) {
        threads.emplace_back([&begin, &work, number] {
            WaitForSingleObject(begin.Get(), INFINITE);
            work(number);
        });
    }
    SetEvent(begin.Get());
    for (std::thread& thread : threads)
        thread.join();
}

#endif
