#ifndef VTRUTILS_GALLERY_APP_HELP_H
#define VTRUTILS_GALLERY_APP_HELP_H

#include "gallery/app/MainMenu.h"

namespace gallery {

/// Tells in a window what the page shows, which calls it makes, and its keys, until the user closes
/// that.
void ShowHelp(HWND owner, const Look& look, const PageEntry& entry, const Page& page,
              const MainMenu& menu);

/// Tells versions and licences in the same way.
void ShowAbout(HWND owner, const Look& look);

} // namespace gallery

#endif
