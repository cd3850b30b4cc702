#ifndef VTRUTILS_GALLERY_WIDGETS_BUFFEREDPAINT_H
#define VTRUTILS_GALLERY_WIDGETS_BUFFEREDPAINT_H

#include "common/Handles.h"

#include <optional>

namespace gallery {

/// Answers WM_PAINT without flicker: what is painted goes to the window at once, at the end of the
/// scope. One thread at a time.
class BufferedPaint {
public:
    explicit BufferedPaint(HWND toPaint);
    BufferedPaint(const BufferedPaint&) = delete;
    BufferedPaint& operator=(const BufferedPaint&) = delete;
    ~BufferedPaint();

    /// Where to paint: the window itself when there is no memory for a picture of it.
    HDC Dc() const { return buffer ? buffer.Get() : paint.hdc; }
    /// All of the window's client area.
    const RECT& Area() const { return area; }

private:
    HWND window;
    PAINTSTRUCT paint{};
    RECT area{};
    vtr::BitmapHandle bitmap;
    vtr::MemoryDc buffer;
    std::optional<vtr::SelectedObject> selected;
};

} // namespace gallery

#endif
