#include "utilities/system/locks/ReadWriteLock.h"

#include "common/Owner.h"
#include "common/Require.h"
#include "utilities/base/CriticalSection.h"
#include "utilities/base/Layout.h"
#include "utilities/system/locks/Lock.h"

template <>
struct vtr::Internals<CReadWriteLock> {
    static_assert(sizeof(CReadWriteLock) == vtr::ByPointer(96, 64));
    VTR_FIELD_AT(CReadWriteLock, readerGuard, 0);
    VTR_FIELD_AT(CReadWriteLock, writerGate, 40, 24);
    VTR_FIELD_AT(CReadWriteLock, noReaders, 80, 48);
    VTR_FIELD_AT(CReadWriteLock, state, 88, 56);

    static void WaitForReaders(CReadWriteLock& lock);
};

using Internals = vtr::Internals<CReadWriteLock>;

namespace {

// What the word counts in, beside readers. Its highest bit: a writer waits for the last reader.
constexpr unsigned long long oneWriter = 1ull << 32;
constexpr unsigned long long writerWaits = 1ull << 63;

unsigned Readers(unsigned long long state) {
    return static_cast<unsigned>(state);
}

} // namespace

CReadWriteLock::CReadWriteLock() noexcept
    : noReaders(CreateEventA(/*lpEventAttributes=*/nullptr, /*bManualReset=*/TRUE,
                             /*bInitialState=*/TRUE, /*lpName=*/nullptr)),
      state(0) {
    InitializeCriticalSection(&readerGuard);
    InitializeCriticalSection(&writerGate);
}

CReadWriteLock& CReadWriteLock::operator=(const CReadWriteLock& other) noexcept {
    vtr::CopySectionState(readerGuard, other.readerGuard);
    vtr::CopySectionState(writerGate, other.writerGate);
    state = other.state.load();
    return *this;
}

CReadWriteLock::~CReadWriteLock() {
    VTR_REQUIRE(state == 0 && vtr::IsFree(writerGate));
    const vtr::KernelHandle toClose(noReaders);
    DeleteCriticalSection(&writerGate);
    DeleteCriticalSection(&readerGuard);
}

void CReadWriteLock::ReadLock() noexcept {
    unsigned long long before = state.load(std::memory_order_relaxed);
    while (before < oneWriter) {
        if (state.compare_exchange_weak(before, before + 1))
            return;
    }
    // A writer was there first.
    const CSmartLock gate(&writerGate);
    ++state;
}

void CReadWriteLock::ReadUnlock() noexcept {
    const unsigned long long before = state.fetch_sub(1);
    VTR_REQUIRE(Readers(before) > 0);
    if (Readers(before) == 1 && before >= writerWaits)
        SetEvent(noReaders);
}

void CReadWriteLock::WriteLock() noexcept {
    EnterCriticalSection(&writerGate);
    if (Readers(state.fetch_add(oneWriter)) > 0)
        Internals::WaitForReaders(*this);
}

void CReadWriteLock::WriteUnlock() noexcept {
    VTR_REQUIRE(vtr::IsHeldHere(writerGate) && state >= oneWriter);
    // While a writer is in and nobody reads, nobody else changes the word.
    const unsigned long long before = state.load(std::memory_order_relaxed);
    if (Readers(before) == 0)
        state.store(before - oneWriter, std::memory_order_release);
    else
        state -= oneWriter;
    LeaveCriticalSection(&writerGate);
}

/// No reader gets in any more, so the writer may go on as soon as it has seen none. The event only
/// says when to look: one who left long ago may signal late, for a writer of an earlier round. The
/// event is reset before each look, so that no signal after the look is lost.
void Internals::WaitForReaders(CReadWriteLock& lock) {
    lock.state |= writerWaits;
    for (;;) {
        ResetEvent(lock.noReaders);
        if (Readers(lock.state) == 0)
            break;
        // Without an event, for which there was no memory, the waiting is done by looking.
        if (WaitForSingleObject(lock.noReaders, INFINITE) != WAIT_OBJECT_0)
            Sleep(1);
    }
    lock.state &= ~writerWaits;
}
