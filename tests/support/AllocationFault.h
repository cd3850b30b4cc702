#ifndef VTRUTILS_TESTS_SUPPORT_ALLOCATIONFAULT_H
#define VTRUTILS_TESTS_SUPPORT_ALLOCATIONFAULT_H

#include "tests/support/ImportPatch.h"

#include <functional>
#include <initializer_list>
#include <memory>
#include <vector>

/// Counts the allocations of some modules on one thread, that which made this, and lets chosen ones
/// fail. One at a time in a process.
class AllocationFault {
public:
    explicit AllocationFault(const char* moduleName) : AllocationFault({moduleName}) {}
    explicit AllocationFault(std::initializer_list<const char*> moduleNames);
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;
    ~AllocationFault();

    /// The n-th allocation from now on fails, counted from 1, and no other; 0: none fails.
    void FailAt(unsigned n);

    /// So do all after it, as when the memory is really used up.
    void FailFrom(unsigned n);

    /// Allocations since the last `FailAt`.
    unsigned Count() const;

    /// Runs `action` on a thread of its own, which has not allocated anything yet, with its n-th
    /// allocation and all after it failing.
    void OnFreshThread(unsigned n, const std::function<void(unsigned)>& action);

    /// Runs `action` with the first, then the second, ... allocation failing, each alone and, on a
    /// fresh thread, with all after it, until it ends without one that failed. `action` gets the
    /// number of the failing call and may call `FailAt(0)` before it checks what it did. Returns
    /// the number of failures.
    unsigned ForEachAllocation(const std::function<void(unsigned)>& action);

private:
    std::vector<std::unique_ptr<ImportPatch>> patches;
};

#endif
