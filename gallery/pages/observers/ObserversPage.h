#ifndef VTRUTILS_GALLERY_PAGES_OBSERVERS_OBSERVERSPAGE_H
#define VTRUTILS_GALLERY_PAGES_OBSERVERS_OBSERVERSPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// A subject and its observers: add and remove them, notify them, and read who received what, also
/// when observers remove themselves, come back or notify within a delivery. One thread at a time.
std::unique_ptr<Page> MakeObserversPage();

} // namespace gallery

#endif
