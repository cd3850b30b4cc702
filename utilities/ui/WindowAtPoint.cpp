#include "utilities/ui/WindowGeometry.h"

namespace {

/// Follows the parents, or owners, of a window. Owners can be set so that they lead in a circle.
class Ancestors {
public:
    explicit Ancestors(HWND window) : current(window) {}

    /// Null at the end, and when it has gone around a circle.
    HWND Next() {
        current = GetParent(current);
        if (current == passed)
            return nullptr;
        // A mark that is set ever more seldom: it is met once it stands in the circle.
        if (++steps == untilMark) {
            passed = current;
            untilMark *= 2;
            steps = 0;
        }
        return current;
    }

private:
    HWND current;
    HWND passed = nullptr;
    unsigned steps = 0;
    unsigned untilMark = 1;
};

} // namespace

bool WindowContainsPoint(HWND window, int x, int y) {
    RECT rect;
    return GetWindowRect(window, &rect) && PtInRect(&rect, {x, y});
}

bool IsCursorOverWindow(HWND window) {
    POINT cursor;
    return GetCursorPos(&cursor) && WindowContainsPoint(window, cursor.x, cursor.y);
}

HWND GetCursorWindow() {
    POINT cursor;
    return GetCursorPos(&cursor) ? WindowFromPoint(cursor) : nullptr;
}

bool IsDescendant(HWND ancestor, HWND window) {
    Ancestors ancestors(window);
    while (const HWND next = ancestors.Next()) {
        if (next == ancestor)
            return true;
    }
    return false;
}

RECT GetWindowCoordsRelativeToParent(HWND window) {
    const HWND parent = GetParent(window);
    RECT rect{};
    if (!IsWindow(parent) || !GetWindowRect(window, &rect))
        return {};
    POINT topLeft{rect.left, rect.top};
    POINT bottomRight{rect.right, rect.bottom};
    ScreenToClient(parent, &topLeft);
    ScreenToClient(parent, &bottomRight);
    return {topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
}

BOOL MouseOverDialogControl(HWND dialog, UINT id, POINT point) {
    RECT control;
    RECT frame;
    RECT client;
    if (!GetWindowRect(GetDlgItem(dialog, static_cast<int>(id)), &control) ||
        !GetWindowRect(dialog, &frame) || !GetClientRect(dialog, &client))
        return FALSE;
    OffsetRect(&control, -frame.left, -client.top - frame.bottom + client.bottom);
    return PtInRect(&control, point);
}
