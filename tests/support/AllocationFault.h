#ifndef VTRUTILS_TESTS_SUPPORT_ALLOCATIONFAULT_H
#define VTRUTILS_TESTS_SUPPORT_ALLOCATIONFAULT_H

#include "tests/support/ImportPatch.h"

#include <functional>

/// Counts the allocations of one module on the thread that made this, and lets chosen ones fail.
/// One at a time in a process.
class AllocationFault {
public:
    explicit AllocationFault(const char* moduleName);
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;
    ~AllocationFault();

    /// The n-th allocation from now on fails, counted from 1, and no other; 0: none fails.
    void FailAt(unsigned n);

    /// Allocations since the last `FailAt`.
    unsigned Count() const;

    /// Runs `action` with the first, then the second, ... allocation failing, until it ends without
    /// one that failed. `action` gets the number of the failing call and may call `FailAt(0)`
    /// before it checks what it did. Returns the number of failures.
    unsigned ForEachAllocation(const std::function<void(unsigned)>& action);

private:
    ImportPatch malloc;
    ImportPatch calloc;
    ImportPatch realloc;
};

#endif
