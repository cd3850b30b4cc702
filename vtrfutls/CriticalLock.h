#ifndef VTRFUTLS_CRITICALLOCK_H
#define VTRFUTLS_CRITICALLOCK_H

#include <windows.h>

namespace vtr {

/// A lock that its holder may take again. Private to this library. Locked by itself.
class CriticalLock {
public:
    CriticalLock() { InitializeCriticalSection(&section); }
    CriticalLock(const CriticalLock&) = delete;
    CriticalLock& operator=(const CriticalLock&) = delete;
    ~CriticalLock() { DeleteCriticalSection(&section); }

    /// Holds the lock to the end of the scope.
    class Holder {
    public:
        explicit Holder(CriticalLock& lock) : section(lock.section) {
            EnterCriticalSection(&section);
        }
        Holder(const Holder&) = delete;
        Holder& operator=(const Holder&) = delete;
        ~Holder() { LeaveCriticalSection(&section); }

    private:
        CRITICAL_SECTION& section;
    };

private:
    CRITICAL_SECTION section;
};

} // namespace vtr

#endif
