#ifndef VTRUTILS_UI_MYTOOLTIP_H
#define VTRUTILS_UI_MYTOOLTIP_H

#include "utilities/Export.h"

#include <windows.h>

/// A tooltip for the parts of one window, which the host tells apart: after the mouse has rested
/// for a while, the host is asked for the text at that point. The tip is shown below the cursor, on
/// the same monitor, for a limited time; a click or a move hides it.
///
/// The host passes on the mouse messages of the watched window with `ForwardMouseMessage`, and any
/// others in watch-all mode. Tips of several threads do not meet.
/// Thread-safety: one thread at a time: that of the watched window.
class VTRUTILS_API CMyToolTip {
public:
    CMyToolTip() noexcept;
    CMyToolTip(const CMyToolTip&) = delete;
    CMyToolTip& operator=(const CMyToolTip&) = delete;
    ~CMyToolTip();

    /// `getTip` is called with the context, a point in client coordinates of the watched window and
    /// room for 2048 bytes; it returns non-zero when there is a tip and writes its text. Non-zero
    /// with an empty text counts as no tip. It must not destroy this object.
    ///
    /// The window class belongs to the instance. Called again, it begins anew. Returns 1, or 0 when
    /// the tip's window cannot be made.
    int Init(HINSTANCE instance, HWND watched, int (*getTip)(void*, POINT, char*), void* context,
             DWORD delayMs, DWORD displayMs) noexcept;

    /// Does nothing before `Init`. With a delay of 0 or 1 ms a tip stays while the mouse moves.
    void ForwardMouseMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    /// Asks for the text at the cursor and shows it, as after the delay.
    void ShowToolTip() noexcept;
    void HideToolTip() noexcept;
    bool ShowingTipNow() noexcept;

    /// On, as at the start: any forwarded message may tell of a move, and no tip is shown while the
    /// foreground window is neither the watched one nor one of its parents.
    void SetWatchAllMouseMovementsMode(bool on) noexcept;

    /// How long the mouse rests before the tip is shown, from the next rest on.
    void UpdateTipDelayTime(DWORD delayMs) noexcept;

private:
    friend struct vtr::Internals<CMyToolTip>;

    char text[2048];
    HWND tip; ///< null or gone: none
    int (*getText)(void*, POINT, char*);
    void* context;
    int lastX; ///< in client coordinates of the watched window
    int lastY;
    UINT_PTR showTimer; ///< 0: not running
    DWORD delay;
    UINT_PTR hideTimer; ///< 0: not running
    DWORD displayTime;
    WNDPROC savedProcedure; ///< of the watched window; null unless a host put one there
    HFONT font;
    HBRUSH background;
    HWND watched;
    bool watchAll;

    bool hasLastPoint;
    HINSTANCE instance; ///< of the window class
};

#endif
