#ifndef VTRUTILS_SYSTEM_LOCKS_SLIPLOCK_H
#define VTRUTILS_SYSTEM_LOCKS_SLIPLOCK_H

#include "common/Owner.h"
#include "utilities/Export.h"

#include <atomic>

/// A lock with a time-out: one thread at a time, which may lock again as often as it unlocks again.
/// Taking a free lock and taking it again cost no call into the system; threads that must wait do
/// so at an event.
/// Thread-safety: locked by itself.
class VTRUTILS_API CSlipLock {
public:
    CSlipLock() noexcept;
    CSlipLock(const CSlipLock&) = delete;
    CSlipLock& operator=(const CSlipLock&) = delete;
    /// Requires: nobody waits for the lock.
    ~CSlipLock();

    void Lock() noexcept;

    /// False, with the lock as it was, when it cannot be had within the time.
    bool LockWithTimeout(unsigned long milliseconds) noexcept;

    /// Does not wait.
    VTRUTILS_INLINE bool RequestLock() noexcept { return LockWithTimeout(0); }

    /// Nothing when the calling thread does not hold the lock.
    void Unlock() noexcept;

private:
    friend struct vtr::Layout<CSlipLock>;

    bool Wait(unsigned long self, unsigned long milliseconds) noexcept;

    vtr::KernelHandle lockEvent;  ///< signalled for a thread that waits, by one that unlocks
    vtr::KernelHandle guardEvent; ///< part of the record; the owner is atomic and needs no guard
    std::atomic<unsigned long> owner; ///< thread, 0: free
    int recursion;                    ///< changed by the owner only
    std::atomic<int> waiting;         ///< threads at the lock event or on their way to it
};

#endif
