#include "gallery/Pages.h"

#include <iterator>

// The table of pages: key of the title, name of the picture, and NAME for the function `MakeNAME`
// that the page's file in pages/ defines.
#define GALLERY_PAGES(PAGE)                                                                        \
    PAGE("IniDocument", L"ini-document", IniDocumentPage)                                          \
    PAGE("Language", L"language", LanguagePage)                                                    \
    PAGE("Observers", L"observers", ObserversPage)                                                 \
    PAGE("Regions", L"regions", RegionsPage)

namespace gallery {

#define GALLERY_DECLARE(titleKey, pictureName, name) std::unique_ptr<Page> Make##name();
GALLERY_PAGES(GALLERY_DECLARE)

#define GALLERY_ENTRY(titleKey, pictureName, name) {titleKey, pictureName, Make##name},
const PageEntry pages[] = {GALLERY_PAGES(GALLERY_ENTRY)};
const int pageCount = static_cast<int>(std::size(pages));

} // namespace gallery
