#ifndef VTRUTILS_GALLERY_PAGES_ONLINE_MUSICPAGE_H
#define VTRUTILS_GALLERY_PAGES_ONLINE_MUSICPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// Looks up artists online, the albums of one and the songs of one of these. One thread at a time.
std::unique_ptr<Page> MakeMusicPage();

} // namespace gallery

#endif
