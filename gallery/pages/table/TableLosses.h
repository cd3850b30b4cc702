#ifndef VTRUTILS_GALLERY_PAGES_TABLE_TABLELOSSES_H
#define VTRUTILS_GALLERY_PAGES_TABLE_TABLELOSSES_H

#include <string_view>

namespace gallery {

/// The lines of a table below its titles that the library leaves out, as they have another number
/// of fields. Immutable and safe.
int LinesLeftOut(std::string_view text, char delimiter);

} // namespace gallery

#endif
