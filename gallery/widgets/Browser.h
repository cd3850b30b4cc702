#ifndef VTRUTILS_GALLERY_WIDGETS_BROWSER_H
#define VTRUTILS_GALLERY_WIDGETS_BROWSER_H

#include <string>
#include <windows.h>

namespace gallery {

/// Opens the user's browser. False when nothing could be started. One thread at a time.
bool OpenAddress(const std::wstring& address, HWND window);

} // namespace gallery

#endif
