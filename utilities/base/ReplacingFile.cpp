#include "utilities/base/ReplacingFile.h"

#include "utilities/base/CodePage.h"

#include <cwchar>

namespace vtr {

namespace {

constexpr std::size_t streamBuffer = 64 * 1024;

bool MayBeWritten(const wchar_t* path) {
    const FileHandle file(CreateFileW(path, GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      /*lpSecurityAttributes=*/nullptr, OPEN_EXISTING,
                                      /*dwFlagsAndAttributes=*/0, /*hTemplateFile=*/nullptr));
    return file || GetLastError() == ERROR_FILE_NOT_FOUND;
}

/// The folder of `path` in `folder`, "." for a path without one. False when it does not fit.
bool FolderOf(const wchar_t* path, wchar_t (&folder)[MAX_PATH]) {
    std::size_t length = 0;
    for (std::size_t i = 0; path[i] != L'\0'; ++i) {
        if (path[i] == L'\\' || path[i] == L'/' || (path[i] == L':' && i == 1))
            length = i + 1;
    }
    if (length >= MAX_PATH)
        return false;
    std::wmemcpy(folder, length > 0 ? path : L".", length > 0 ? length : 1);
    folder[length > 0 ? length : 1] = L'\0';
    return true;
}

} // namespace

ReplacingFile::ReplacingFile(const char* path) : target(path, CurrentCodePage()) {}

ReplacingFile::~ReplacingFile() {
    stream.Reset();
    if (temporary[0] != L'\0')
        DeleteFileW(temporary);
}

bool ReplacingFile::Open() {
    wchar_t folder[MAX_PATH];
    wchar_t name[MAX_PATH];
    if (!MayBeWritten(target.Get()) || !FolderOf(target.Get(), folder) ||
        GetTempFileNameW(folder, L"vtr", /*uUnique=*/0, name) == 0)
        return false;
    std::wmemcpy(temporary, name, MAX_PATH);
    stream.Reset(_wfopen(temporary, L"wb"));
    return stream && std::setvbuf(stream.Get(), nullptr, _IOFBF, streamBuffer) == 0;
}

bool ReplacingFile::Commit() {
    const bool written = stream && std::ferror(stream.Get()) == 0;
    const bool closed = stream.Close();
    if (!written || !closed || !Replace())
        return false;
    temporary[0] = L'\0';
    return true;
}

/// `ReplaceFileW` keeps the old file's attributes and permissions, but wants an old file.
bool ReplacingFile::Replace() const {
    if (GetFileAttributesW(target.Get()) == INVALID_FILE_ATTRIBUTES)
        return MoveFileExW(temporary, target.Get(), MOVEFILE_REPLACE_EXISTING) != FALSE;
    return ReplaceFileW(target.Get(), temporary, /*lpBackupFileName=*/nullptr,
                        REPLACEFILE_IGNORE_MERGE_ERRORS, /*lpExclude=*/nullptr,
                        /*lpReserved=*/nullptr) != FALSE;
}

} // namespace vtr
