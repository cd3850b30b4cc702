#ifndef VTRUTILS_SYSTEM_FILEFUNCTIONS_H
#define VTRUTILS_SYSTEM_FILEFUNCTIONS_H

#include "utilities/Export.h"

/// Files, folders and paths. Paths are narrow text of at most 259 bytes and a terminator.
/// Thread-safety: immutable and safe.

/// Makes every missing folder whose name ends with a backslash: "C:\a\b" makes "C:\a" only,
/// "C:\a\b\" both. Of a network path the first folder made is the share. Not 0 when none is missing
/// afterwards; 0 for null, fewer than 3 characters, a local path without a colon, a path without
/// such a folder, and a folder that cannot be made. The path is in the current language code page.
VTRUTILS_API int CreateMultiLevelDir(const char* path);

#endif
