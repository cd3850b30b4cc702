#include "utilities/ui/WindowGeometry.h"

#include "tests/support/ImportPatch.h"
#include "tests/support/OwnProcess.h"
#include "tests/ui/TestWindow.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

std::vector<UINT> allowed;
UINT refused;
DWORD minor;

BOOL WINAPI ChangeFilter(HWND, UINT message, DWORD action, void* result) {
    EXPECT_EQ(action, DWORD{MSGFLT_ALLOW});
    EXPECT_EQ(result, nullptr);
    allowed.push_back(message);
    return message != refused;
}

FARPROC WINAPI FindFilter(HMODULE, const char* name) {
    EXPECT_STREQ(name, "ChangeWindowMessageFilterEx");
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&ChangeFilter));
}

FARPROC WINAPI FindNoFunction(HMODULE, const char*) {
    return nullptr;
}

BOOL WINAPI TellVersion(OSVERSIONINFOA* record) {
    record->dwPlatformId = VER_PLATFORM_WIN32_NT;
    record->dwMajorVersion = 6;
    record->dwMinorVersion = minor;
    return TRUE;
}

bool Accepts(HWND window) {
    return (GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0;
}

TEST(FileDrop, IsLetThroughWhereWindowsFilters) {
    const HMODULE library = GetModuleHandleA("vtrutils.dll");
    const TestWindow window("STATIC", WS_POPUP, {});
    const bool filters = InOwnProcess("a filter");
    if (filters || InOwnProcess("no filter")) {
        const ImportPatch patch(library, "KERNEL32.dll", "GetProcAddress",
                                reinterpret_cast<void*>(filters ? &FindFilter : &FindNoFunction));
        const ImportPatch version(library, "KERNEL32.dll", "GetVersionExA",
                                  reinterpret_cast<void*>(&TellVersion));
        for (const UINT message : {0U, 0x49U, UINT{WM_DROPFILES}, UINT{WM_COPYDATA}}) {
            refused = message;
            minor = message == 0 ? 0 : 1;
            allowed.clear();
            EXPECT_EQ(EnableFileDropping(window), message == 0) << "Vista, then Windows 7";
            EXPECT_EQ(allowed, filters ? (std::vector<UINT>{WM_DROPFILES, WM_COPYDATA, 0x49})
                                       : std::vector<UINT>());
        }
        EXPECT_TRUE(Accepts(window));
        return;
    }
    EXPECT_FALSE(Accepts(window));
    EXPECT_TRUE(EnableFileDropping(window));
    EXPECT_TRUE(Accepts(window));
}

} // namespace
