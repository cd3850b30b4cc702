#ifndef VTRUTILS_GALLERY_WIDGETS_TIPS_H
#define VTRUTILS_GALLERY_WIDGETS_TIPS_H

#include "utilities/ui/MyToolTip.h"

#include <utility>
#include <vector>

namespace gallery {

/// Tips for the controls of one window, which show while the mouse rests over a control. One thread
/// at a time.
class Tips {
public:
    /// The tip of a control is the text of this key, which is not copied, in the language that is
    /// chosen when it shows.
    void Add(HWND control, const char* key);

    /// To be called for each message of the thread, before it is dispatched.
    void Watch(HWND window, const MSG& message);

private:
    static int TextAt(void* self, POINT point, char* text);

    std::vector<std::pair<HWND, const char*>> controls;
    HWND watched = nullptr;
    CMyToolTip tip;
};

} // namespace gallery

#endif
