#include "utilities/system/locks/SlipLock.h"

#include "common/Owner.h"
#include "common/Require.h"
#include "utilities/base/Layout.h"
#include "utilities/base/ThreadMark.h"

#include <windows.h>

template <>
struct vtr::Internals<CSlipLock> {
    VTR_FIELD_AT(CSlipLock, lockEvent, 0);
    VTR_FIELD_AT(CSlipLock, guardEvent, 8, 4);
    VTR_FIELD_AT(CSlipLock, owner, 16, 8);
    VTR_FIELD_AT(CSlipLock, recursion, 20, 12);

    static bool Wait(CSlipLock& lock, ThreadMark self, unsigned long milliseconds);
};

using Internals = vtr::Internals<CSlipLock>;

namespace {

HANDLE CreateSignalled() {
    return CreateEventA(/*lpEventAttributes=*/nullptr, /*bManualReset=*/FALSE,
                        /*bInitialState=*/TRUE, /*lpName=*/nullptr);
}

bool Take(std::atomic<vtr::ThreadMark>& holder, vtr::ThreadMark self) {
    vtr::ThreadMark nobody = 0;
    return holder.compare_exchange_strong(nobody, self);
}

} // namespace

CSlipLock::CSlipLock() noexcept
    : lockEvent(CreateSignalled()), guardEvent(CreateSignalled()), owner(0), recursion(0),
      waiting(0), holder(0) {}

CSlipLock::~CSlipLock() {
    VTR_REQUIRE(waiting == 0);
    const vtr::KernelHandle lockEventToClose(lockEvent);
    const vtr::KernelHandle guardEventToClose(guardEvent);
}

void CSlipLock::Lock() noexcept {
    LockWithTimeout(INFINITE);
}

bool CSlipLock::LockWithTimeout(unsigned long milliseconds) noexcept {
    const vtr::ThreadMark self = vtr::OwnThreadMark();
    // Only this thread can have written its own mark.
    if (vtr::IsMarkOf(holder.load(std::memory_order_relaxed), self)) {
        ++recursion;
        return true;
    }
    if (!Take(holder, self) && (milliseconds == 0 || !Internals::Wait(*this, self, milliseconds)))
        return false;
    owner = static_cast<unsigned long>(self);
    recursion = 1;
    return true;
}

/// A thread counts as waiting before it tries to take the lock, and `Unlock` frees the lock before
/// it looks for waiting threads: one of the two sees the other. Who gives up does so after a failed
/// try, that is, while another holds the lock, whose `Unlock` wakes the next.
bool Internals::Wait(CSlipLock& lock, vtr::ThreadMark self, unsigned long milliseconds) {
    const ULONGLONG start = GetTickCount64();
    ++lock.waiting;
    bool taken = Take(lock.holder, self);
    for (ULONGLONG gone = 0; !taken && (milliseconds == INFINITE || gone < milliseconds);) {
        const DWORD left =
            milliseconds == INFINITE ? INFINITE : static_cast<DWORD>(milliseconds - gone);
        // Without an event, for which there was no memory, the waiting is done by looking.
        if (WaitForSingleObject(lock.lockEvent, left) == WAIT_FAILED)
            Sleep(1);
        taken = Take(lock.holder, self);
        gone = GetTickCount64() - start;
    }
    --lock.waiting;
    return taken;
}

void CSlipLock::Unlock() noexcept {
    if (!vtr::IsMarkOf(holder.load(std::memory_order_relaxed), vtr::OwnThreadMark()) ||
        --recursion > 0)
        return;
    owner = 0;
    holder = 0;
    if (waiting > 0)
        SetEvent(lockEvent);
}
