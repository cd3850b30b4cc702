#include "utilities/system/files/Folders.h"

#include "common/WidePath.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/StoreCut.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/FolderListing.h"
#include "utilities/system/files/PathText.h"

#include <cstdio>
#include <cwchar>
#include <shlwapi.h>

namespace {

constexpr std::size_t shortestPath = 3;

/// Where the walk begins: behind the backslash that ends the name of a server, or at the start.
/// Null when the path has no place for folders.
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
    const int length = static_cast<int>(std::strlen(path)) - (vtr::EndsWithBackslash(path) ? 1 : 0);
    char pattern[MAX_PATH];
    const int needed = std::snprintf(pattern, sizeof pattern, "%.*s\\*", length, path);
    if (needed < 0 || needed >= MAX_PATH)
        return true;
    vtr::FolderListing listing(pattern);
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
    char pattern[MAX_PATH];
    if (path == nullptr || std::snprintf(pattern, sizeof pattern, "%s*", path) >= MAX_PATH)
        return 0;
    for (vtr::FolderListing listing(pattern); listing; listing.Next()) {
        if (listing.IsFolder() && listing.Name()[0] != '.') {
            vtr::StoreCut(listing.Name(), out, MAX_PATH);
            return 1;
        }
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
    return path != nullptr && PathIsDirectoryA(path);
}
