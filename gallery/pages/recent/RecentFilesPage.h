#ifndef VTRUTILS_GALLERY_PAGES_RECENT_RECENTFILESPAGE_H
#define VTRUTILS_GALLERY_PAGES_RECENT_RECENTFILESPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// What was opened and saved on the pages with documents, to be opened again. One thread at a time.
std::unique_ptr<Page> MakeRecentFilesPage();

} // namespace gallery

#endif
