#ifndef VTRUTILS_GALLERY_PICTURE_H
#define VTRUTILS_GALLERY_PICTURE_H

#include <string>
#include <windows.h>

namespace gallery {

/// Writes PNGs of windows while it lives. One thread at a time.
class PictureWriter {
public:
    PictureWriter();
    PictureWriter(const PictureWriter&) = delete;
    PictureWriter& operator=(const PictureWriter&) = delete;
    ~PictureWriter();

    /// The window with its frame, as it stands on the screen: what is painted, nothing else. False
    /// when it cannot be read or the file cannot be written.
    bool Write(HWND window, const std::wstring& path) const;

private:
    ULONG_PTR token = 0;
};

} // namespace gallery

#endif
