#ifndef VTRUTILS_BASE_PATHTEXT_H
#define VTRUTILS_BASE_PATHTEXT_H

#include "common/PageSteps.h"
#include "common/WidePath.h"
#include "utilities/base/LanguageSteps.h"

/// Walking over narrow paths and names of files; the second byte of a two-byte character is never
/// taken for a separator. Private to the library. Immutable and safe.

namespace vtr {

/// Steps over a path in the page in which it becomes UTF-16.
class PathSteps : public PageSteps {
public:
    explicit PathSteps(const char* path) : PageSteps(PageForSteps(path, CurrentCodePage())) {}
};

/// Steps over the name of a file, with or without its folder, which need not exist.
class NameSteps : public LanguageSteps {
public:
    explicit NameSteps(const char* name) : LanguageSteps(PageForSteps(name, CurrentCodePage())) {}
};

inline bool EndsWithBackslash(const char* path) {
    const PathSteps steps(path);
    bool backslash = false;
    for (; *path != '\0'; path += steps.Length(path))
        backslash = *path == '\\';
    return backslash;
}

/// What stands after the last separator, as `PathFindFileName` finds it: a separator at the very
/// end, or one that another follows, is none.
inline const char* FileNameIn(const char* path) {
    const PathSteps steps(path);
    const char* name = path;
    for (; *path != '\0'; path += steps.Length(path)) {
        if ((*path == '\\' || *path == '/' || *path == ':') && path[1] != '\0' && path[1] != '\\' &&
            path[1] != '/')
            name = path + 1;
    }
    return name;
}

} // namespace vtr

#endif
