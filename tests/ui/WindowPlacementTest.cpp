#include "utilities/ui/WindowGeometry.h"

#include "tests/support/ImportPatch.h"
#include "tests/support/OwnProcess.h"
#include "tests/ui/TestWindow.h"

#include <gtest/gtest.h>

namespace {

constexpr RECT primary{0, 0, 1280, 760}, left{-1024, -200, 0, 568}, none{};

const char* missing = "";
bool informs = true;

HMONITOR WINAPI FindMonitor(POINT point, DWORD flags) {
    EXPECT_EQ(flags, DWORD{MONITOR_DEFAULTTONEAREST});
    return reinterpret_cast<HMONITOR>(static_cast<INT_PTR>(point.x < 0 ? 2 : 1));
}

HMONITOR WINAPI FindMonitorOfWindow(HWND window, DWORD flags) {
    return FindMonitor({RectOf(window).right - 1, 0}, flags);
}

BOOL WINAPI TellMonitor(HMONITOR monitor, MONITORINFO* info) {
    EXPECT_EQ(info->cbSize, sizeof *info);
    info->rcWork = reinterpret_cast<INT_PTR>(monitor) == 2 ? left : primary;
    return informs;
}

FARPROC WINAPI FindFunction(HMODULE, const char* name) {
    const struct {
        const char* name;
        void* function;
    } rows[] = {{"MonitorFromPoint", reinterpret_cast<void*>(&FindMonitor)},
                {"MonitorFromWindow", reinterpret_cast<void*>(&FindMonitorOfWindow)},
                {"GetMonitorInfoA", reinterpret_cast<void*>(&TellMonitor)}};
    for (const auto& row : rows) {
        if (std::string(row.name) == name && std::string(missing) != name)
            return reinterpret_cast<FARPROC>(row.function);
    }
    return nullptr;
}

class FakeMonitors {
    ImportPatch patch{GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "GetProcAddress",
                      reinterpret_cast<void*>(&FindFunction)};
};

TEST(WindowPlacement, FitsRectanglesToTheMonitorTheyAreTakenFor) {
    if (!InOwnProcess())
        return;
    const FakeMonitors monitors;
    const struct {
        const char* name;
        RECT rect;
        int x, y;
        RECT expected;
        bool onScreen, stays;
    } rows[] = {
        {"inside", {10, 10, 50, 50}, 0, 0, {10, 10, 50, 50}, true, true},
        {"the whole area", primary, 0, 0, primary, true, true},
        {"on the left monitor", {-500, -100, -400, 0}, 5, 5, {-500, -100, -400, 0}, true, true},
        {"left of it", {-1100, 0, -1000, 50}, 5, 0, {-1019, 0, -1000, 50}, false, false},
        {"all left of it", {-2000, 0, -1900, 50}, 5, 0, {-1019, 0, -1900, 50}, false, false},
        {"over both", {-50, 10, 50, 50}, 0, 0, {-50, 10, 50, 50}, false, true},
        {"above", {10, -30, 50, 70}, 0, 8, {10, 8, 50, 108}, false, false},
        {"above, too high", {10, -30, 50, 800}, 0, 8, {10, 8, 50, 752}, false, false},
        {"below", {10, 700, 50, 800}, 0, 8, {10, 652, 50, 752}, false, false},
        {"below, too high", {10, 700, 50, 1500}, 0, 8, {10, 8, 50, 752}, false, false},
        {"right", {1200, 10, 1300, 50}, 9, 9, {1200, 10, 1300, 50}, false, true},
        {"anything",
         {LONG_MIN, LONG_MIN, LONG_MAX, LONG_MAX},
         0,
         0,
         {-1024, -200, LONG_MAX, 568},
         false,
         false},
        {"inside out", {50, 50, 10, 10}, 0, 0, {50, 50, 10, 10}, true, true},
    };
    for (const auto& row : rows) {
        RECT rect = row.rect;
        EXPECT_EQ(IsRectOnTheScreen(&rect) != FALSE, row.onScreen) << row.name;
        AdjustRectToFitOnScreen(rect, row.x, row.y);
        EXPECT_TRUE(rect == row.expected) << row.name << ": " << rect.left << ", " << rect.top
                                          << ", " << rect.right << ", " << rect.bottom;
        EXPECT_EQ(rect == row.rect, row.stays) << row.name;
    }
    EXPECT_FALSE(IsRectOnTheScreen(nullptr));

    const TestWindow window("STATIC", WS_POPUP, {-300, 100, -100, 200});
    const TestWindow reference("STATIC", WS_POPUP, {-1000, 0, -900, 40});
    EXPECT_TRUE(GetMonitorRectFromWindow(window) == left);
    EXPECT_TRUE(WindowVisibleOnDesktop(window));
    const auto centre = [&](HWND on, bool onMonitor) {
        CenterWindow(window, on, true, true, true, onMonitor);
        return RectOf(window);
    };
    EXPECT_TRUE(centre(reference, false) == (RECT{-1024, -30, -824, 70})) << "kept on the monitor";
    EXPECT_TRUE(centre(reference, true) == (RECT{-612, 134, -412, 234}));
    EXPECT_TRUE(centre(nullptr, false) == (RECT{540, 330, 740, 430})) << "on the first monitor";
}

TEST(WindowPlacement, KnowsTheDesktopWhereWindowsHasNoMonitors) {
    for (const char* name : {"MonitorFromPoint", "MonitorFromWindow", "GetMonitorInfoA", "fails"}) {
        if (!InOwnProcess(name))
            continue;
        missing = name;
        informs = std::string(name) != "fails";
        const FakeMonitors monitors;
        const bool noPoints = std::string(name) != "MonitorFromWindow";
        const RECT desktop = RectOf(GetDesktopWindow());
        EXPECT_TRUE(GetMonitorRectFromPt({-5, 5}) == (noPoints ? desktop : left));
        const TestWindow window("STATIC", WS_POPUP, {-50, 0, 50, 50});
        const RECT ofWindow = name == std::string("MonitorFromPoint") ? primary
                              : noPoints                              ? desktop
                                                                      : left;
        EXPECT_TRUE(GetMonitorRectFromWindow(window) == ofWindow) << name;
        EXPECT_TRUE(GetMonitorRectFromWindow(nullptr) == none);
    }
}

TEST(WindowPlacement, CentresRealWindows) {
    const TestWindow alone("STATIC", WS_POPUP, {7, 9, 107, 59});
    CenterWindow(alone, nullptr, true, true, false, false);
    RECT area;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    EXPECT_TRUE(GetMonitorRectFromPt({1, 1}) == area);
    const POINT middle{area.left + (area.right - area.left - 100) / 2,
                       area.top + (area.bottom - area.top - 50) / 2};
    EXPECT_TRUE(RectOf(alone) == (RECT{middle.x, middle.y, middle.x + 100, middle.y + 50}));

    const TestWindow owner("STATIC", WS_POPUP, {200, 100, 400, 300});
    const TestWindow owned("STATIC", WS_POPUP, {210, 130, 250, 150}, owner);
    const struct {
        bool horizontally, vertically;
        LONG x, y;
    } rows[] = {{true, true, 280, 190},
                {true, false, 280, 30},
                {false, true, 10, 190},
                {false, false, 10, 30}};
    for (const auto& row : rows) {
        const POINT place =
            GetCenteredCoordinates(owned, nullptr, row.horizontally, row.vertically, true, false);
        EXPECT_EQ(place.x, row.x);
        EXPECT_EQ(place.y, row.y);
    }
    const POINT single = GetCenteredCoordinates(alone, nullptr, true, false, true, false);
    EXPECT_EQ(single.x, middle.x);
    EXPECT_EQ(single.y, middle.y) << "in the desktop's client area";
    const TestWindow outside("STATIC", WS_POPUP, {-500, -500, -400, -400});
    EXPECT_TRUE(WindowVisibleOnDesktop(alone));
    EXPECT_FALSE(WindowVisibleOnDesktop(outside));
    EXPECT_FALSE(WindowVisibleOnDesktop(nullptr));
}

} // namespace
