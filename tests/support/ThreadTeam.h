#ifndef VTRUTILS_TESTS_SUPPORT_THREADTEAM_H
#define VTRUTILS_TESTS_SUPPORT_THREADTEAM_H

#include "tests/support/Watchdog.h"
#include "utilities/system/Owner.h"

#include <functional>
#include <string>
#include <thread>
#include <vector>
#include <windows.h>

/// A signal between threads; stays set once it is.
class Signal {
public:
    Signal()
        : event(CreateEventA(/*lpEventAttributes=*/nullptr, /*bManualReset=*/TRUE,
                             /*bInitialState=*/FALSE, /*lpName=*/nullptr)) {}

    void Set() const { SetEvent(event.Get()); }
    void Wait() const { WaitForSingleObject(event.Get(), INFINITE); }
    bool IsSet() const { return WaitForSingleObject(event.Get(), 0) == WAIT_OBJECT_0; }

private:
    vtr::KernelHandle event;
};

/// Runs `work` with the numbers from 0 on, each on a thread of its own, and returns when all have
/// ended. No thread begins before all are there. A team that hangs ends the program.
inline void RunTeam(const std::string& name, unsigned size,
                    const std::function<void(unsigned)>& work) {
    const Watchdog watchdog(name);
    const Signal begin;
    std::vector<std::thread> threads;
    for (unsigned number = 0; number < size; ++number) {
        threads.emplace_back([&begin, &work, number] {
            begin.Wait();
            work(number);
        });
    }
    begin.Set();
    for (std::thread& thread : threads)
        thread.join();
}

#endif
