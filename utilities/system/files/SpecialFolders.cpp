#include "common/Handles.h"
#include "utilities/base/NarrowPath.h"
#include "utilities/base/PathBuilder.h"
#include "utilities/base/StoreCut.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/Folders.h"

#include <cstring>
#include <shlobj.h>
#include <shlwapi.h>

namespace {

/// False when there is no such folder.
bool Resolve(int folderId, wchar_t (&path)[MAX_PATH]) {
    LPITEMIDLIST found = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(/*hwnd=*/nullptr, folderId, &found)))
        return false;
    const vtr::TaskMemory<ITEMIDLIST> list(found);
    // For some missing folders Windows versions report success without having written a path.
    if (!SHGetPathFromIDListW(list.Get(), path) || PathIsRelativeW(path))
        return false;
    PathRemoveBackslashW(path);
    return true;
}

/// False when the folder is missing and cannot be made.
bool EnsureFolder(const wchar_t* path) {
    if (PathIsDirectoryW(path))
        return true;
    vtr::PathBuilder<> withBackslash;
    if (!withBackslash.Append(path) || !withBackslash.Append(L"\\"))
        return false;
    vtr::CreateFolders(withBackslash.Get());
    return PathIsDirectoryW(path) != FALSE;
}

/// Makes the folder that the shell refuses to name while it is missing. False when that fails.
bool MakeMissing(int folderId, wchar_t (&path)[MAX_PATH]) {
    if (FAILED(SHGetFolderPathW(/*hwnd=*/nullptr, folderId | CSIDL_FLAG_DONT_VERIFY,
                                /*hToken=*/nullptr, SHGFP_TYPE_CURRENT, path)) ||
        PathIsRelativeW(path))
        return false;
    PathRemoveBackslashW(path);
    return EnsureFolder(path);
}

/// Fills the whole buffer; false, with zeros alone, for a path that hosts cannot pass back.
bool Store(const wchar_t* path, char* out, int size) {
    std::memset(out, 0, static_cast<std::size_t>(size));
    const vtr::OwnedText narrow = vtr::NarrowPath(path);
    if (narrow != nullptr)
        vtr::StoreCut(narrow.get(), out, static_cast<unsigned>(size));
    return narrow != nullptr;
}

} // namespace

bool GetSpecialFolderPath(char* out, int size, int folderId, bool create) {
    if (out == nullptr || size < 1)
        return false;
    std::memset(out, 0, static_cast<std::size_t>(size));
    wchar_t path[MAX_PATH];
    if (Resolve(folderId, path)) {
        if (create)
            EnsureFolder(path);
    } else if (!create || !MakeMissing(folderId, path)) {
        return false;
    }
    return Store(path, out, size);
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
    wchar_t path[MAX_PATH];
    if (!Resolve(CSIDL_PERSONAL, path) && !(create && MakeMissing(CSIDL_PERSONAL, path)))
        std::wcscpy(path, L"C:\\My Documents");
    if (create && !EnsureFolder(path))
        std::wcscpy(path, L"C:\\");
    return Store(path, out, size) || Store(L"C:\\", out, size);
}
