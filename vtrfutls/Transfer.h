#ifndef VTRFUTLS_TRANSFER_H
#define VTRFUTLS_TRANSFER_H

#include "common/Handles.h"
#include "vtrfutls/CriticalLock.h"
#include "vtrfutls/HttpTarget.h"
#include "vtrfutls/InternetHandle.h"

#include <atomic>

namespace vtr {

/// One request, its reply and the thread that waits for it. It lives as long as its owner or the
/// thread uses it. Private to this library. Locked by itself.
class Transfer {
public:
    /// Makes the local file and starts the thread, which becomes the caller's. Null, with nothing
    /// left behind, for what `CInternetDownload::StartDownload` refuses.
    static Transfer* Start(HINTERNET session, const char* url, const char* localPath,
                           KernelHandle& thread);
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    /// Lets the thread end as soon as it does not wait.
    void Stop() { stopped = true; }

    /// Ends what the thread waits for, on Windows. Requires: it has been stopped and is known to
    /// wait. A handle that is closed between two uses may be another's at the second.
    void CloseRequest();

    /// For a thread that still waits: it finds nothing more to do when it wakes up. The file is
    /// closed afterwards.
    void Abandon();

    /// The owner uses it no more.
    void Release();

    bool IsRunning() const { return state == State::Running; }
    bool WasSuccessful() const { return state == State::Good; }
    unsigned long long Received() const { return received; }
    unsigned long long Total() const { return total; }

private:
    enum class State { Running, Good, Failed };

    Transfer() = default;
    ~Transfer() = default;
    bool Open(const char* url, const char* localPath);
    static DWORD WINAPI Run(void* transfer) noexcept;
    bool Fetch();
    HINTERNET Ask();
    bool Redirect(HINTERNET asked);
    bool Receive(HINTERNET asked);
    bool Write(const char* bytes, DWORD count);
    void LoseConnection(HINTERNET asked, char* bytes, DWORD size) const;
    void End(bool good);

    std::atomic<int> users{2}; ///< the owner and the thread
    std::atomic<State> state{State::Running};
    std::atomic<unsigned long long> received{0};
    std::atomic<unsigned long long> total{0};

    std::atomic<bool> stopped{false};
    CriticalLock lock; ///< for the handles, which the owner closes under a thread that still waits
    FileHandle file;
    InternetHandle connection;
    InternetHandle request;

    HINTERNET session = nullptr;
    HMODULE library = nullptr; ///< kept loaded by the thread
    HttpTarget target;
};

} // namespace vtr

#endif
