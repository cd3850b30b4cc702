#include "utilities/ui/WindowGeometry.h"

#include "common/Handles.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/OwnProcess.h"
#include "tests/ui/TestWindow.h"

#include <gtest/gtest.h>

namespace {

TEST(DialogControls, AreSwitchedByTheirIds) {
    const TestWindow dialog("#32770", WS_POPUP | WS_VISIBLE, {0, 0, 100, 100});
    const TestWindow first("BUTTON", WS_CHILD | WS_VISIBLE, {}, dialog, 1);
    const TestWindow second("BUTTON", WS_CHILD | WS_VISIBLE, {}, dialog, 2);
    int ids[] = {1, 77, 2};
    for (const BOOL on : {FALSE, TRUE, 5}) {
        EnableZeControls(dialog, ids, 3, on);
        ShowZeControls(dialog, ids, 3, on);
        for (const HWND control : {HWND{first}, HWND{second}}) {
            EXPECT_EQ(IsWindowEnabled(control) != FALSE, on != FALSE);
            EXPECT_EQ(IsWindowVisible(control) != FALSE, on != FALSE);
        }
    }
    EnableZeControls(dialog, ids, 2, FALSE);
    EnableZeControls(dialog, nullptr, 3, FALSE);
    EXPECT_TRUE(!IsWindowEnabled(first) && IsWindowEnabled(second));
}

FARPROC WINAPI FindNoFunction(HMODULE, const char*) {
    return nullptr;
}

TEST(DialogControls, AreTransparentInWindowsWithLayers) {
    const TestWindow window("STATIC", WS_POPUP | WS_VISIBLE, {0, 0, 100, 100});
    const auto isLayered = [&] {
        return (GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_LAYERED) != 0;
    };
    if (InOwnProcess()) {
        const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "GetProcAddress",
                                reinterpret_cast<void*>(&FindNoFunction));
        SetWindowTransparency(window, 3);
        EXPECT_FALSE(isLayered());
        return;
    }
    for (const BYTE expected : {BYTE{0}, BYTE{128}, BYTE{255}}) {
        SetWindowTransparency(window, expected);
        COLORREF key = 0;
        BYTE alpha = 1;
        DWORD flags = 0;
        EXPECT_TRUE(isLayered() && GetLayeredWindowAttributes(window, &key, &alpha, &flags));
        EXPECT_EQ(alpha, expected);
        EXPECT_EQ(flags, DWORD{LWA_ALPHA});
    }
    SetWindowTransparency(nullptr, 3);
}

LONG WidthOf(HWND listBox, HGDIOBJ font, const std::string& text) {
    const vtr::WindowDc dc(GetDC(listBox));
    const vtr::SelectedObject selected(dc.Get(), font);
    SIZE size{};
    GetTextExtentPoint32A(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size);
    return size.cx;
}

TEST(DialogControls, ScrollAListBoxToTheEndOfItsWidestItem) {
    const TestWindow window("STATIC", WS_POPUP, {0, 0, 300, 300});
    const TestWindow list("LISTBOX", WS_CHILD | WS_HSCROLL | LBS_NOINTEGRALHEIGHT, {0, 0, 100, 200},
                          window);
    const vtr::FontHandle font(CreateFontA(-29, 0, 0, 0, FW_BOLD, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"));
    HGDIOBJ used = GetStockObject(SYSTEM_FONT);
    const auto extentWith = [&](const std::string& item) {
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
        SetListBoxHorzScroll(list);
        return SendMessageA(list, LB_GETHORIZONTALEXTENT, 0, 0);
    };
    const auto expected = [&](const std::string& item) {
        return WidthOf(list, used, item) + 4 * GetSystemMetrics(SM_CXEDGE);
    };
    const LRESULT start = SendMessageA(list, LB_GETHORIZONTALEXTENT, 0, 0);
    EXPECT_EQ(extentWith("i"), start) << "it fits";
    EXPECT_EQ(extentWith(std::string(1024, 'W')), start) << "too long to count";
    const std::string wide(30, 'W'), wider(31, 'W'), widest(1023, 'W');
    EXPECT_EQ(extentWith(wide), expected(wide));
    EXPECT_EQ(extentWith("short"), expected(wide));
    EXPECT_EQ(extentWith(wider), expected(wider));
    SendMessageA(list, LB_RESETCONTENT, 0, 0);
    EXPECT_EQ(extentWith(wide), expected(wider)) << "it never shrinks";
    SendMessageA(list, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
    used = font.Get();
    EXPECT_EQ(extentWith(wide), expected(wide)) << "in its font";
    EXPECT_EQ(extentWith(widest), expected(widest));
    SetListBoxHorzScroll(nullptr);
}

} // namespace
