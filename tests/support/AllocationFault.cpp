#include "tests/support/AllocationFault.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace {

DWORD countedThread = 0;
unsigned calls = 0;
unsigned failing = 0;
bool andAllAfter = false;
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
    ++calls;
    const bool now = calls == failing || (andAllAfter && failing > 0 && calls > failing);
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

AllocationFault::AllocationFault(std::initializer_list<const char*> moduleNames) {
    const std::pair<const char*, void*> replacements[] = {
        {"malloc", reinterpret_cast<void*>(&FaultyMalloc)},
        {"calloc", reinterpret_cast<void*>(&FaultyCalloc)},
        {"realloc", reinterpret_cast<void*>(&FaultyRealloc)}};
    for (const char* moduleName : moduleNames) {
        for (const auto& [name, replacement] : replacements)
            patches.push_back(std::make_unique<ImportPatch>(GetModuleHandleA(moduleName), runTime,
                                                            name, replacement));
    }
    countedThread = GetCurrentThreadId();
    FailAt(0);
}

AllocationFault::~AllocationFault() {
    countedThread = 0;
}

void AllocationFault::FailAt(unsigned n) {
    calls = 0;
    failing = n;
    andAllAfter = false;
    failed = failed && n == 0;
}

void AllocationFault::FailFrom(unsigned n) {
    FailAt(n);
    andAllAfter = true;
}

unsigned AllocationFault::Count() const {
    return calls;
}

void AllocationFault::OnFreshThread(unsigned n, const std::function<void(unsigned)>& action) {
    const DWORD own = countedThread;
    bool ended = false;
    std::thread([&] {
        countedThread = GetCurrentThreadId();
        FailFrom(n);
        action(n);
        ended = true;
    }).join();
    countedThread = own;
    // Under Wine a thread that exhausts its stack ends without a word.
    EXPECT_TRUE(ended) << "the thread died, allocation " << n << " failing and all after it";
}

unsigned AllocationFault::ForEachAllocation(const std::function<void(unsigned)>& action) {
    for (unsigned n = 1;; ++n) {
        FailAt(n);
        action(n);
        const bool reached = failed;
        OnFreshThread(n, action);
        FailAt(0);
        if (!reached)
            return n - 1;
    }
}
