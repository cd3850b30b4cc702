#ifndef VTRUTILS_BASE_CRITICALSECTION_H
#define VTRUTILS_BASE_CRITICALSECTION_H

#include <windows.h>

namespace vtr {

/// Gives `target` the state of `source`: free, or held by the same thread as often. Each keeps what
/// Windows made for it, because deleting two sections that share it would free it twice. Requires:
/// both initialised, and no other thread at either. Private to the library.
inline void CopySectionState(CRITICAL_SECTION& target, const CRITICAL_SECTION& source) {
    target.LockCount = source.LockCount;
    target.RecursionCount = source.RecursionCount;
    target.OwningThread = source.OwningThread;
    target.SpinCount = source.SpinCount;
}

} // namespace vtr

#endif
