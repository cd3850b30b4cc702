#ifndef VTRUTILS_GALLERY_PICTUREMODE_H
#define VTRUTILS_GALLERY_PICTUREMODE_H

#include <string>

namespace gallery {

class MainWindow;

/// Shows every page with its example and writes a PNG of each into the folder, which is made when
/// missing. Each file's name goes to standard output, each failure to standard error; false after a
/// failure. Requires: the window is shown.
bool MakePictures(MainWindow& window, const std::wstring& folder);

} // namespace gallery

#endif
