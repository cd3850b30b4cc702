#ifndef VTRUTILS_TESTS_SUPPORT_TESTWINDOW_H
#define VTRUTILS_TESTS_SUPPORT_TESTWINDOW_H

#include <functional>
#include <ostream>
#include <string>
#include <vector>
#include <windows.h>

/// A window of the test's own, destroyed with this.
class TestWindow {
public:
    /// Shown, on top of all others; `onMessage` sees its messages.
    explicit TestWindow(const RECT& place = {100, 80, 500, 380});
    /// Of one of the system's classes, not shown unless its style says so.
    TestWindow(const wchar_t* kind, DWORD style, const RECT& place, HWND parent = nullptr,
               int id = 0);
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow();

    operator HWND() const { return window; }

    /// Called for each message before the system's own procedure; true: it is done with.
    std::function<bool(UINT, WPARAM, LPARAM)> onMessage;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window;
};

/// The class of dialogs and message boxes.
constexpr wchar_t dialogClass[] = L"#32770";

/// The topmost window of this thread of that class, shown and enabled; null if there is none.
HWND OpenWindow(const wchar_t* kind = dialogClass);

/// Dispatches messages until the condition holds; throws when it does not within 30 s.
void PumpUntil(const char* what, const std::function<bool()>& condition);

/// Runs `show`, which shows a modal dialog and waits for its end. Takes a step each time that
/// another dialog is the topmost of this thread; fails if not all are taken. Within a step it may
/// be called again.
int WhileOpen(const std::function<int()>& show,
              const std::vector<std::function<void(HWND)>>& steps);

std::wstring TextOf(HWND window);
RECT ScreenRect(HWND window);

inline bool operator==(const RECT& left, const RECT& right) {
    return EqualRect(&left, &right) != FALSE;
}
inline void PrintTo(const RECT& rect, std::ostream* out) {
    *out << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom;
}

#endif
