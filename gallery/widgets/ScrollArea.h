#ifndef VTRUTILS_GALLERY_WIDGETS_SCROLLAREA_H
#define VTRUTILS_GALLERY_WIDGETS_SCROLLAREA_H

#include "gallery/widgets/Window.h"

namespace gallery {

/// Shows one of its children, which fills it, or has its least size and is scrolled where there is
/// less room: some systems let a user make a window as small as it pleases. One thread at a time.
class ScrollArea : public Window {
public:
    /// False, with `GetLastError`, when the window cannot be made.
    bool Create(HWND parent, const wchar_t* className);

    /// Null for none.
    void Place(HWND newChild, SIZE newLeast);

    /// Scrolls until the control, a descendant of the child, is in sight. Does nothing for others.
    void Reveal(HWND control);

protected:
    void Sized() override { Arrange(); }
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Arrange();
    void ScrollTo(POINT place);
    void Scroll(int bar, int request);

    HWND child = nullptr;
    SIZE least{};
    SIZE view{};    ///< what is seen of the child
    POINT origin{}; ///< of the view, in the child
    bool arranging = false;
};

} // namespace gallery

#endif
