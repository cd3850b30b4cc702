#ifndef VTRUTILS_GALLERY_WIDGETS_LINK_H
#define VTRUTILS_GALLERY_WIDGETS_LINK_H

#include "utilities/ui/LinkControl.h"

#include <string>

namespace gallery {

/// A text in a window that looks like a link. The mouse goes to the window, which asks `IsUnder`;
/// it answers WM_GETFONT with the font of the text. One thread at a time.
class Link {
public:
    /// False, with `GetLastError`, when the control cannot be made.
    bool Create(HWND parent, int id);
    HWND Handle() const { return label; }

    /// Shows nothing for "", for a text that is too long for a link, and for one with a character
    /// that the language's code page lacks.
    void Set(const std::wstring& text);
    /// Takes font and colour anew.
    void Update();

    /// Whether the point of the parent's client area is over the text.
    bool IsUnder(POINT point) const;

private:
    HWND label = nullptr;
    CLinkControl link;
};

} // namespace gallery

#endif
