#include "utilities/ui/WindowGeometry.h"

#include "tests/support/ImportPatch.h"
#include "tests/support/Watchdog.h"
#include "tests/ui/TestWindow.h"

#include <gtest/gtest.h>

namespace {

BOOL WINAPI ReadNoCursor(POINT*) {
    return FALSE;
}

TEST(WindowAtPoint, HasTheMouseUpToItsRightAndBottomEdges) {
    const TestWindow window("BUTTON", WS_POPUP | WS_VISIBLE, {100, 50, 140, 80});
    const struct {
        int x, y;
        bool inside;
    } rows[] = {{100, 50, true},  {139, 79, true}, {140, 60, false},
                {120, 80, false}, {99, 60, false}, {120, 49, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(WindowContainsPoint(window, row.x, row.y), row.inside) << row.x << "," << row.y;
        EXPECT_FALSE(WindowContainsPoint(nullptr, row.x, row.y));
        SetCursorPos(row.x, row.y);
        EXPECT_EQ(IsCursorOverWindow(window), row.inside) << row.x << "," << row.y;
    }
    SetCursorPos(120, 60);
    EXPECT_EQ(GetCursorWindow(), static_cast<HWND>(window));
    const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "USER32.dll", "GetCursorPos",
                            reinterpret_cast<void*>(&ReadNoCursor));
    EXPECT_FALSE(IsCursorOverWindow(window));
    EXPECT_EQ(GetCursorWindow(), nullptr);
}

HWND circle[4];

/// Owners in a circle, which Windows does not always refuse: 0 is below 1, that below 2, and so on.
HWND WINAPI NextInCircle(HWND window) {
    for (int i = 0; i < 3; ++i) {
        if (window == circle[i])
            return circle[i + 1];
    }
    return circle[1];
}

TEST(WindowAtPoint, IsBelowItsParentsAndOwners) {
    const TestWindow top("STATIC", WS_POPUP, {}), other("STATIC", WS_POPUP, {});
    const TestWindow owned("STATIC", WS_POPUP, {}, top);
    const TestWindow child("STATIC", WS_CHILD, {}, owned);
    EXPECT_TRUE(IsDescendant(owned, child) && IsDescendant(top, child) && IsDescendant(top, owned));
    EXPECT_FALSE(IsDescendant(child, owned) || IsDescendant(other, child) ||
                 IsDescendant(child, child) || IsDescendant(nullptr, child) ||
                 IsDescendant(top, nullptr));
    const Watchdog watchdog("owners in a circle");
    const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "USER32.dll", "GetParent",
                            reinterpret_cast<void*>(&NextInCircle));
    for (int i = 0; i < 4; ++i)
        circle[i] = reinterpret_cast<HWND>(static_cast<INT_PTR>(i + 1));
    EXPECT_TRUE(IsDescendant(circle[3], circle[0]) && IsDescendant(circle[1], circle[1]));
    EXPECT_FALSE(IsDescendant(circle[0], circle[1]) || IsDescendant(top, circle[0]));
    circle[2] = circle[1];
    EXPECT_FALSE(IsDescendant(top, circle[0])) << "its own parent";
}

TEST(WindowAtPoint, IsPlacedAndHitInItsDialog) {
    const TestWindow dialog("#32770", WS_POPUP | WS_CAPTION | WS_THICKFRAME, {300, 200, 500, 400});
    const TestWindow control("BUTTON", WS_CHILD, {20, 30, 60, 50}, dialog, 5);
    const RECT frame = RectOf(dialog);
    const RECT c = RectOf(control);
    RECT client;
    GetClientRect(dialog, &client);
    EXPECT_TRUE(GetWindowCoordsRelativeToParent(control) == (RECT{20, 30, 60, 50}));
    EXPECT_TRUE(GetWindowCoordsRelativeToParent(dialog) == RECT{});
    EXPECT_TRUE(GetWindowCoordsRelativeToParent(nullptr) == RECT{});
    const LONG x = c.left - frame.left;
    const LONG y = c.top - (frame.bottom - client.bottom);
    EXPECT_TRUE(MouseOverDialogControl(dialog, 5, {x, y}));
    EXPECT_TRUE(MouseOverDialogControl(dialog, 5, {x + 39, y + 19}));
    for (const POINT& point : {POINT{x - 1, y}, {x, y - 1}, {x + 40, y}, {x, y + 20}})
        EXPECT_FALSE(MouseOverDialogControl(dialog, 5, point)) << point.x << "," << point.y;
    EXPECT_FALSE(MouseOverDialogControl(dialog, 6, {x, y}));
    EXPECT_FALSE(MouseOverDialogControl(nullptr, 5, {x, y}));
}

} // namespace
