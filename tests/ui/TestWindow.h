#ifndef VTRUTILS_TESTS_UI_TESTWINDOW_H
#define VTRUTILS_TESTS_UI_TESTWINDOW_H

#include <windows.h>

/// A window of one of the system's classes, not shown unless its style says so, and destroyed with
/// this.
class TestWindow {
public:
    TestWindow(const char* className, DWORD style, const RECT& place, HWND parent = nullptr,
               int id = 0)
        : window(CreateWindowExA(
              /*dwExStyle=*/0, className, "", style, place.left, place.top,
              place.right - place.left, place.bottom - place.top, parent,
              reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr)) {}
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow() { DestroyWindow(window); }

    operator HWND() const { return window; }

private:
    HWND window;
};

inline RECT RectOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

inline bool operator==(const RECT& left, const RECT& right) {
    return EqualRect(&left, &right) != FALSE;
}

#endif
