#ifndef VTRUTILS_SYSTEM_LOCKS_SLIPLOCK_H
#define VTRUTILS_SYSTEM_LOCKS_SLIPLOCK_H

#include "utilities/Export.h"

#include <atomic>

/// A lock with a time-out: one thread at a time, which may lock again as often as it unlocks again.
/// Taking a free lock and taking it again cost no call into the system; threads that must wait do
/// so on an event.
///
/// If a thread ends while it holds the lock, the lock stays held for ever: no other thread gets it,
/// not even one to which the system gives the same number.
/// Thread-safety: locked by itself.
class VTRUTILS_API CSlipLock {
public:
    CSlipLock() noexcept;
    CSlipLock(const CSlipLock&) = delete;
    CSlipLock& operator=(const CSlipLock&) = delete;
    /// Requires: nobody waits for the lock.
    ~CSlipLock();

    /// Waits until no other thread holds the lock.
    void Lock() noexcept;

    /// Waits for at most this time. False, with the lock unchanged, if another thread still holds
    /// it then.
    bool LockWithTimeout(unsigned long milliseconds) noexcept;

    /// Does not wait: false if another thread holds the lock.
    VTRUTILS_INLINE bool RequestLock() noexcept { return LockWithTimeout(0); }

    /// Does nothing if the calling thread does not hold the lock.
    void Unlock() noexcept;

private:
    friend struct vtr::Internals<CSlipLock>;

    void* lockEvent;          ///< signalled for a thread that waits, by one that unlocks
    void* guardEvent;         ///< part of the record; the owner is atomic and needs no guard
    unsigned long owner;      ///< thread number, 0: free; written by the owner only
    int recursion;            ///< changed by the owner only
    std::atomic<int> waiting; ///< threads at the lock event or on their way to it
    std::atomic<unsigned long long> holder; ///< the owner's mark, 0: free; numbers are used again
};

#endif
