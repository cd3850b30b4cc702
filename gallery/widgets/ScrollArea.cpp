#include "gallery/widgets/ScrollArea.h"

#include <algorithm>

namespace gallery {

namespace {

constexpr int lineStep = 24;

void SetBar(HWND window, int bar, int whole, int page, int place) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = whole - 1;
    info.nPage = static_cast<UINT>(page);
    info.nPos = place;
    SetScrollInfo(window, bar, &info, /*redraw=*/TRUE);
}

/// Moves a view so that it has a part from `begin` to `end`, its beginning above all.
int Shifted(long view, long length, long begin, long end) {
    return static_cast<int>(std::min(std::max(view, end - length), begin));
}

} // namespace

bool ScrollArea::Create(HWND parent, const wchar_t* className) {
    return CreateAs(className, L"", WS_EX_CONTROLPARENT, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                    SIZE{0, 0}, parent);
}

void ScrollArea::Place(HWND newChild, SIZE newLeast) {
    if (newChild != child)
        origin = {};
    child = newChild;
    least = newLeast;
    Arrange();
}

void ScrollArea::Arrange() {
    if (child == nullptr || arranging)
        return;
    arranging = true;
    RECT place{};
    GetWindowRect(Handle(), &place);
    const SIZE whole{place.right - place.left, place.bottom - place.top};
    const int barWidth = GetSystemMetrics(SM_CXVSCROLL);
    const int barHeight = GetSystemMetrics(SM_CYHSCROLL);
    bool vertical = least.cy > whole.cy;
    const bool horizontal = least.cx > whole.cx - (vertical ? barWidth : 0);
    vertical = least.cy > whole.cy - (horizontal ? barHeight : 0);
    view = {std::max(0L, whole.cx - (vertical ? barWidth : 0)),
            std::max(0L, whole.cy - (horizontal ? barHeight : 0))};
    ShowScrollBar(Handle(), SB_VERT, vertical);
    ShowScrollBar(Handle(), SB_HORZ, horizontal);
    arranging = false;
    ScrollTo(origin);
}

void ScrollArea::ScrollTo(POINT wanted) {
    const SIZE size{std::max(least.cx, view.cx), std::max(least.cy, view.cy)};
    origin = {std::clamp(wanted.x, 0L, size.cx - view.cx),
              std::clamp(wanted.y, 0L, size.cy - view.cy)};
    if (size.cx > view.cx)
        SetBar(Handle(), SB_HORZ, size.cx, view.cx, origin.x);
    if (size.cy > view.cy)
        SetBar(Handle(), SB_VERT, size.cy, view.cy, origin.y);
    SetWindowPos(child, /*hWndInsertAfter=*/nullptr, -origin.x, -origin.y, size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void ScrollArea::Reveal(HWND control) {
    if (child == nullptr || IsChild(child, control) == FALSE)
        return;
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(/*hWndFrom=*/nullptr, child, reinterpret_cast<POINT*>(&place), 2);
    const POINT wanted{Shifted(origin.x, view.cx, place.left, place.right),
                       Shifted(origin.y, view.cy, place.top, place.bottom)};
    if (wanted.x != origin.x || wanted.y != origin.y)
        ScrollTo(wanted);
}

void ScrollArea::Scroll(int bar, int request) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(Handle(), bar, &info);
    const int page = static_cast<int>(info.nPage);
    int place = info.nPos;
    switch (request) {
    case SB_LINEUP:
        place -= lineStep;
        break;
    case SB_LINEDOWN:
        place += lineStep;
        break;
    case SB_PAGEUP:
        place -= page;
        break;
    case SB_PAGEDOWN:
        place += page;
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        place = info.nTrackPos;
        break;
    default:
        return;
    }
    ScrollTo(bar == SB_HORZ ? POINT{place, origin.y} : POINT{origin.x, place});
}

LRESULT ScrollArea::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_HSCROLL:
        Scroll(SB_HORZ, LOWORD(wParam));
        return 0;
    case WM_VSCROLL:
        Scroll(SB_VERT, LOWORD(wParam));
        return 0;
    case WM_MOUSEWHEEL:
        ScrollTo(
            {origin.x, origin.y - static_cast<short>(HIWORD(wParam)) * lineStep * 3 / WHEEL_DELTA});
        return 0;
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}

} // namespace gallery
