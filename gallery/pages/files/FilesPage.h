#ifndef VTRUTILS_GALLERY_PAGES_FILES_FILESPAGE_H
#define VTRUTILS_GALLERY_PAGES_FILES_FILESPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// What each function makes of a name that is typed, and the special folders with the space there.
/// One thread at a time.
std::unique_ptr<Page> MakeFilesPage();

} // namespace gallery

#endif
