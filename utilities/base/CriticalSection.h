#ifndef VTRUTILS_BASE_CRITICALSECTION_H
#define VTRUTILS_BASE_CRITICALSECTION_H

#include "common/Require.h"

#include <windows.h>

/// What the fields of a critical section tell. Private to the library.

namespace vtr {

inline bool IsFree(const CRITICAL_SECTION& section) {
    return section.OwningThread == nullptr && section.RecursionCount == 0;
}

inline bool IsHeldHere(const CRITICAL_SECTION& section) {
    return reinterpret_cast<ULONG_PTR>(section.OwningThread) == GetCurrentThreadId() &&
           section.RecursionCount > 0;
}

/// Gives `target` the state of `source`: free, or held by the same thread as often. Each keeps what
/// Windows made for it, because deleting two sections that share it would free it twice. Requires:
/// both initialised, and no other thread at either.
inline void CopySectionState(CRITICAL_SECTION& target, const CRITICAL_SECTION& source) {
    VTR_REQUIRE(IsFree(source) || IsHeldHere(source));
    VTR_REQUIRE(IsFree(target) || IsHeldHere(target));
    target.LockCount = source.LockCount;
    target.RecursionCount = source.RecursionCount;
    target.OwningThread = source.OwningThread;
    target.SpinCount = source.SpinCount;
}

} // namespace vtr

#endif
