#ifndef VTRUTILS_GALLERY_PAGES_REGIONS_REGIONSPAGE_H
#define VTRUTILS_GALLERY_PAGES_REGIONS_REGIONSPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// A region of rectangles that do not overlap: add, subtract, and see the pieces. One thread at a
/// time.
std::unique_ptr<Page> MakeRegionsPage();

} // namespace gallery

#endif
