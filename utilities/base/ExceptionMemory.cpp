// The memory that throwing takes, in place of that of the compiler's run-time, which ends the
// process when malloc has none left: the lock of its reserve and each thread's record of exceptions
// come from malloc too. Libraries inside this one throw when memory runs out, and their callers
// here stop that. So the reserve is static and needs no lock.

#include "common/RunTimeMemory.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <windows.h>

#include <cxxabi.h>

namespace {

/// The run-time's own record of an exception is right before the thrown object: 160 bytes.
constexpr std::size_t headerSize = 256;
constexpr std::size_t blockSize = 512;
constexpr unsigned blocks = 64;

alignas(16) unsigned char reserve[blocks][blockSize];
std::atomic<unsigned long long> taken{0};

/// Zeroed; ends the process, as the run-time does, when the reserve is used up.
unsigned char* Take(std::size_t size) {
    if (void* const block = std::calloc(1, size))
        return static_cast<unsigned char*>(block);
    for (unsigned number = 0; number < blocks && size <= blockSize; ++number) {
        const unsigned long long bit = 1ULL << number;
        if ((taken.fetch_or(bit) & bit) == 0) {
            std::memset(reserve[number], 0, blockSize);
            return reserve[number];
        }
    }
    std::terminate();
}

void GiveBack(void* block) {
    const auto offset = static_cast<unsigned char*>(block) - reserve[0];
    if (offset >= 0 && static_cast<std::size_t>(offset) < sizeof reserve)
        taken &= ~(1ULL << (static_cast<std::size_t>(offset) / blockSize));
    else
        std::free(block);
}

void WINAPI GiveBackRecord(void* record) {
    if (record != nullptr)
        GiveBack(record);
}

// Not `thread_local`, for which the run-time takes memory.
std::atomic<DWORD> slot{FLS_OUT_OF_INDEXES};
std::atomic<bool> unloading{false};

/// None once the library is being unloaded.
DWORD Slot() {
    DWORD known = slot;
    if (known == FLS_OUT_OF_INDEXES && !unloading) {
        const DWORD made = FlsAlloc(GiveBackRecord);
        if (slot.compare_exchange_strong(known, made))
            return made;
        FlsFree(made);
    }
    return known;
}

/// For the thread that unloads the library, after its slot is gone.
__cxxabiv1::__cxa_eh_globals* LastRecord() {
    alignas(16) static unsigned char record[2 * sizeof(void*)];
    return reinterpret_cast<__cxxabiv1::__cxa_eh_globals*>(record);
}

} // namespace

namespace __gnu_cxx {

/// When the library is unloaded. A slot that stayed would call it when a thread ends later.
void __freeres() {
    unloading = true;
    const DWORD index = slot.exchange(FLS_OUT_OF_INDEXES);
    if (index != FLS_OUT_OF_INDEXES)
        FlsFree(index);
}

} // namespace __gnu_cxx

namespace __cxxabiv1 {

extern "C" {

void* __cxa_allocate_exception(std::size_t size) noexcept {
    return Take(headerSize + size) + headerSize;
}

void __cxa_free_exception(void* thrown) noexcept {
    GiveBack(static_cast<unsigned char*>(thrown) - headerSize);
}

__cxa_dependent_exception* __cxa_allocate_dependent_exception() noexcept {
    return reinterpret_cast<__cxa_dependent_exception*>(Take(headerSize));
}

void __cxa_free_dependent_exception(__cxa_dependent_exception* exception) noexcept {
    GiveBack(exception);
}

/// The calling thread's record of what it throws and catches.
__cxa_eh_globals* __cxa_get_globals() noexcept {
    const DWORD error = GetLastError();
    const DWORD index = Slot();
    if (index == FLS_OUT_OF_INDEXES && unloading)
        return LastRecord();
    void* record = FlsGetValue(index);
    if (record == nullptr) {
        record = Take(2 * sizeof(void*));
        if (!FlsSetValue(index, record))
            std::terminate();
    }
    SetLastError(error);
    return static_cast<__cxa_eh_globals*>(record);
}

__cxa_eh_globals* __cxa_get_globals_fast() noexcept {
    return __cxa_get_globals();
}

} // extern "C"

} // namespace __cxxabiv1
