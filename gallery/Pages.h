#ifndef VTRUTILS_GALLERY_PAGES_H
#define VTRUTILS_GALLERY_PAGES_H

#include "gallery/Page.h"

#include <memory>

namespace gallery {

struct PageEntry {
    const char* titleKey;
    const wchar_t* pictureName; ///< of the PNG, without ".png"
    std::unique_ptr<Page> (*make)();
};

/// All pages in the order of the list. Immutable and safe.
extern const PageEntry pages[];
extern const int pageCount;

} // namespace gallery

#endif
