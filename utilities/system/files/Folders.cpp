#include "utilities/system/files/Folders.h"

#include "common/WidePath.h"
#include "utilities/base/NarrowPath.h"
#include "utilities/base/PathBuilder.h"
#include "utilities/base/PathText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/FolderListing.h"

#include <cstring>
#include <cwchar>
#include <shlwapi.h>

namespace {

constexpr std::size_t shortestPath = 3;

/// Where the walk begins: after the backslash that ends the name of a server, or at the start. Null
/// when the path has no place for folders.
wchar_t* FirstCreatable(wchar_t* path) {
    if (path[0] != L'\\' || path[1] != L'\\')
        return std::wcschr(path, L':') != nullptr ? path : nullptr;
    wchar_t* serverEnd = std::wcschr(path + 2, L'\\');
    return serverEnd != nullptr ? serverEnd + 1 : nullptr;
}

bool EnsureFolder(const wchar_t* path) {
    return PathIsDirectoryW(path) || CreateDirectoryW(path, /*lpSecurityAttributes=*/nullptr) ||
           GetLastError() == ERROR_ALREADY_EXISTS;
}

/// The length of what is before the last name, its separator included.
template <class Char, class StepLength>
std::size_t LengthOfFolder(const Char* path, StepLength stepLength) {
    std::size_t length = 0;
    for (std::size_t i = 0; path[i] != 0; i += stepLength(path + i)) {
        if (path[i] == '\\' || path[i] == '/' || path[i] == ':')
            length = i + 1;
    }
    return length;
}

/// Finds the name that a host can put after a path to have that of an entry in its folder.
class EntryName {
public:
    explicit EntryName(const char* folderPath)
        : path(folderPath), wide(path, vtr::CurrentCodePage()) {
        const vtr::PathSteps steps(path);
        folder = LengthOfFolder(path, [&](const char* at) { return steps.Length(at); });
        entry.Append(wide.Get());
        wideFolder = LengthOfFolder(entry.Get(), [](const wchar_t*) { return std::size_t{1}; });
    }

    const wchar_t* Path() const { return wide.Get(); }

    /// False for a name that is not the entry's after this path, or is too long.
    bool Store(const wchar_t* name, char* out) {
        entry.CutTo(wideFolder);
        if (*name == L'\0' || !entry.Append(name))
            return false;
        const vtr::OwnedText found = vtr::NarrowPath(entry.Get(), wide.Page());
        if (found == nullptr || std::strncmp(found.get(), path, folder) != 0 ||
            std::strlen(found.get() + folder) >= MAX_PATH)
            return false;
        std::strcpy(out, found.get() + folder);
        return true;
    }

private:
    const char* path;
    vtr::WidePath wide;
    vtr::PathBuilder<> entry;
    std::size_t folder;
    std::size_t wideFolder;
};

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

namespace vtr {

bool CreateFolders(const wchar_t* path) {
    wchar_t prefix[MAX_PATH];
    const std::size_t length = std::wcslen(path);
    if (length < shortestPath || length >= MAX_PATH)
        return false;
    std::wmemcpy(prefix, path, length + 1);

    wchar_t* at = FirstCreatable(prefix);
    bool handled = false;
    while (at != nullptr && (at = std::wcschr(at, L'\\')) != nullptr) {
        *at = L'\0';
        if (!EnsureFolder(prefix))
            return false;
        *at++ = L'\\';
        handled = true;
    }
    return handled;
}

} // namespace vtr

int CreateMultiLevelDir(const char* path) {
    const vtr::WidePath wide(path, vtr::CurrentCodePage());
    return vtr::CreateFolders(wide.Get()) ? 1 : 0;
}

bool FolderEmpty(const char* path) {
    if (path == nullptr)
        return true;
    vtr::PathBuilder<> pattern;
    if (!pattern.Append(vtr::WidePath(path, vtr::CurrentCodePage()).Get()))
        return true;
    if (pattern.EndsWithBackslash())
        pattern.CutTo(pattern.Length() - 1);
    if (!pattern.Append(L"\\*"))
        return true;
    vtr::FolderListing listing(pattern.Get());
    if (!listing)
        return true;
    if (!listing.IsFolder())
        return false;
    for (listing.Next(); listing; listing.Next()) {
        if (!listing.Has(FILE_ATTRIBUTE_NORMAL))
            return false;
    }
    return true;
}

int HasSubDir(const char* path, char* out) {
    if (out == nullptr)
        return 0;
    out[0] = '\0';
    if (path == nullptr)
        return 0;
    EntryName name(path);
    vtr::PathBuilder<> pattern;
    if (!pattern.Append(name.Path()) || !pattern.Append(L"*"))
        return 0;
    for (vtr::FolderListing listing(pattern.Get()); listing; listing.Next()) {
        if (listing.IsFolder() && listing.Name()[0] != L'.' &&
            (name.Store(listing.Name(), out) || name.Store(listing.ShortName(), out)))
            return 1;
    }
    return 0;
}

bool IsRootFolder(const char* path) {
    if (path == nullptr || *path == '\0')
        return false;
    const std::size_t length = strnlen(path, shortestPath + 1);
    return length < shortestPath ||
           (length == shortestPath && IsLetter(path[0]) && path[1] == ':' && path[2] == '\\');
}

bool IsValidDirectory(const char* path) {
    return path != nullptr && PathIsDirectoryW(vtr::WidePath(path, vtr::CurrentCodePage()).Get());
}
