#ifndef VTRUTILS_GALLERY_PAGES_ONLINE_SOUNDSPAGE_H
#define VTRUTILS_GALLERY_PAGES_ONLINE_SOUNDSPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// Searches the online sound repository and pages through what it finds, with the details of one
/// sound. One thread at a time.
std::unique_ptr<Page> MakeSoundsPage();

} // namespace gallery

#endif
