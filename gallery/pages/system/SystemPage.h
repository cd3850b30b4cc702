#ifndef VTRUTILS_GALLERY_PAGES_SYSTEM_SYSTEMPAGE_H
#define VTRUTILS_GALLERY_PAGES_SYSTEM_SYSTEMPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// What the library tells of the system, and the processor load of the machine and of a process
/// over the last minute. One thread at a time.
std::unique_ptr<Page> MakeSystemPage();

} // namespace gallery

#endif
