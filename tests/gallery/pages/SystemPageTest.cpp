#include "tests/gallery/GalleryProcess.h"

namespace {

TEST(SystemPage, MeasuresByKeyboardOrSaysThatTheSystemCountsNothing) {
    // Without counters the library takes what is not there for 0, and the machine for busy.
    BYTE block[4096] = {};
    DWORD length = sizeof block;
    const bool counted = RegQueryValueExA(HKEY_PERFORMANCE_DATA, "238", nullptr, nullptr, block,
                                          &length) == ERROR_MORE_DATA ||
                         block[28] != 0;
    GalleryProcess gallery(ID_SYSTEM_PROCESS);
    const wchar_t* state = counted ? L"once a second" : L"no performance counters";
    gallery.WaitForText(ID_PAGE_STATE, state);
    gallery.Fill(Alt('R'), ID_SYSTEM_PROCESS, L"no such process.exe");
    gallery.Press(Alt('C'), ID_PAGE_MESSAGE, L"begins anew");
    gallery.PressForFocus(VK_TAB, ID_SYSTEM_SWITCH_ON);
}

} // namespace
