#include "utilities/system/Folders.h"

#include "utilities/system/FileFunctions.h"
#include "utilities/text/LanguageState.h"
#include "vtrfutls/WidePath.h"

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
