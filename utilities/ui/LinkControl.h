#ifndef VTRUTILS_UI_LINKCONTROL_H
#define VTRUTILS_UI_LINKCONTROL_H

#include "utilities/Export.h"

#include <windows.h>

/// Makes a static control of a dialog look like a link: a coloured, underlined text. What a click
/// does is up to the host, which asks `MouseOver` and `GetLink`.
///
/// The control's user data is the object's while it is subclassed, and 0 after. The object may be
/// destroyed before the control, which then has its own window procedure back, or after it.
/// Thread-safety: one thread at a time: that of the control.
class VTRUTILS_API CLinkControl {
public:
    CLinkControl() noexcept;
    CLinkControl(const CLinkControl&) = delete;
    CLinkControl& operator=(const CLinkControl&) = delete;
    /// As `Restore`.
    ~CLinkControl();

    /// Cuts the text to 511 bytes and the link to 2047; null counts as "". A control that the
    /// object, or the control another object, had before is restored. Returns 1, and 0, with
    /// nothing subclassed, for what is not a window of the process.
    BOOL SubClass(HWND staticControl, char* text, char* link, COLORREF colour) noexcept;

    /// Puts the control's own window procedure back.
    void Restore() noexcept;

    /// Never null. The object keeps the text.
    char* GetLink() noexcept;

    /// Where the text is, in client coordinates of the control, 7 pixels higher than it; a centred
    /// text that is wider than the control starts left of it.
    RECT GetLastHitRect() const noexcept;

    /// Whether the point is over the text. It counts from the left of the dialog's window and the
    /// top of its client area.
    BOOL MouseOver(HWND dialog, POINT point) const noexcept;

private:
    friend struct vtr::Internals<CLinkControl>;

    char text[512];
    char link[2048];
    WNDPROC savedProcedure; ///< null: not subclassed
    HWND control;
    RECT hit;
    COLORREF colour;
};

#endif
