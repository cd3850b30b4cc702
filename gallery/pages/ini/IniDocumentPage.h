#ifndef VTRUTILS_GALLERY_PAGES_INI_INIDOCUMENTPAGE_H
#define VTRUTILS_GALLERY_PAGES_INI_INIDOCUMENTPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// Sections and pairs of an INI document: find a key, change a value, sort, save. One thread at a
/// time.
std::unique_ptr<Page> MakeIniDocumentPage();

} // namespace gallery

#endif
