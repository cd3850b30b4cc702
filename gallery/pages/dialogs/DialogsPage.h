#ifndef VTRUTILS_GALLERY_PAGES_DIALOGS_DIALOGSPAGE_H
#define VTRUTILS_GALLERY_PAGES_DIALOGS_DIALOGSPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// Message boxes of any buttons and icon, both progress windows over work that can be cancelled,
/// and what can be done with the window itself: made transparent, centred, fitted, and given files
/// that the user drops. One thread at a time.
std::unique_ptr<Page> MakeDialogsPage();

} // namespace gallery

#endif
