#include "utilities/text/language/LanguageStrings.h"

#include "tests/support/HeapUse.h"
#include "tests/support/TestFolder.h"
#include "utilities/system/locks/SlipLock.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

namespace {

/// Handles that leak push up the values of fresh ones. (Wine does not count the handles of a
/// process.)
std::size_t HighestFreshHandle() {
    std::array<HANDLE, 50> handles;
    for (HANDLE& handle : handles)
        handle = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    std::for_each(handles.begin(), handles.end(), CloseHandle);
    return reinterpret_cast<std::size_t>(*std::max_element(handles.begin(), handles.end()));
}

DWORD NextThreadSlot() {
    const DWORD index = TlsAlloc();
    TlsFree(index);
    return index;
}

} // namespace

TEST(LanguageStrings, UnloadingFreesWhatLookUpsKept) {
    const TestFolder folder;
    // Copies have a state of their own: the libraries themselves stay loaded.
    const std::string copy = folder.File("copy.dll");
    const std::string sibling = folder.File("sibling.dll");
    for (const auto& [name, path] : {std::pair("vtrutils.dll", copy), {"vtrfutls.dll", sibling}}) {
        char library[MAX_PATH];
        GetModuleFileNameA(GetModuleHandleA(name), library, sizeof library);
        ASSERT_TRUE(CopyFileA(library, path.c_str(), /*bFailIfExists=*/TRUE));
    }
    std::string file = folder.Write("a.ini", "One = first text\nTwo = second text\n");
    const auto visit = [&] {
        const HMODULE module = LoadLibraryA(copy.c_str());
        ASSERT_NE(module, nullptr);
        const auto load = reinterpret_cast<decltype(&MyLoadString)>(
            reinterpret_cast<void*>(GetProcAddress(module, "_Z12MyLoadStringPKcPciS1_b")));
        const auto setFile = reinterpret_cast<decltype(&SetStringFile)>(
            reinterpret_cast<void*>(GetProcAddress(module, "_Z13SetStringFilePc")));
        char text[32];
        setFile(file.data());
        EXPECT_EQ(load("One", text, sizeof text, nullptr, true), 10);
        EXPECT_EQ(load("Two", text, sizeof text, nullptr, true), 11);
        // A lock's first owner has the library mark its threads.
        alignas(CSlipLock) char lock[sizeof(CSlipLock)];
        for (const char* name : {"_ZN9CSlipLockC1Ev", "_ZN9CSlipLock4LockEv",
                                 "_ZN9CSlipLock6UnlockEv", "_ZN9CSlipLockD1Ev"})
            reinterpret_cast<void (*)(void*)>(
                reinterpret_cast<void*>(GetProcAddress(module, name)))(lock);
        FreeLibrary(module);
    };
    const DWORD slot = NextThreadSlot();
    for (int i = 0; i < 10; ++i)
        visit();
    const std::size_t handle = HighestFreshHandle();
    const std::size_t used = HeapUse();
    EXPECT_GT(used, 10'000u) << "heaps are seen";
    for (int i = 0; i < 1000; ++i) {
        visit();
        if (i % 10 == 0)
            FreeLibrary(LoadLibraryA(sibling.c_str()));
    }
    const std::size_t usedAfter = HeapUse();
    EXPECT_LT(HighestFreshHandle(), handle + 400) << "less than a handle in ten visits";
    EXPECT_EQ(NextThreadSlot(), slot);
    EXPECT_LT(usedAfter, used + 1000) << "less than a byte each time";
}
