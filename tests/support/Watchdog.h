#ifndef VTRUTILS_TESTS_SUPPORT_WATCHDOG_H
#define VTRUTILS_TESTS_SUPPORT_WATCHDOG_H

#include "common/Owner.h"

#include <string>
#include <thread>

/// Ends the program, with a message that names what hangs, when it lives longer than its limit:
/// threads that wait for each other for ever cannot be ended one by one.
class Watchdog {
public:
    explicit Watchdog(std::string what, unsigned seconds = 30);
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    ~Watchdog();

private:
    vtr::KernelHandle finished;
    std::thread thread;
};

#endif
