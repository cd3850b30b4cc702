#include "vtrfutls/FileObj.h"

#include "common/Handles.h"
#include "common/WidePath.h"
#include "vtrfutls/FileNames.h"

#include <cstdlib>
#include <string.h>

namespace {

/// The session handle is the first member.
void* SessionOf(const MyInternetAccess* access) {
    return access != nullptr ? *reinterpret_cast<void* const*>(access) : nullptr;
}

} // namespace

CFileObj::CFileObj() noexcept : file(nullptr), path(nullptr), open(false), discarded(false) {}

CFileObj::~CFileObj() {
    Close();
    std::free(path);
}

int CFileObj::OpenFromInternet(MyInternetAccess* access, const char* url,
                               const char* localPath) noexcept {
    char* copy = localPath != nullptr ? _strdup(localPath) : nullptr;
    Close();
    open = copy != nullptr && download.StartDownload(SessionOf(access), url, copy, /*flags=*/0);
    if (!open) {
        std::free(copy);
        return 0;
    }
    std::free(path);
    path = copy;
    discarded = false;
    return 1;
}

bool CFileObj::IsDownloading() const noexcept {
    return download.IsDownloading();
}

bool CFileObj::DownloadWasSuccessful() const noexcept {
    return open && !discarded && download.WasSuccessful();
}

unsigned long long CFileObj::BytesReceived() const noexcept {
    return download.BytesReceived();
}

unsigned long long CFileObj::TotalBytes() const noexcept {
    return download.TotalBytes();
}

int CFileObj::CompleteDownload(bool discard) noexcept {
    // The thread of a transfer that has ended is on its way out, which the reader need not await.
    if (discard || download.IsDownloading())
        download.TerminateDownload();
    if (discard) {
        const vtr::KernelHandle toClose(file);
        file = nullptr;
        discarded = true;
        return open ? 1 : 0;
    }
    if (!DownloadWasSuccessful())
        return 0;
    if (file == nullptr) {
        const vtr::WidePath wide(path, GetCodePageForFiles());
        vtr::FileHandle opened(CreateFileW(wide.Get(), GENERIC_READ,
                                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                           /*lpSecurityAttributes=*/nullptr, OPEN_EXISTING,
                                           FILE_FLAG_SEQUENTIAL_SCAN, /*hTemplateFile=*/nullptr));
        if (opened)
            file = opened.Release();
    }
    return file != nullptr ? 1 : 0;
}

bool CFileObj::IsOpen() const noexcept {
    return open;
}

void CFileObj::Close() noexcept {
    CompleteDownload(/*discard=*/true);
    open = false;
}

long long CFileObj::Size() const noexcept {
    LARGE_INTEGER size;
    return file != nullptr && GetFileSizeEx(file, &size) != FALSE ? size.QuadPart : -1;
}

int CFileObj::Read(void* buffer, int count) noexcept {
    DWORD got = 0;
    if (file == nullptr || buffer == nullptr || count < 0 ||
        ReadFile(file, buffer, static_cast<DWORD>(count), &got, /*lpOverlapped=*/nullptr) == FALSE)
        return -1;
    return static_cast<int>(got);
}

const char* CFileObj::LocalPath() const noexcept {
    return path != nullptr ? path : "";
}

void DeleteRefObject(CFileObj** object) noexcept {
    if (object == nullptr || *object == nullptr)
        return;
    (*object)->Release();
    *object = nullptr;
}
