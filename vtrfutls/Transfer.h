#ifndef VTRFUTLS_TRANSFER_H
#define VTRFUTLS_TRANSFER_H

#include "common/Handles.h"
#include "vtrfutls/HttpTarget.h"
#include "vtrfutls/InternetHandle.h"

#include <atomic>

namespace vtr {

/// What a `CInternetDownload` is inside: one request and the thread that waits for the reply.
/// Private to this library. Locked by itself, but `Start` and the destructor are for one thread.
class Transfer {
public:
    Transfer();
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;
    ~Transfer();

    bool Start(HINTERNET session, const char* url, const char* localPath);
    void Terminate();

    bool IsRunning() const { return state == State::Running; }
    bool WasSuccessful() const { return state == State::Good; }
    unsigned long long Received() const { return received; }
    unsigned long long Total() const { return total; }

private:
    enum class State { Idle, Running, Good, Failed };

    static DWORD WINAPI Run(void* transfer) noexcept;
    bool Fetch();
    bool Ask();
    bool Receive();
    bool HasAll();
    void LetGo();

    std::atomic<State> state{State::Idle};
    std::atomic<unsigned long long> received{0};
    std::atomic<unsigned long long> total{0};
    std::atomic<bool> stopped{false};

    CRITICAL_SECTION joining; ///< guards `thread`
    KernelHandle thread;
    CRITICAL_SECTION handing; ///< guards the two handles, which a terminating thread closes
    InternetHandle connection;
    InternetHandle request;

    // Of the thread, and before it of `Start`.
    HINTERNET session = nullptr;
    FileHandle file;
    HttpTarget target;
    bool lengthKnown = false;
    char bytes[64 * 1024];
};

} // namespace vtr

#endif
