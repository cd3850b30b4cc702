#ifndef VTRUTILS_GALLERY_PAGES_UNDO_ITEMFILE_H
#define VTRUTILS_GALLERY_PAGES_UNDO_ITEMFILE_H

#include <string>
#include <vector>

namespace gallery {

/// A file with one item per line, in UTF-8. Immutable and safe.

/// False, with the items unchanged, for a file that cannot be read or is no UTF-8.
bool LoadItems(const std::wstring& path, std::vector<std::wstring>& items);

/// The new file takes the place of another when it is complete: false leaves that as it was.
bool SaveItems(const std::wstring& path, const std::vector<std::wstring>& items);

} // namespace gallery

#endif
