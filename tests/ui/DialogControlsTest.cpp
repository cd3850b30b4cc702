#include "utilities/ui/WindowGeometry.h"

#include "common/Handles.h"
#include "tests/support/LookUps.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>

namespace {

TEST(DialogControls, AreSwitchedByTheirIds) {
    const TestWindow dialog(dialogClass, WS_POPUP | WS_VISIBLE, {0, 0, 100, 100});
    const TestWindow first(L"BUTTON", WS_CHILD | WS_VISIBLE, {}, dialog, 1);
    const TestWindow last(L"BUTTON", WS_CHILD | WS_VISIBLE, {}, dialog, 2);
    int ids[] = {1, 77, 2};
    for (const BOOL on : {FALSE, TRUE}) {
        EnableZeControls(dialog, ids, 2, on);
        ShowZeControls(dialog, ids, 2, on);
        EXPECT_TRUE(IsWindowEnabled(first) == on && IsWindowVisible(first) == on);
        EXPECT_TRUE(IsWindowEnabled(last) && IsWindowVisible(last)) << "beyond the count";
    }
    EnableZeControls(dialog, ids, 3, FALSE);
    ShowZeControls(dialog, ids, 3, FALSE);
    EXPECT_FALSE(IsWindowEnabled(last) || IsWindowVisible(last)) << "after one that is missing";
}

TEST(DialogControls, AreTransparentInWindowsWithLayers) {
    const TestWindow window(L"STATIC", WS_POPUP | WS_VISIBLE, {0, 0, 100, 100});
    BYTE alpha = 1;
    DWORD flags = 0;
    const auto isLayered = [&] {
        return GetLayeredWindowAttributes(window, nullptr, &alpha, &flags) != FALSE;
    };
    if (InOwnProcess()) {
        const LookUps none;
        SetWindowTransparency(window, 3);
        EXPECT_FALSE(isLayered());
        return;
    }
    for (const BYTE expected : {BYTE{0}, BYTE{128}, BYTE{255}}) {
        SetWindowTransparency(window, expected);
        EXPECT_TRUE(isLayered());
        EXPECT_EQ(alpha, expected);
        EXPECT_EQ(flags, DWORD{LWA_ALPHA});
    }
}

TEST(DialogControls, ScrollAListBoxToTheEndOfItsWidestItem) {
    const TestWindow list(L"LISTBOX", WS_POPUP | WS_HSCROLL | LBS_NOINTEGRALHEIGHT,
                          {0, 0, 100, 200});
    const vtr::FontHandle font(CreateFontA(-29, 0, 0, 0, FW_BOLD, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"));
    const auto expected = [&](const std::string& item, HGDIOBJ used) {
        const vtr::WindowDc dc(GetDC(list));
        const vtr::SelectedObject selected(dc.Get(), used);
        SIZE size{};
        GetTextExtentPoint32A(dc.Get(), item.c_str(), static_cast<int>(item.size()), &size);
        return size.cx + 4 * GetSystemMetrics(SM_CXEDGE);
    };
    const HGDIOBJ first = GetStockObject(SYSTEM_FONT);
    const std::string wide(30, 'W'), wider(31, 'W');
    const LRESULT start = SendMessageA(list, LB_GETHORIZONTALEXTENT, 0, 0);
    const auto extentWith = [&](const std::string& item) {
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
        SetListBoxHorzScroll(list);
        return SendMessageA(list, LB_GETHORIZONTALEXTENT, 0, 0);
    };
    EXPECT_EQ(extentWith("i"), start) << "it fits";
    EXPECT_EQ(extentWith(std::string(1024, 'W')), start) << "too long to count";
    EXPECT_EQ(extentWith(wide), expected(wide, first));
    EXPECT_EQ(extentWith(wider), expected(wider, first));
    SendMessageA(list, LB_RESETCONTENT, 0, 0);
    EXPECT_EQ(extentWith(wide), expected(wider, first)) << "it never shrinks";
    SendMessageA(list, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
    EXPECT_EQ(extentWith("short"), expected(wide, font.Get()));
}

} // namespace
