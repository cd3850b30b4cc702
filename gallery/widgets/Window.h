#ifndef VTRUTILS_GALLERY_WIDGETS_WINDOW_H
#define VTRUTILS_GALLERY_WIDGETS_WINDOW_H

#include <windows.h>

namespace gallery {

/// A window whose messages go to an object. The window ends with the object; the object outlives a
/// window that is destroyed before. One thread at a time.
class Window {
public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window();

    /// Null before `CreateAs` and after the window was destroyed.
    HWND Handle() const { return window; }

protected:
    /// Registers the class when it is new, and makes the window. False, with `GetLastError`, when
    /// that fails. Requires: no window yet.
    bool CreateAs(const wchar_t* className, const wchar_t* title, DWORD extendedStyle, DWORD style,
                  SIZE size, HWND parent);

    /// WM_SIZE.
    virtual void Sized() {}

    /// WM_COMMAND of a control or an accelerator.
    virtual void Command(int, int /*notification*/) {}

    /// WM_NOTIFY of a control.
    virtual LRESULT Notify(const NMHDR&) { return 0; }

    /// Called for every message but the few that precede WM_NCCREATE; hands those above on.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

private:
    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;

    HWND window = nullptr;
};

} // namespace gallery

#endif
