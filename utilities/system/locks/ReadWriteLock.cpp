#include "utilities/system/locks/ReadWriteLock.h"

#include "utilities/base/CriticalSection.h"
#include "utilities/system/locks/Lock.h"

#include <cstddef>

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<CReadWriteLock> {
    static_assert(sizeof(CReadWriteLock) == 96);
    static_assert(offsetof(CReadWriteLock, readerGuard) == 0);
    static_assert(offsetof(CReadWriteLock, writerGate) == 40);
    static_assert(offsetof(CReadWriteLock, noReaders) == 80);
    static_assert(offsetof(CReadWriteLock, readers) == 88);
};

CReadWriteLock::CReadWriteLock() noexcept
    : noReaders(CreateEventA(/*lpEventAttributes=*/nullptr, /*bManualReset=*/TRUE,
                             /*bInitialState=*/TRUE, /*lpName=*/nullptr)),
      readers(0), writerWaits(false) {
    InitializeCriticalSection(&readerGuard);
    InitializeCriticalSection(&writerGate);
}

CReadWriteLock& CReadWriteLock::operator=(const CReadWriteLock& other) noexcept {
    vtr::CopySectionState(readerGuard, other.readerGuard);
    vtr::CopySectionState(writerGate, other.writerGate);
    readers = other.readers.load();
    return *this;
}

CReadWriteLock::~CReadWriteLock() {
    DeleteCriticalSection(&writerGate);
    DeleteCriticalSection(&readerGuard);
}

void CReadWriteLock::ReadLock() noexcept {
    const CSmartLock gate(&writerGate);
    ++readers;
}

void CReadWriteLock::ReadUnlock() noexcept {
    if (--readers > 0 || !writerWaits)
        return;
    const CSmartLock guard(&readerGuard);
    // The writer may have seen that nobody reads any more, and have gone on.
    if (writerWaits) {
        writerWaits = false;
        SetEvent(noReaders.Get());
    }
}

void CReadWriteLock::WriteLock() noexcept {
    EnterCriticalSection(&writerGate);
    // No reader can come any more, so that the count only falls.
    if (readers > 0)
        WaitForReaders();
}

void CReadWriteLock::WriteUnlock() noexcept {
    LeaveCriticalSection(&writerGate);
}

/// The writer says that it waits before it looks at the count, and a reader counts itself out
/// before it looks for a writer: one of the two sees the other.
void CReadWriteLock::WaitForReaders() noexcept {
    {
        const CSmartLock guard(&readerGuard);
        ResetEvent(noReaders.Get());
        writerWaits = true;
    }
    if (readers == 0) {
        const CSmartLock guard(&readerGuard);
        writerWaits = false;
        return;
    }
    // Without an event, for which there was no memory, the waiting is done by looking.
    while (WaitForSingleObject(noReaders.Get(), INFINITE) != WAIT_OBJECT_0 && readers > 0)
        Sleep(1);
}
