#ifndef VTRUTILS_GALLERY_PAGES_TABLE_TABLEPAGE_H
#define VTRUTILS_GALLERY_PAGES_TABLE_TABLEPAGE_H

#include "gallery/app/Page.h"

#include <memory>

namespace gallery {

/// The rows of a delimited file: find a value in a column, edit, add and delete, keep sorted,
/// replace everywhere, save. One thread at a time.
std::unique_ptr<Page> MakeTablePage();

} // namespace gallery

#endif
