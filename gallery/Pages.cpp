#include "gallery/Pages.h"

#include <iterator>

// The table of pages: title, name of the picture, and NAME for the function `MakeNAME` that the
// page's file in pages/ defines.
#define GALLERY_PAGES(PAGE)                                                                        \
    PAGE(L"INI document", L"ini-document", IniDocumentPage)                                        \
    PAGE(L"Observers", L"observers", ObserversPage)                                                \
    PAGE(L"Regions", L"regions", RegionsPage)

namespace gallery {

#define GALLERY_DECLARE(title, pictureName, name) std::unique_ptr<Page> Make##name();
GALLERY_PAGES(GALLERY_DECLARE)

#define GALLERY_ENTRY(title, pictureName, name) {title, pictureName, Make##name},
const PageEntry pages[] = {GALLERY_PAGES(GALLERY_ENTRY)};
const int pageCount = static_cast<int>(std::size(pages));

} // namespace gallery
