#include "tests/support/AllocationFault.h"

#include <cstdlib>

namespace {

DWORD countedThread = 0;
unsigned calls = 0;
unsigned failing = 0;
bool failed = false;

constexpr char runTime[] = "msvcrt.dll";

template <class Function>
Function Find(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(runTime), name)));
}

// Looked up before anything is patched: the patched module may be this very program.
const auto realMalloc = Find<decltype(&std::malloc)>("malloc");
const auto realCalloc = Find<decltype(&std::calloc)>("calloc");
const auto realRealloc = Find<decltype(&std::realloc)>("realloc");

bool Fails() {
    if (GetCurrentThreadId() != countedThread)
        return false;
    const bool now = ++calls == failing;
    failed = failed || now;
    return now;
}

void* FaultyMalloc(std::size_t size) {
    return Fails() ? nullptr : realMalloc(size);
}

void* FaultyCalloc(std::size_t count, std::size_t size) {
    return Fails() ? nullptr : realCalloc(count, size);
}

void* FaultyRealloc(void* block, std::size_t size) {
    return Fails() ? nullptr : realRealloc(block, size);
}

} // namespace

AllocationFault::AllocationFault(const char* moduleName)
    : malloc(GetModuleHandleA(moduleName), runTime, "malloc",
             reinterpret_cast<void*>(&FaultyMalloc)),
      calloc(GetModuleHandleA(moduleName), runTime, "calloc",
             reinterpret_cast<void*>(&FaultyCalloc)),
      realloc(GetModuleHandleA(moduleName), runTime, "realloc",
              reinterpret_cast<void*>(&FaultyRealloc)) {
    countedThread = GetCurrentThreadId();
    FailAt(0);
}

AllocationFault::~AllocationFault() {
    countedThread = 0;
}

void AllocationFault::FailAt(unsigned n) {
    calls = 0;
    failing = n;
    failed = failed && n == 0;
}

unsigned AllocationFault::Count() const {
    return calls;
}

unsigned AllocationFault::ForEachAllocation(const std::function<void(unsigned)>& action) {
    for (unsigned n = 1;; ++n) {
        FailAt(n);
        action(n);
        const bool reached = failed;
        FailAt(0);
        if (!reached)
            return n - 1;
    }
}
