#ifndef VTRUTILS_GALLERY_PAGES_PAGES_H
#define VTRUTILS_GALLERY_PAGES_PAGES_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

struct PageEntry {
    const char* titleKey;
    const wchar_t* pictureName; ///< of the PNG, without ".png"
    const wchar_t* extension;   ///< of the files that it opens, or null
    std::unique_ptr<Page> (*make)();
};

/// All pages in the order of the list. Immutable and safe.
extern const PageEntry pages[];
extern const int pageCount;

/// The index of the page for files with this extension; any other file is taken for an INI
/// document.
int PageOfFile(const std::wstring& path);

} // namespace gallery

#endif
