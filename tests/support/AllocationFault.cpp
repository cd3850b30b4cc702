#include "tests/support/AllocationFault.h"

#include <cstdlib>

namespace {

DWORD countedThread = 0;
unsigned calls = 0;
unsigned failing = 0;
bool failed = false;

bool Fails() {
    if (GetCurrentThreadId() != countedThread)
        return false;
    const bool now = ++calls == failing;
    failed = failed || now;
    return now;
}

void* FaultyMalloc(std::size_t size) {
    return Fails() ? nullptr : std::malloc(size);
}

void* FaultyCalloc(std::size_t count, std::size_t size) {
    return Fails() ? nullptr : std::calloc(count, size);
}

void* FaultyRealloc(void* block, std::size_t size) {
    return Fails() ? nullptr : std::realloc(block, size);
}

ImportPatch Patch(const char* moduleName, const char* function, void* replacement) {
    return {GetModuleHandleA(moduleName), "msvcrt.dll", function, replacement};
}

} // namespace

AllocationFault::AllocationFault(const char* moduleName)
    : malloc(Patch(moduleName, "malloc", reinterpret_cast<void*>(&FaultyMalloc))),
      calloc(Patch(moduleName, "calloc", reinterpret_cast<void*>(&FaultyCalloc))),
      realloc(Patch(moduleName, "realloc", reinterpret_cast<void*>(&FaultyRealloc))) {
    countedThread = GetCurrentThreadId();
    FailAt(0);
}

AllocationFault::~AllocationFault() {
    countedThread = 0;
}

void AllocationFault::FailAt(unsigned n) {
    calls = 0;
    failing = n;
    failed = false;
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
