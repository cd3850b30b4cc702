#include "utilities/ui/WindowGeometry.h"

#include "tests/support/LookUps.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>

namespace {

constexpr RECT primary{0, 0, 1280, 760}, left{-1024, -200, 0, 568};

bool informs = true;

HMONITOR WINAPI FindMonitor(POINT point, DWORD flags) {
    EXPECT_EQ(flags, DWORD{MONITOR_DEFAULTTONEAREST});
    return reinterpret_cast<HMONITOR>(static_cast<INT_PTR>(point.x < 0 ? 2 : 1));
}

HMONITOR WINAPI FindMonitorOfWindow(HWND window, DWORD flags) {
    return FindMonitor({ScreenRect(window).right - 1, 0}, flags);
}

BOOL WINAPI TellMonitor(HMONITOR monitor, MONITORINFO* info) {
    info->rcWork = reinterpret_cast<INT_PTR>(monitor) == 2 ? left : primary;
    return informs;
}

/// Two monitors, and functions for them, except for one that Windows lacks.
std::map<std::string, void*> MonitorsWithout(const std::string& missing) {
    std::map<std::string, void*> functions{
        {"MonitorFromPoint", reinterpret_cast<void*>(&FindMonitor)},
        {"MonitorFromWindow", reinterpret_cast<void*>(&FindMonitorOfWindow)},
        {"GetMonitorInfoA", reinterpret_cast<void*>(&TellMonitor)}};
    functions.erase(missing);
    return functions;
}

TEST(WindowPlacement, FitsRectanglesToTheMonitorTheyAreTakenFor) {
    if (!InOwnProcess())
        return;
    const LookUps monitors(MonitorsWithout("nothing"));
    const struct {
        const char* name;
        RECT rect;
        int x, y;
        RECT expected;
        bool onScreen;
    } rows[] = {
        {"the whole area", primary, 0, 0, primary, true},
        {"on the left monitor", {-500, -100, -400, 0}, 5, 5, {-500, -100, -400, 0}, true},
        {"left of it", {-2000, 0, -1900, 50}, 5, 0, {-1019, 0, -1900, 50}, false},
        {"over both", {-50, 10, 50, 50}, 0, 0, {-50, 10, 50, 50}, false},
        {"above", {10, -30, 50, 70}, 0, 8, {10, 8, 50, 108}, false},
        {"above, too high", {10, -30, 50, 800}, 0, 8, {10, 8, 50, 752}, false},
        {"below", {10, 700, 50, 800}, 0, 8, {10, 652, 50, 752}, false},
        {"below, too high", {10, 700, 50, 1500}, 0, 8, {10, 8, 50, 752}, false},
        {"right", {1200, 10, 1300, 50}, 9, 9, {1200, 10, 1300, 50}, false},
        {"anything",
         {LONG_MIN, LONG_MIN, LONG_MAX, LONG_MAX},
         0,
         0,
         {-1024, -200, LONG_MAX, 568},
         false},
        {"inside out", {50, 50, 10, 10}, 0, 0, {50, 50, 10, 10}, true},
    };
    for (const auto& row : rows) {
        RECT rect = row.rect;
        EXPECT_EQ(IsRectOnTheScreen(&rect) != FALSE, row.onScreen) << row.name;
        AdjustRectToFitOnScreen(rect, row.x, row.y);
        EXPECT_EQ(rect, row.expected) << row.name;
    }

    const TestWindow window(L"STATIC", WS_POPUP, {-300, 100, -100, 200});
    const TestWindow reference(L"STATIC", WS_POPUP, {-1000, 0, -900, 40});
    const auto centre = [&](HWND on, bool onMonitor) {
        CenterWindow(window, on, true, true, true, onMonitor);
        return ScreenRect(window);
    };
    EXPECT_EQ(centre(reference, false), (RECT{-1024, -30, -824, 70})) << "kept on the monitor";
    EXPECT_EQ(centre(reference, true), (RECT{-612, 134, -412, 234}));
    EXPECT_EQ(centre(nullptr, false), (RECT{540, 330, 740, 430})) << "on the first monitor";
    MoveWindow(reference, 1250, 750, 20, 20, FALSE);
    EXPECT_EQ(centre(reference, false), (RECT{1080, 660, 1280, 760})) << "kept on that, too";
}

TEST(WindowPlacement, KnowsTheDesktopWhereWindowsHasNoMonitors) {
    const RECT desktop = ScreenRect(GetDesktopWindow());
    const struct {
        const char* missing;
        RECT ofPoint, ofWindow;
    } rows[] = {{"MonitorFromPoint", desktop, primary},
                {"MonitorFromWindow", left, left},
                {"GetMonitorInfoA", desktop, desktop},
                {"information", desktop, desktop}};
    for (const auto& row : rows) {
        if (!InOwnProcess(row.missing))
            continue;
        informs = std::string(row.missing) != "information";
        const LookUps monitors(MonitorsWithout(row.missing));
        EXPECT_EQ(GetMonitorRectFromPt({-5, 5}), row.ofPoint) << row.missing;
        const TestWindow window(L"STATIC", WS_POPUP, {-50, 0, 50, 50});
        EXPECT_EQ(GetMonitorRectFromWindow(window), row.ofWindow) << row.missing;
        EXPECT_EQ(GetMonitorRectFromWindow(nullptr), RECT{});
    }
}

TEST(WindowPlacement, CentresRealWindows) {
    const TestWindow alone(L"STATIC", WS_POPUP, {7, 9, 107, 59});
    CenterWindow(alone, nullptr, true, true, false, false);
    RECT area;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    const POINT middle{area.left + (area.right - area.left - 100) / 2,
                       area.top + (area.bottom - area.top - 50) / 2};
    EXPECT_EQ(ScreenRect(alone), (RECT{middle.x, middle.y, middle.x + 100, middle.y + 50}));
    EXPECT_TRUE(WindowVisibleOnDesktop(alone));

    const TestWindow owner(L"STATIC", WS_POPUP, {200, 100, 400, 300});
    const TestWindow owned(L"STATIC", WS_POPUP, {210, 130, 250, 150}, owner);
    for (const bool across : {true, false}) {
        const POINT place = GetCenteredCoordinates(owned, nullptr, across, !across, true, false);
        EXPECT_EQ(place.x, across ? 280 : 10) << "in its owner, or in its client area";
        EXPECT_EQ(place.y, across ? 30 : 190);
    }
    const TestWindow outside(L"STATIC", WS_POPUP, {-500, -500, -400, -400});
    EXPECT_FALSE(WindowVisibleOnDesktop(outside));
}

} // namespace
