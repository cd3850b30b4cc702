#include "utilities/ui/WindowGeometry.h"

#include "common/DynamicFunction.h"

#include <algorithm>

namespace {

vtr::DynamicFunction<decltype(MonitorFromPoint)> monitorFromPoint("User32", "MonitorFromPoint");
vtr::DynamicFunction<decltype(MonitorFromWindow)> monitorFromWindow("User32", "MonitorFromWindow");
vtr::DynamicFunction<decltype(GetMonitorInfoA)> getMonitorInfo("User32", "GetMonitorInfoA");

/// False where Windows cannot tell.
bool GetWorkArea(HMONITOR monitor, RECT& area) {
    MONITORINFO information{};
    information.cbSize = sizeof information;
    if (monitor == nullptr || getMonitorInfo.Get() == nullptr ||
        !getMonitorInfo.Get()(monitor, &information))
        return false;
    area = information.rcWork;
    return true;
}

/// All 0 for what is not a window.
RECT RectOf(HWND window) {
    RECT rect;
    return GetWindowRect(window, &rect) ? rect : RECT{};
}

POINT TopLeft(const RECT& rect) {
    return {rect.left, rect.top};
}

/// One coordinate of what is centred between `from` and `to`, and kept on the monitor.
LONG Centred(LONG size, LONG from, LONG to, LONG monitorFrom, LONG monitorTo) {
    const LONG start = from + (to - from - size) / 2;
    if (start < monitorFrom)
        return monitorFrom;
    return start + size > monitorTo ? monitorTo - size : start;
}

/// A side of any rectangle is a difference that may need more than 32 bits.
LONG Least(long long left, long long right) {
    return static_cast<LONG>(std::min(left, right));
}

} // namespace

RECT GetMonitorRectFromPt(POINT point) {
    RECT area{};
    auto* find = monitorFromPoint.Get();
    if (find == nullptr || !GetWorkArea(find(point, MONITOR_DEFAULTTONEAREST), area))
        return RectOf(GetDesktopWindow());
    return area;
}

RECT GetMonitorRectFromWindow(HWND window) {
    RECT area{};
    if (!IsWindow(window))
        return area;
    auto* find = monitorFromWindow.Get();
    if (find != nullptr && GetWorkArea(find(window, MONITOR_DEFAULTTONEAREST), area))
        return area;
    RECT rect;
    return GetWindowRect(window, &rect) ? GetMonitorRectFromPt(TopLeft(rect)) : area;
}

BOOL IsRectOnTheScreen(RECT* rect) {
    if (rect == nullptr)
        return FALSE;
    const RECT area = GetMonitorRectFromPt(TopLeft(*rect));
    const auto [left, right] = std::minmax(rect->left, rect->right);
    const auto [top, bottom] = std::minmax(rect->top, rect->bottom);
    return left >= area.left && right <= area.right && top >= area.top && bottom <= area.bottom;
}

bool WindowVisibleOnDesktop(HWND window) {
    RECT rect;
    if (!GetWindowRect(window, &rect))
        return false;
    const RECT area = GetMonitorRectFromPt(TopLeft(rect));
    RECT common;
    return IntersectRect(&common, &rect, &area) != FALSE;
}

POINT GetCenteredCoordinates(HWND window, HWND reference, bool horizontally, bool vertically,
                             bool /*redraw*/, bool onMonitor) {
    if (reference == nullptr)
        reference = GetParent(window);
    const RECT own = RectOf(window);
    RECT target = reference != nullptr ? RectOf(reference) : RECT{};
    const RECT monitor = GetMonitorRectFromPt({target.left + (target.right - target.left) / 2,
                                               target.top + (target.bottom - target.top) / 2});
    if (reference == nullptr || onMonitor)
        target = monitor;
    POINT place = TopLeft(own);
    if (!(horizontally && vertically))
        ScreenToClient(reference != nullptr ? reference : GetDesktopWindow(), &place);
    if (horizontally)
        place.x =
            Centred(own.right - own.left, target.left, target.right, monitor.left, monitor.right);
    if (vertically)
        place.y =
            Centred(own.bottom - own.top, target.top, target.bottom, monitor.top, monitor.bottom);
    return place;
}

void CenterWindow(HWND window, HWND reference, bool horizontally, bool vertically, bool redraw,
                  bool onMonitor) {
    const POINT place =
        GetCenteredCoordinates(window, reference, horizontally, vertically, redraw, onMonitor);
    const UINT flags = SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;
    SetWindowPos(window, /*hWndInsertAfter=*/nullptr, place.x, place.y, /*cx=*/0, /*cy=*/0,
                 redraw ? flags : flags | SWP_NOREDRAW);
}

void AdjustRectToFitOnScreen(RECT& rect, int xMargin, int yMargin) {
    const RECT monitor = GetMonitorRectFromPt({rect.left, rect.right});
    const long long width = static_cast<long long>(rect.right) - rect.left;
    const long long height = static_cast<long long>(rect.bottom) - rect.top;
    const long long left = static_cast<long long>(monitor.left) + xMargin;
    const long long top = static_cast<long long>(monitor.top) + yMargin;
    const long long bottom = static_cast<long long>(monitor.bottom) - yMargin;
    if (rect.left < left) {
        rect.left = static_cast<LONG>(left);
        rect.right = Least(rect.right, left + width);
    }
    if (rect.top < top) {
        rect.top = static_cast<LONG>(top);
        rect.bottom = Least(bottom, top + height);
    }
    if (rect.bottom > bottom) {
        const long long moved = std::max(bottom - height, top);
        rect.top = static_cast<LONG>(moved);
        rect.bottom = Least(bottom, moved + height);
    }
}
