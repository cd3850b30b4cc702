#ifndef VTRUTILS_SYSTEM_FILES_FOLDERS_H
#define VTRUTILS_SYSTEM_FILES_FOLDERS_H

namespace vtr {

/// `CreateMultiLevelDir` for a path of at most 259 units; false for a longer one. Private to the
/// library. Immutable and safe.
bool CreateFolders(const wchar_t* path);

} // namespace vtr

#endif
