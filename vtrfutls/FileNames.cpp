#include "vtrfutls/FileNames.h"

#include "common/PageSteps.h"
#include "common/WidePath.h"

#include <atomic>
#include <cstring>

namespace {

std::atomic<unsigned> codePageForFiles{0};

/// Where the parts of a path begin; `extension` is the end when there is none.
struct PathParts {
    const char* name;
    const char* extension;
    const char* end;
};

PathParts Split(const char* path) {
    const vtr::PageSteps steps(vtr::PageForSteps(path, codePageForFiles));
    PathParts parts{path, nullptr, nullptr};
    const char* p = path;
    for (; *p != '\0'; p += steps.Length(p)) {
        if (*p == '\\' || *p == '/' || (*p == ':' && p == path + 1)) {
            parts.name = p + 1;
            parts.extension = nullptr;
        } else if (*p == '.') {
            parts.extension = p;
        }
    }
    parts.end = p;
    if (parts.extension == nullptr)
        parts.extension = p;
    return parts;
}

bool CopyPart(const char* from, const char* to, char* buffer, unsigned size) {
    const std::size_t length = static_cast<std::size_t>(to - from);
    if (length == 0 || length >= size) {
        buffer[0] = '\0';
        return false;
    }
    std::memmove(buffer, from, length);
    buffer[length] = '\0';
    return true;
}

bool HasRoom(const char* path, char* buffer, unsigned size) {
    if (buffer == nullptr || size == 0)
        return false;
    if (path == nullptr)
        buffer[0] = '\0';
    return path != nullptr;
}

} // namespace

void SetCodePageForFiles(unsigned codePage) {
    codePageForFiles = codePage;
}

unsigned GetCodePageForFiles() {
    return codePageForFiles;
}

bool DoesFileExist(const char* path) {
    if (path == nullptr || *path == '\0')
        return false;
    const vtr::WidePath wide(path, codePageForFiles);
    const DWORD attributes = GetFileAttributesW(wide.Get());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool ExtractDirectory(const char* path, char* buffer, unsigned size) {
    return HasRoom(path, buffer, size) && CopyPart(path, Split(path).name, buffer, size);
}

bool ExtractFileName(const char* path, char* buffer, unsigned size) {
    if (!HasRoom(path, buffer, size))
        return false;
    const PathParts parts = Split(path);
    return CopyPart(parts.name, parts.end, buffer, size);
}

bool ExtractExtension(const char* path, char* buffer, unsigned size) {
    if (!HasRoom(path, buffer, size))
        return false;
    const PathParts parts = Split(path);
    return CopyPart(parts.extension, parts.end, buffer, size);
}
