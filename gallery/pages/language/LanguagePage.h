#ifndef VTRUTILS_GALLERY_PAGES_LANGUAGE_LANGUAGEPAGE_H
#define VTRUTILS_GALLERY_PAGES_LANGUAGE_LANGUAGEPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// The language table, the language of the gallery, and look-ups by key. One thread at a time.
std::unique_ptr<Page> MakeLanguagePage();

} // namespace gallery

#endif
