#ifndef VTRUTILS_SYSTEM_LOCKS_LOCK_H
#define VTRUTILS_SYSTEM_LOCKS_LOCK_H

#include "utilities/Export.h"

#include <windows.h>

/// A critical section: one thread at a time, which may lock again as often as it unlocks again. If
/// a thread ends while it holds the lock, all others wait for ever.
/// Thread-safety: locked by itself.
class VTRUTILS_API CLock {
public:
    CLock() noexcept;
    CLock(const CLock&) = delete;
    /// Copies the state: if a thread holds the other lock, it holds this one too. What Windows made
    /// for each section stays its own. Requires: no other thread is at either lock.
    CLock& operator=(const CLock& other) noexcept;
    /// Requires: nobody holds the lock or waits for it.
    ~CLock();

    /// Waits until no other thread holds the lock.
    VTRUTILS_INLINE void Lock() noexcept { EnterCriticalSection(&section); }

    /// Requires: the calling thread holds the lock. One unlock too many leaves the lock useless,
    /// and no build of the library reports it.
    VTRUTILS_INLINE void Unlock() noexcept { LeaveCriticalSection(&section); }

    /// Does not wait. Not 0 if the calling thread holds the lock afterwards. Where Windows has no
    /// `TryEnterCriticalSection`, waits for the lock and returns 1.
    int TryToLock() noexcept;

private:
    friend struct vtr::Internals<CLock>;

    CRITICAL_SECTION section;
};

/// Holds a critical section to the end of the scope; null is allowed and holds nothing.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CSmartLock {
public:
    /// Requires: the section outlives this object.
    VTRUTILS_INLINE explicit CSmartLock(CRITICAL_SECTION* toEnter) noexcept : section(toEnter) {
        if (section != nullptr)
            EnterCriticalSection(section);
    }
    CSmartLock(const CSmartLock&) = delete;
    CSmartLock& operator=(const CSmartLock&) = delete;
    VTRUTILS_INLINE ~CSmartLock() {
        if (section != nullptr)
            LeaveCriticalSection(section);
    }

private:
    CRITICAL_SECTION* section;
};

#endif
