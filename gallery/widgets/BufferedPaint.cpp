#include "gallery/widgets/BufferedPaint.h"

namespace gallery {

BufferedPaint::BufferedPaint(HWND toPaint) : window(toPaint) {
    BeginPaint(window, &paint);
    GetClientRect(window, &area);
    bitmap.Reset(CreateCompatibleBitmap(paint.hdc, area.right, area.bottom));
    if (!bitmap)
        return;
    buffer.Reset(CreateCompatibleDC(paint.hdc));
    selected.emplace(buffer.Get(), bitmap.Get());
}

BufferedPaint::~BufferedPaint() {
    if (buffer)
        BitBlt(paint.hdc, 0, 0, area.right, area.bottom, buffer.Get(), 0, 0, SRCCOPY);
    EndPaint(window, &paint);
}

} // namespace gallery
