#include "utilities/ui/WindowGeometry.h"

#include "common/DynamicFunction.h"
#include "utilities/system/info/SystemInfo.h"

#include <shellapi.h>

namespace {

vtr::DynamicFunction<BOOL WINAPI(HWND, UINT, DWORD, void*)>
    changeFilter("User32.dll", "ChangeWindowMessageFilterEx");

constexpr DWORD allow = 1;
/// What the shell sends with dropped files, and no header names.
constexpr UINT copyGlobalData = 0x0049;
/// The first system that filters messages for single windows.
constexpr int windows7 = 10;

} // namespace

bool EnableFileDropping(HWND window) {
    auto* change = changeFilter.Get();
    bool allowed = change != nullptr || GetWindowsSystemVersion(nullptr) < windows7;
    if (change != nullptr) {
        for (const UINT message : {UINT{WM_DROPFILES}, UINT{WM_COPYDATA}, copyGlobalData}) {
            if (!change(window, message, allow, /*pChangeFilterStruct=*/nullptr))
                allowed = false;
        }
    }
    DragAcceptFiles(window, TRUE);
    return allowed;
}
