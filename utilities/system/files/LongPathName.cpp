#include "utilities/base/StoreCut.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/FolderListing.h"
#include "utilities/system/files/PathText.h"

#include <shlwapi.h>

namespace {

bool BeginsWithDrive(const char* path) {
    return ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z')) &&
           path[1] == ':' && path[2] == '\\';
}

/// Appends to a zeroed buffer what fits.
class BoundedText {
public:
    BoundedText(char* buffer, std::size_t capacity) : next(buffer), room(capacity - 1) {}

    bool Append(const char* text, std::size_t length) {
        if (length > room)
            return false;
        std::memcpy(next, text, length);
        next += length;
        room -= length;
        return true;
    }

private:
    char* next;
    std::size_t room;
};

/// Appends the long names behind `prefix`, the start of the path that is taken as it is.
bool AppendLongNames(const char* path, std::size_t prefix, BoundedText& out) {
    char soFar[MAX_PATH];
    std::strcpy(soFar, path);
    for (char* at = soFar + prefix; *at != '\0';) {
        const char* found = vtr::FindBackslash(at);
        char* end = found != nullptr ? at + (found - at) : at + std::strlen(at);
        const bool component = end != at;
        const bool last = *end == '\0';
        *end = '\0';
        if (component) {
            const vtr::FolderListing entry(soFar);
            if (!entry || !out.Append(entry.Name(), std::strlen(entry.Name())) ||
                (entry.IsFolder() && !out.Append("\\", 1)))
                return false;
        }
        if (last)
            break;
        *end = '\\';
        at = end + 1;
    }
    return true;
}

} // namespace

void GetLongPathNameSafe(const char* shortPath, char* out, int size) {
    if (out == nullptr || size < 1)
        return;
    const std::size_t capacity = static_cast<std::size_t>(size);
    const std::size_t length = shortPath != nullptr ? strnlen(shortPath, MAX_PATH) : 0;
    // `out` may be the path.
    char path[MAX_PATH] = "";
    if (length > 0 && length < MAX_PATH && *shortPath != '\\')
        std::memcpy(path, shortPath, length);
    std::memset(out, 0, capacity);

    BoundedText text(out, capacity);
    const std::size_t prefix = BeginsWithDrive(path) ? 3 : 0;
    if (!text.Append(path, prefix) || !AppendLongNames(path, prefix, text))
        std::memset(out, 0, capacity);
}

bool GetExeDirectory(char* out, int size, HMODULE module) {
    if (out == nullptr || size < 1)
        return false;
    out[0] = '\0';
    char file[MAX_PATH];
    char canonical[MAX_PATH];
    const DWORD length = GetModuleFileNameA(module, file, sizeof file);
    if (length == 0 || length >= sizeof file || !PathCanonicalizeA(canonical, file))
        return false;
    *PathFindFileNameA(canonical) = '\0';
    GetLongPathNameSafe(canonical, out, size);
    if (out[0] == '\0')
        vtr::StoreCut(canonical, out, static_cast<unsigned>(size));
    return true;
}
