#ifndef VTRUTILS_GALLERY_PAGES_PAGES_H
#define VTRUTILS_GALLERY_PAGES_PAGES_H

#include "gallery/app/Page.h"

#include <span>

namespace gallery {

/// All pages in the order of the list; the first one also takes the files that no other page opens.
/// Immutable and safe.
std::span<const PageEntry> AllPages();

} // namespace gallery

#endif
