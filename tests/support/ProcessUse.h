#ifndef VTRUTILS_TESTS_SUPPORT_PROCESSUSE_H
#define VTRUTILS_TESTS_SUPPORT_PROCESSUSE_H

#include "common/Handles.h"
#include "tests/support/HeapUse.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <tlhelp32.h>

/// The threads of this process. Those of the system may end at any time.
inline unsigned Threads() {
    const vtr::FileHandle all(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    unsigned count = 0;
    for (BOOL more = Thread32First(all.Get(), &entry); more; more = Thread32Next(all.Get(), &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1u : 0u;
    return count;
}

/// Under Wine nothing tells how many handles a process has, but the value of a fresh one does.
inline std::size_t NextHandle() {
    const vtr::KernelHandle event(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    return reinterpret_cast<std::size_t>(event.Get());
}

/// Expects that a hundred steps leave nothing that ten did not leave: the system keeps some things
/// from its first transfers. `step` gets the number of the step; `end` lets go of what the last one
/// still uses.
template <class Step, class End>
void ExpectNoGrowth(const char* name, Step step, End end) {
    SCOPED_TRACE(name);
    for (int i = 0; i < 10; ++i)
        step(i);
    end();
    const unsigned threads = Threads();
    const std::size_t handle = NextHandle();
    const std::size_t bytes = HeapUse();
    for (int i = 0; i < 100 && !testing::Test::HasFatalFailure(); ++i)
        step(i);
    end();
    EXPECT_LE(Threads(), threads);
    EXPECT_LE(NextHandle(), handle + 16);
    EXPECT_LE(HeapUse(), bytes + 1000) << "ten bytes each time";
}

#endif
