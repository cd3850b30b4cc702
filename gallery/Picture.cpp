#include "gallery/Picture.h"

#include "common/Handles.h"

// GDI+ wants COM's declarations and the min and max of the Windows headers.
#include <algorithm>
#include <objidl.h>
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#include <gdiplus.h>

namespace gallery {

namespace {

/// The encoder of PNG, as GDI+ has named it since its first version.
constexpr CLSID pngEncoder = {
    0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

vtr::BitmapHandle MakeBitmap(int width, int height) {
    BITMAPINFO description{};
    description.bmiHeader.biSize = sizeof description.bmiHeader;
    description.bmiHeader.biWidth = width;
    description.bmiHeader.biHeight = -height;
    description.bmiHeader.biPlanes = 1;
    description.bmiHeader.biBitCount = 24;
    void* bits = nullptr;
    return vtr::BitmapHandle(CreateDIBSection(/*hdc=*/nullptr, &description, DIB_RGB_COLORS, &bits,
                                              /*hSection=*/nullptr, /*offset=*/0));
}

} // namespace

PictureWriter::PictureWriter() {
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token, &input, /*output=*/nullptr) != Gdiplus::Ok)
        token = 0;
}

PictureWriter::~PictureWriter() {
    if (token != 0)
        Gdiplus::GdiplusShutdown(token);
}

bool PictureWriter::Write(HWND window, const std::wstring& path) const {
    RECT place{};
    if (token == 0 || !GetWindowRect(window, &place))
        return false;
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    const vtr::BitmapHandle bitmap = MakeBitmap(width, height);
    const vtr::MemoryDc target(CreateCompatibleDC(/*hdc=*/nullptr));
    const vtr::WindowDc source(GetWindowDC(window));
    if (!bitmap || !target || !source)
        return false;
    {
        const vtr::SelectedObject selected(target.Get(), bitmap.Get());
        if (!BitBlt(target.Get(), 0, 0, width, height, source.Get(), 0, 0, SRCCOPY))
            return false;
    }
    Gdiplus::Bitmap picture(bitmap.Get(), /*hpal=*/nullptr);
    return picture.Save(path.c_str(), &pngEncoder, /*encoderParams=*/nullptr) == Gdiplus::Ok;
}

} // namespace gallery
