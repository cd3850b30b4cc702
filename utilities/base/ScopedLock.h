#ifndef VTRUTILS_BASE_SCOPEDLOCK_H
#define VTRUTILS_BASE_SCOPEDLOCK_H

namespace vtr {

/// Holds a lock that has `Lock` and `Unlock`, such as `CLock`, to the end of the scope. Private to
/// the library. One thread at a time.
template <class Lockable>
class ScopedLock {
public:
    explicit ScopedLock(Lockable& lock) : held(lock) { held.Lock(); }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;
    ~ScopedLock() { held.Unlock(); }

private:
    Lockable& held;
};

} // namespace vtr

#endif
