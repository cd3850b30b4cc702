#ifndef VTRUTILS_GALLERY_PAGES_UNDO_UNDOPAGE_H
#define VTRUTILS_GALLERY_PAGES_UNDO_UNDOPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// A list to edit: add, change and remove items, undo and redo one action or all, mark what is
/// saved, and make one action of several. One thread at a time.
std::unique_ptr<Page> MakeUndoPage();

} // namespace gallery

#endif
