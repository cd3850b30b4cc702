#ifndef VTRUTILS_TESTS_SUPPORT_TESTWINDOW_H
#define VTRUTILS_TESTS_SUPPORT_TESTWINDOW_H

#include <functional>
#include <string>
#include <windows.h>

/// A window of the test's own, on top of all others, and what drives windows of this thread.
class TestWindow {
public:
    explicit TestWindow(const RECT& place = {100, 80, 500, 380});
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow();

    HWND Handle() const { return window; }

    /// A child, visible.
    HWND Add(const wchar_t* className, const wchar_t* text, DWORD style, const RECT& place) const;

    /// Called for each message before the system's own procedure; true: it is done with.
    std::function<bool(UINT, WPARAM, LPARAM)> onMessage;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window;
};

/// Dispatches messages until the condition holds; throws when it does not within 30 s.
void PumpUntil(const char* what, const std::function<bool()>& condition);

/// Runs `show`, which shows a modal dialog and waits for its end, and `drive` with the dialog once
/// it is there. The driver may close it or leave that to a later one: dialogs within dialogs nest.
int WhileOpen(const std::function<int()>& show, const std::function<void(HWND)>& drive);

std::wstring TextOf(HWND window);
RECT ScreenRect(HWND window);

#endif
