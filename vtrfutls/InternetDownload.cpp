#include "vtrfutls/InternetDownload.h"

#include "vtrfutls/Transfer.h"

#include <new>

namespace {

vtr::Transfer* Of(void* transfer) {
    return static_cast<vtr::Transfer*>(transfer);
}

} // namespace

CInternetDownload::CInternetDownload() noexcept : transfer(new (std::nothrow) vtr::Transfer) {}

CInternetDownload::~CInternetDownload() {
    delete Of(transfer);
}

bool CInternetDownload::StartDownload(void* session, const char* url, const char* localPath,
                                      unsigned /*flags*/) noexcept {
    return transfer != nullptr && Of(transfer)->Start(session, url, localPath);
}

bool CInternetDownload::IsDownloading() const noexcept {
    return transfer != nullptr && Of(transfer)->IsRunning();
}

bool CInternetDownload::WasSuccessful() const noexcept {
    return transfer != nullptr && Of(transfer)->WasSuccessful();
}

unsigned long long CInternetDownload::BytesReceived() const noexcept {
    return transfer != nullptr ? Of(transfer)->Received() : 0;
}

unsigned long long CInternetDownload::TotalBytes() const noexcept {
    return transfer != nullptr ? Of(transfer)->Total() : 0;
}

void CInternetDownload::TerminateDownload() noexcept {
    if (transfer != nullptr)
        Of(transfer)->Terminate();
}
