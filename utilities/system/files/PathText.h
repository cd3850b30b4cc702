#ifndef VTRUTILS_SYSTEM_FILES_PATHTEXT_H
#define VTRUTILS_SYSTEM_FILES_PATHTEXT_H

#include "utilities/base/MultibyteText.h"

/// Walking over narrow paths; the second byte of a two-byte character is never taken for a
/// separator. Private to the library. Immutable and safe.

namespace vtr {

/// Null when there is none.
inline const char* FindBackslash(const char* path) {
    const CharacterSteps steps;
    while (*path != '\0' && *path != '\\')
        path += steps.Length(path);
    return *path != '\0' ? path : nullptr;
}

inline bool EndsWithBackslash(const char* path) {
    const CharacterSteps steps;
    bool backslash = false;
    for (; *path != '\0'; path += steps.Length(path))
        backslash = *path == '\\';
    return backslash;
}

} // namespace vtr

#endif
