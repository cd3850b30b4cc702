#ifndef VTRUTILS_GALLERY_PAGES_TEXT_TEXTPAGE_H
#define VTRUTILS_GALLERY_PAGES_TEXT_TEXTPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// What each function makes of a text, a length and a size while they are typed. One thread at a
/// time.
std::unique_ptr<Page> MakeTextPage();

} // namespace gallery

#endif
