#include "utilities/base/ThreadMark.h"

#pragma GCC diagnostic ignored "-Warray-bounds" // false alarm on NtCurrentTeb

#include <atomic>
#include <cstdint>
#include <iterator>
#include <windows.h>

#include <winternl.h>

namespace {

// Not `thread_local`: the compiler's ends the process when it has no memory for a thread's.
std::atomic<DWORD> slot{TLS_OUT_OF_INDEXES};
std::atomic<unsigned> given{0};

/// A slot keeps the whole mark or, where pointers are too small for that, its upper half.
constexpr bool keepsWholeMark = sizeof(void*) >= sizeof(vtr::ThreadMark);

void* ToSlot(vtr::ThreadMark mark) {
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(keepsWholeMark ? mark : mark >> 32));
}

vtr::ThreadMark FromSlot(void* kept) {
    const vtr::ThreadMark bits = reinterpret_cast<std::uintptr_t>(kept);
    return keepsWholeMark ? bits : bits << 32 | GetCurrentThreadId();
}

bool HasSlot() {
    if (slot != TLS_OUT_OF_INDEXES)
        return true;
    const DWORD made = TlsAlloc();
    DWORD none = TLS_OUT_OF_INDEXES;
    if (made != TLS_OUT_OF_INDEXES && !slot.compare_exchange_strong(none, made))
        TlsFree(made);
    return slot != TLS_OUT_OF_INDEXES;
}

vtr::ThreadMark FindOrMakeMark() {
    const DWORD error = GetLastError();
    vtr::ThreadMark mark = GetCurrentThreadId();
    if (HasSlot()) {
        void* kept = TlsGetValue(slot);
        if (kept == nullptr) {
            kept = ToSlot(mark | static_cast<vtr::ThreadMark>(++given) << 32);
            kept = TlsSetValue(slot, kept) ? kept : nullptr;
        }
        mark = kept != nullptr ? FromSlot(kept) : mark;
    }
    SetLastError(error);
    return mark;
}

} // namespace

vtr::ThreadMark vtr::OwnThreadMark() noexcept {
    // Where TlsGetValue finds the first slots: a call of it, and another two to keep the last
    // error, would cost more than the rest of a lock.
    const TEB& thread = *NtCurrentTeb();
    const DWORD index = slot.load(std::memory_order_acquire);
    if (index < std::size(thread.TlsSlots) && thread.TlsSlots[index] != nullptr)
        return FromSlot(thread.TlsSlots[index]);
    return FindOrMakeMark();
}

void vtr::FreeThreadMarks() noexcept {
    const DWORD index = slot.exchange(TLS_OUT_OF_INDEXES);
    if (index != TLS_OUT_OF_INDEXES)
        TlsFree(index);
}
