#ifndef VTRUTILS_BASE_PATHTEXT_H
#define VTRUTILS_BASE_PATHTEXT_H

#include "common/PageSteps.h"
#include "common/WidePath.h"
#include "utilities/base/LanguageSteps.h"
#include "utilities/base/SameText.h"

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

/// What is after the last separator, as `PathFindFileName` finds it: a separator at the very end,
/// or right before another, does not count.
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

/// Without regard to case in the multibyte code page. Where that is a single-byte one, it calls the
/// second bytes of different characters the same letter: they must be equal.
inline bool SamePath(const char* left, const char* right) {
    if (!SameText(left, right))
        return false;
    if (IsMultibyteCodePage() || left == nullptr || right == nullptr)
        return true;
    const NameSteps steps(left);
    while (*left != '\0') {
        const std::size_t length = steps.Length(left);
        // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): both are equally long
        if (length == 2 && left[1] != right[1])
            return false;
        left += length;
        right += length;
    }
    return true;
}

} // namespace vtr

#endif
