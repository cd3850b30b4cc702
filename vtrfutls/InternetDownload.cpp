#include "vtrfutls/InternetDownload.h"

#include "vtrfutls/Interruption.h"
#include "vtrfutls/Transfer.h"

#include <new>

namespace {

// Milliseconds, together less than a second.
constexpr DWORD untilItWaits = 100;
constexpr DWORD untilAbandoned = 700;

using Holder = vtr::CriticalLock::Holder;

/// What a `CInternetDownload` is inside: the running or last transfer.
class Download {
public:
    Download() = default;
    Download(const Download&) = delete;
    Download& operator=(const Download&) = delete;
    ~Download() {
        Terminate();
        if (transfer != nullptr)
            transfer->Release();
    }

    bool Start(HINTERNET session, const char* url, const char* localPath) {
        if (session == nullptr || url == nullptr || localPath == nullptr || *localPath == '\0' ||
            Ask(&vtr::Transfer::IsRunning, false))
            return false;
        Terminate(); // the thread of a transfer that has ended may still be on its way out
        const Holder joined(joining);
        vtr::Transfer* started = vtr::Transfer::Start(session, url, localPath, thread);
        if (started == nullptr)
            return false;
        const Holder held(asking);
        if (transfer != nullptr)
            transfer->Release();
        transfer = started;
        return true;
    }

    void Terminate() {
        const Holder joined(joining);
        if (!thread)
            return;
        transfer->Stop();
        if (!vtr::InterruptUntilEnd(thread.Get(), untilItWaits)) {
            transfer->CloseRequest();
            if (!vtr::InterruptUntilEnd(thread.Get(), untilAbandoned))
                transfer->Abandon();
        }
        thread.Reset();
    }

    template <class Answer>
    Answer Ask(Answer (vtr::Transfer::*question)() const, Answer without) {
        const Holder held(asking);
        return transfer != nullptr ? (transfer->*question)() : without;
    }

private:
    vtr::CriticalLock joining; ///< for the thread
    vtr::KernelHandle thread;
    vtr::CriticalLock asking; ///< for the pointer
    vtr::Transfer* transfer = nullptr;
};

template <class Answer>
Answer Ask(void* download, Answer (vtr::Transfer::*question)() const, Answer without) {
    return download != nullptr ? static_cast<Download*>(download)->Ask(question, without) : without;
}

} // namespace

CInternetDownload::CInternetDownload() noexcept : download(new (std::nothrow) Download) {}

CInternetDownload::~CInternetDownload() {
    delete static_cast<Download*>(download);
}

bool CInternetDownload::StartDownload(void* session, const char* url, const char* localPath,
                                      unsigned /*flags*/) noexcept {
    return download != nullptr && static_cast<Download*>(download)->Start(session, url, localPath);
}

bool CInternetDownload::IsDownloading() const noexcept {
    return Ask(download, &vtr::Transfer::IsRunning, false);
}

bool CInternetDownload::WasSuccessful() const noexcept {
    return Ask(download, &vtr::Transfer::WasSuccessful, false);
}

unsigned long long CInternetDownload::BytesReceived() const noexcept {
    return Ask(download, &vtr::Transfer::Received, 0ULL);
}

unsigned long long CInternetDownload::TotalBytes() const noexcept {
    return Ask(download, &vtr::Transfer::Total, 0ULL);
}

void CInternetDownload::TerminateDownload() noexcept {
    if (download != nullptr)
        static_cast<Download*>(download)->Terminate();
}
