#include "utilities/ui/WindowGeometry.h"

#include "tests/support/ImportPatch.h"
#include "tests/support/TestWindow.h"
#include "tests/support/Watchdog.h"

#include <gtest/gtest.h>

namespace {

BOOL WINAPI ReadNoCursor(POINT*) {
    return FALSE;
}

TEST(WindowAtPoint, HasTheMouseUpToItsRightAndBottomEdges) {
    const TestWindow window(L"BUTTON", WS_POPUP | WS_VISIBLE, {100, 50, 140, 80});
    const struct {
        int x, y;
        bool inside;
    } rows[] = {{100, 50, true},  {139, 79, true}, {140, 60, false},
                {120, 80, false}, {99, 60, false}, {120, 49, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.x << ", " << row.y);
        SetCursorPos(row.x, row.y);
        EXPECT_EQ(WindowContainsPoint(window, row.x, row.y), row.inside);
        EXPECT_EQ(IsCursorOverWindow(window), row.inside);
        EXPECT_EQ(GetCursorWindow() == window, row.inside);
    }
    EXPECT_FALSE(WindowContainsPoint(nullptr, 120, 60));
    SetCursorPos(120, 60);
    const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "USER32.dll", "GetCursorPos",
                            reinterpret_cast<void*>(&ReadNoCursor));
    EXPECT_FALSE(IsCursorOverWindow(window));
    EXPECT_EQ(GetCursorWindow(), nullptr);
}

/// Owners in a circle, which Windows does not always refuse: any, 1, 2, 3, 2, 3 and so on.
int steps = 0;
HWND WINAPI NextInCircle(HWND window) {
    ++steps;
    const auto number = reinterpret_cast<INT_PTR>(window);
    return reinterpret_cast<HWND>(number == 1 || number == 2 ? number + 1 : number == 3 ? 2 : 1);
}

TEST(WindowAtPoint, IsBelowItsParentsAndOwners) {
    const TestWindow top(L"STATIC", WS_POPUP, {}), other(L"STATIC", WS_POPUP, {});
    const TestWindow owned(L"STATIC", WS_POPUP, {}, top);
    const TestWindow child(L"STATIC", WS_CHILD, {}, owned);
    EXPECT_TRUE(IsDescendant(owned, child) && IsDescendant(top, child) && IsDescendant(top, owned));
    EXPECT_FALSE(IsDescendant(child, owned) || IsDescendant(other, child) ||
                 IsDescendant(child, child) || IsDescendant(nullptr, child) ||
                 IsDescendant(top, nullptr));
    const Watchdog watchdog("owners in a circle");
    const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "USER32.dll", "GetParent",
                            reinterpret_cast<void*>(&NextInCircle));
    EXPECT_TRUE(IsDescendant(reinterpret_cast<HWND>(INT_PTR{3}), top));
    EXPECT_FALSE(IsDescendant(other, top));
    EXPECT_LT(steps, 20);
}

TEST(WindowAtPoint, IsPlacedAndHitInItsDialog) {
    const TestWindow dialog(L"#32770", WS_POPUP | WS_CAPTION | WS_THICKFRAME, {300, 200, 500, 400});
    const TestWindow control(L"BUTTON", WS_CHILD, {20, 30, 60, 50}, dialog, 5);
    EXPECT_EQ(GetWindowCoordsRelativeToParent(control), (RECT{20, 30, 60, 50}));
    EXPECT_EQ(GetWindowCoordsRelativeToParent(dialog), RECT{});
    // The frame's lower edge counts as the height of what is above the client area.
    const RECT frame = ScreenRect(dialog);
    const RECT place = ScreenRect(control);
    RECT client;
    GetClientRect(dialog, &client);
    const LONG x = place.left - frame.left;
    const LONG y = place.top - (frame.bottom - client.bottom);
    for (const POINT& point : {POINT{x, y}, {x + 39, y + 19}})
        EXPECT_TRUE(MouseOverDialogControl(dialog, 5, point)) << point.x - x;
    for (const POINT& point : {POINT{x - 1, y}, {x, y - 1}, {x + 40, y}, {x, y + 20}})
        EXPECT_FALSE(MouseOverDialogControl(dialog, 5, point)) << point.x - x;
    EXPECT_FALSE(MouseOverDialogControl(dialog, 6, {x, y}));
}

} // namespace
