#include "utilities/ui/WindowGeometry.h"

#include "tests/support/LookUps.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

std::vector<UINT> allowed;
UINT refused;
DWORD minor;

BOOL WINAPI ChangeFilter(HWND, UINT message, DWORD action, void*) {
    EXPECT_EQ(action, DWORD{MSGFLT_ALLOW});
    allowed.push_back(message);
    return message != refused;
}

BOOL WINAPI TellVersion(OSVERSIONINFOA* record) {
    record->dwPlatformId = VER_PLATFORM_WIN32_NT;
    record->dwMajorVersion = 6;
    record->dwMinorVersion = minor;
    return TRUE;
}

TEST(FileDrop, IsLetThroughWhereWindowsFilters) {
    const TestWindow window(L"STATIC", WS_POPUP, {});
    const auto accepts = [&] {
        return (GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0;
    };
    const bool filters = InOwnProcess("a filter");
    if (filters || InOwnProcess("no filter")) {
        const LookUps functions({{filters ? "ChangeWindowMessageFilterEx" : "another",
                                  reinterpret_cast<void*>(&ChangeFilter)}});
        const ImportPatch version(GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "GetVersionExA",
                                  reinterpret_cast<void*>(&TellVersion));
        for (const UINT message : {0U, 0x49U, UINT{WM_DROPFILES}, UINT{WM_COPYDATA}}) {
            refused = message;
            minor = message == 0 ? 0 : 1;
            allowed.clear();
            EXPECT_EQ(EnableFileDropping(window), message == 0) << "Vista, then Windows 7";
            EXPECT_EQ(allowed, filters ? (std::vector<UINT>{WM_DROPFILES, WM_COPYDATA, 0x49})
                                       : std::vector<UINT>());
        }
        EXPECT_TRUE(accepts());
        return;
    }
    EXPECT_FALSE(accepts());
    EXPECT_TRUE(EnableFileDropping(window) && accepts());
}

} // namespace
