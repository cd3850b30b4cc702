#include "common/Owner.h"
#include "common/WidePath.h"
#include "utilities/base/StoreCut.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/Folders.h"

#include <cstdio>
#include <cstring>
#include <shlobj.h>
#include <shlwapi.h>

namespace {

struct ItemIdListKind {
    using Type = LPITEMIDLIST;
    static Type None() { return nullptr; }
    static bool Close(Type list) {
        CoTaskMemFree(list);
        return true;
    }
};

/// False when there is no such folder.
bool Resolve(int folderId, char (&path)[MAX_PATH]) {
    LPITEMIDLIST found = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(/*hwnd=*/nullptr, folderId, &found)))
        return false;
    const vtr::Owner<ItemIdListKind> list(found);
    // For some missing folders Windows versions report success without having written a path.
    if (!SHGetPathFromIDListA(list.Get(), path) || PathIsRelativeA(path))
        return false;
    PathRemoveBackslashA(path);
    return true;
}

/// False when the folder is missing and cannot be made.
bool EnsureFolder(const char* path) {
    if (IsValidDirectory(path))
        return true;
    char withBackslash[MAX_PATH];
    if (std::snprintf(withBackslash, sizeof withBackslash, "%s\\", path) >= MAX_PATH)
        return false;
    // The shell's paths are in the system's code page, whatever the language.
    vtr::CreateFolders(vtr::WidePath(withBackslash, CP_ACP).Get());
    return IsValidDirectory(path);
}

} // namespace

bool GetSpecialFolderPath(char* out, int size, int folderId, bool create) {
    if (out == nullptr || size < 1)
        return false;
    std::memset(out, 0, static_cast<std::size_t>(size));
    char path[MAX_PATH];
    if (!Resolve(folderId, path))
        return false;
    vtr::StoreCut(path, out, static_cast<unsigned>(size));
    if (create)
        EnsureFolder(path);
    return true;
}

bool GetDesktopPath(char* out, int size, bool create) {
    return GetSpecialFolderPath(out, size, CSIDL_DESKTOP, create);
}

bool GetMyMusicPath(char* out, int size, bool create) {
    return GetSpecialFolderPath(out, size, CSIDL_MYMUSIC, create);
}

bool GetCurrentUserAppDataPath(char* out, int size, bool create) {
    return GetSpecialFolderPath(out, size, CSIDL_APPDATA, create);
}

bool GetInternetCachePath(char* out, int size) {
    return GetSpecialFolderPath(out, size, CSIDL_INTERNET_CACHE, /*create=*/false);
}

bool GetCommonAppDataPath(char* out, int size, bool create) {
    return GetSpecialFolderPath(out, size, CSIDL_COMMON_APPDATA, create);
}

bool GetMyPicturesPath(char* out, int size, bool create) {
    return GetSpecialFolderPath(out, size, CSIDL_MYPICTURES, create);
}

bool GetMyDocumentsPath(char* out, int size, bool create) {
    if (out == nullptr || size < 1)
        return false;
    char path[MAX_PATH];
    if (!Resolve(CSIDL_PERSONAL, path))
        std::strcpy(path, "C:\\My Documents");
    if (create && !EnsureFolder(path))
        std::strcpy(path, "C:\\");
    std::memset(out, 0, static_cast<std::size_t>(size));
    vtr::StoreCut(path, out, static_cast<unsigned>(size));
    return true;
}
