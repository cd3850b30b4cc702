#ifndef VTRUTILS_SYSTEM_FILES_FILETIMES_H
#define VTRUTILS_SYSTEM_FILES_FILETIMES_H

#include <windows.h>

namespace vtr {

/// Both times of a file, which is opened for reading and shared with all others. False, with
/// nothing written, when that fails. Private to the library. Immutable and safe.
bool ReadFileTimes(const wchar_t* path, FILETIME& lastAccess, FILETIME& lastWrite);

} // namespace vtr

#endif
