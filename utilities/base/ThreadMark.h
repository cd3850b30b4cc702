#ifndef VTRUTILS_BASE_THREADMARK_H
#define VTRUTILS_BASE_THREADMARK_H

/// Tells threads apart for good, which the system's numbers do not: those are given again once a
/// thread has ended. Private to the library. Locked by itself.

namespace vtr {

/// The lower half is the thread's number. The upper half tells it from all threads that have had
/// the number before; it is 0 where there was no memory to keep it by.
using ThreadMark = unsigned long long;

/// Not 0, and the same for the whole life of the calling thread. Keeps `GetLastError`.
ThreadMark OwnThreadMark() noexcept;

/// Whether a mark that was taken before is that of the calling thread. `own` is what
/// `OwnThreadMark` gives now: it differs where there was no memory then and there is now.
inline bool IsMarkOf(ThreadMark mark, ThreadMark own) noexcept {
    return mark == own || (mark != 0 && mark == static_cast<unsigned>(own));
}

/// When the library is unloaded.
void FreeThreadMarks() noexcept;

} // namespace vtr

#endif
