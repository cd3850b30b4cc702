#ifndef VTRUTILS_GALLERY_PAGES_FOLDERS_FOLDERSPAGE_H
#define VTRUTILS_GALLERY_PAGES_FOLDERS_FOLDERSPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// The tree of drives and folders with each of its flags, the files of the folder that is selected
/// in it, and the keys that are pressed in it. One thread at a time.
std::unique_ptr<Page> MakeFoldersPage();

} // namespace gallery

#endif
