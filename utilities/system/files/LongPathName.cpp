#include "common/WidePath.h"
#include "utilities/base/NarrowPath.h"
#include "utilities/base/PathBuilder.h"
#include "utilities/base/StoreCut.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/FolderListing.h"

#include <cstring>
#include <shlwapi.h>

namespace {

using LongPath = vtr::PathBuilder<1024>;

bool BeginsWithDrive(const wchar_t* path) {
    return ((path[0] >= L'A' && path[0] <= L'Z') || (path[0] >= L'a' && path[0] <= L'z')) &&
           path[1] == L':' && path[2] == L'\\';
}

/// Appends the long names of what follows `prefix`, the start of the path that is taken as it is.
bool AppendLongNames(const wchar_t* path, std::size_t prefix, LongPath& out) {
    vtr::PathBuilder<> soFar;
    for (const wchar_t* at = path + prefix; *at != L'\0'; at += *at != L'\0' ? 1 : 0) {
        const wchar_t* end = at + std::wcscspn(at, L"\\");
        if (end != at) {
            soFar.CutTo(0);
            if (!soFar.Append(path, static_cast<std::size_t>(end - path)))
                return false;
            const vtr::FolderListing entry(soFar.Get());
            if (!entry || !out.Append(entry.Name()) || (entry.IsFolder() && !out.Append(L"\\")))
                return false;
        }
        at = end;
    }
    return true;
}

/// False for a path that has no long names and for one that begins with a backslash.
bool FindLongNames(const wchar_t* path, LongPath& out) {
    const std::size_t prefix = BeginsWithDrive(path) ? 3 : 0;
    return path[0] != L'\\' && out.Append(path, prefix) && AppendLongNames(path, prefix, out);
}

/// False when it does not fit.
bool StoreFitting(const vtr::OwnedText& path, char* out, std::size_t capacity) {
    const bool fits = path != nullptr && std::strlen(path.get()) < capacity;
    if (fits)
        std::strcpy(out, path.get());
    return fits;
}

} // namespace

void GetLongPathNameSafe(const char* shortPath, char* out, int size) {
    if (out == nullptr || size < 1)
        return;
    const std::size_t capacity = static_cast<std::size_t>(size);
    const bool tooLong = shortPath != nullptr && strnlen(shortPath, MAX_PATH) == MAX_PATH;
    // `out` may be the path.
    const vtr::WidePath wide(tooLong ? nullptr : shortPath, vtr::CurrentCodePage());
    std::memset(out, 0, capacity);
    LongPath names;
    if (FindLongNames(wide.Get(), names))
        StoreFitting(vtr::NarrowPath(names.Get(), wide.Page()), out, capacity);
}

bool GetExeDirectory(char* out, int size, HMODULE module) {
    if (out == nullptr || size < 1)
        return false;
    const std::size_t capacity = static_cast<std::size_t>(size);
    out[0] = '\0';
    wchar_t file[MAX_PATH];
    wchar_t canonical[MAX_PATH];
    const DWORD length = GetModuleFileNameW(module, file, MAX_PATH);
    if (length == 0 || length >= MAX_PATH || !PathCanonicalizeW(canonical, file))
        return false;
    *PathFindFileNameW(canonical) = L'\0';
    std::memset(out, 0, capacity);
    LongPath names;
    if (FindLongNames(canonical, names) &&
        StoreFitting(vtr::NarrowPath(names.Get()), out, capacity))
        return true;
    const vtr::OwnedText folder = vtr::NarrowPath(canonical);
    if (folder != nullptr)
        vtr::StoreCut(folder.get(), out, capacity);
    return folder != nullptr;
}
