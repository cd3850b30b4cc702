#ifndef VTRUTILS_SYSTEM_LOCKS_READWRITELOCK_H
#define VTRUTILS_SYSTEM_LOCKS_READWRITELOCK_H

#include "utilities/Export.h"

#include <atomic>
#include <windows.h>

/// Many readers or one writer. While a writer waits or writes, new readers wait. A thread that
/// writes may lock for writing again, as often as it unlocks again, and for reading too.
///
/// In these cases threads hang for ever, and nothing reports it:
///  - A thread that reads asks to write.
///  - A thread that reads asks to read again while another waits to write.
///  - A thread ended while it was reading: writers hang, and readers after the first of them.
///  - A thread ended while it was writing: all others hang.
///
/// Thread-safety: locked by itself.
class VTRUTILS_API CReadWriteLock {
public:
    CReadWriteLock() noexcept;
    CReadWriteLock(const CReadWriteLock&) = delete;
    /// Copies the state: who holds the lock and how many read. What Windows made for each lock
    /// stays its own. Requires: no other thread is at either lock.
    CReadWriteLock& operator=(const CReadWriteLock& other) noexcept;
    /// Requires: nobody holds the lock, waits for it or is about to return from one of its calls.
    ~CReadWriteLock();

    /// Waits while another thread writes or waits to write.
    void ReadLock() noexcept;
    /// Requires: a `ReadLock` of this thread's that was not yet unlocked. One unlock too many
    /// leaves the lock useless; only a debug build of the library reports it.
    void ReadUnlock() noexcept;

    /// Waits until no other thread reads or writes.
    void WriteLock() noexcept;
    /// Requires: a `WriteLock` of this thread's that was not yet unlocked; otherwise as above.
    void WriteUnlock() noexcept;

private:
    friend struct vtr::Internals<CReadWriteLock>;

    CRITICAL_SECTION readerGuard; ///< part of the record; the count is atomic and needs no guard
    CRITICAL_SECTION writerGate;  ///< held by the writer, passed by readers that come meanwhile
    HANDLE noReaders;             ///< wakes the writer that waits for the last reader

    /// Lower half: the reader count. Upper half: how often the writer has locked, and whether it
    /// waits. One word, so that each reader knows whether it came before the writer, and the last
    /// one whether to signal.
    std::atomic<unsigned long long> state;
};

#endif
