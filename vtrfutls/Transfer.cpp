#include "vtrfutls/Transfer.h"

#include "common/WidePath.h"
#include "vtrfutls/FileNames.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int mostRedirections = 10;
constexpr DWORD requestFlags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE |
                               INTERNET_FLAG_PRAGMA_NOCACHE | INTERNET_FLAG_NO_COOKIES |
                               INTERNET_FLAG_NO_UI | INTERNET_FLAG_NO_AUTO_REDIRECT;

class Held {
public:
    explicit Held(CRITICAL_SECTION& toHold) : section(toHold) { EnterCriticalSection(&section); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { LeaveCriticalSection(&section); }

private:
    CRITICAL_SECTION& section;
};

/// A field of the reply's head; false if it is not there or does not fit.
template <std::size_t size>
bool Field(HINTERNET request, DWORD which, char (&text)[size]) {
    DWORD length = size;
    return HttpQueryInfoA(request, which, text, &length, /*lpdwIndex=*/nullptr) != FALSE;
}

/// False for what is not a number of digits alone.
bool ParseLength(const char* text, unsigned long long& length) {
    char* end = nullptr;
    errno = 0;
    length = std::strtoull(text, &end, 10);
    return *text >= '0' && *text <= '9' && *end == '\0' && errno == 0;
}

int StatusOf(HINTERNET request) {
    char text[16];
    return Field(request, HTTP_QUERY_STATUS_CODE, text) ? std::atoi(text) : 0;
}

bool IsRedirection(int status) {
    return (status >= 301 && status <= 303) || status == 307 || status == 308;
}

} // namespace

namespace vtr {

Transfer::Transfer() {
    InitializeCriticalSection(&joining);
    InitializeCriticalSection(&handing);
}

Transfer::~Transfer() {
    Terminate();
    DeleteCriticalSection(&handing);
    DeleteCriticalSection(&joining);
}

bool Transfer::Start(HINTERNET inSession, const char* url, const char* localPath) {
    if (inSession == nullptr || url == nullptr || localPath == nullptr || *localPath == '\0' ||
        IsRunning())
        return false;
    Terminate(); // the thread of the last transfer may still be ending
    if (!target.Set(url))
        return false;
    const WidePath wide(localPath, GetCodePageForFiles());
    file.Reset(CreateFileW(wide.Get(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                           /*lpSecurityAttributes=*/nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                           /*hTemplateFile=*/nullptr));
    if (!file)
        return false;
    session = inSession;
    lengthKnown = false;
    stopped = false;
    received = 0;
    total = 0;
    state = State::Running;
    const Held held(joining);
    thread.Reset(CreateThread(/*lpThreadAttributes=*/nullptr, /*dwStackSize=*/0, &Transfer::Run,
                              this, /*dwCreationFlags=*/0, /*lpThreadId=*/nullptr));
    if (!thread) {
        file.Reset();
        DeleteFileW(wide.Get());
        state = State::Idle;
    }
    return static_cast<bool>(thread);
}

void Transfer::Terminate() {
    const Held held(joining);
    if (!thread)
        return;
    stopped = true;
    LetGo();
    WaitForSingleObject(thread.Get(), INFINITE);
    thread.Reset();
}

DWORD WINAPI Transfer::Run(void* parameter) noexcept {
    Transfer& transfer = *static_cast<Transfer*>(parameter);
    const bool fetched = transfer.Fetch();
    transfer.LetGo();
    const bool closed = transfer.file.Close();
    transfer.state = fetched && closed ? State::Good : State::Failed;
    return 0;
}

/// Follows redirections itself: WinINet would have asked a server of any scheme before it said so.
bool Transfer::Fetch() {
    for (int redirections = 0; redirections <= mostRedirections; ++redirections) {
        if (!Ask())
            return false;
        const int status = StatusOf(request.Get());
        if (!IsRedirection(status))
            return status == 200 && Receive() && HasAll();
        char place[HttpTarget::longestUrl + 1];
        char whole[HttpTarget::longestUrl + 1];
        char before[HttpTarget::longestUrl + 1];
        DWORD size = sizeof whole;
        DWORD sizeBefore = sizeof before;
        const bool wasSecure = target.IsSecure();
        if (!Field(request.Get(), HTTP_QUERY_LOCATION, place) ||
            InternetQueryOptionA(request.Get(), INTERNET_OPTION_URL, before, &sizeBefore) ==
                FALSE ||
            InternetCombineUrlA(before, place, whole, &size, ICU_NO_ENCODE) == FALSE ||
            !target.Set(whole) || (wasSecure && !target.IsSecure()))
            return false;
        LetGo();
    }
    return false;
}

/// Sends the request and waits for the head of the reply.
bool Transfer::Ask() {
    {
        const Held held(handing);
        if (stopped)
            return false;
        connection.Reset(InternetConnectA(session, target.Host(), target.Port(),
                                          /*lpszUserName=*/nullptr, /*lpszPassword=*/nullptr,
                                          INTERNET_SERVICE_HTTP, /*dwFlags=*/0, /*dwContext=*/0));
        if (!connection)
            return false;
        request.Reset(HttpOpenRequestA(
            connection.Get(), "GET", target.Path(), /*lpszVersion=*/nullptr,
            /*lpszReferrer=*/nullptr, /*lplpszAcceptTypes=*/nullptr,
            requestFlags | (target.IsSecure() ? INTERNET_FLAG_SECURE : 0), /*dwContext=*/0));
        if (!request)
            return false;
    }
    return HttpSendRequestA(request.Get(), /*lpszHeaders=*/nullptr, /*dwHeadersLength=*/0,
                            /*lpOptional=*/nullptr, /*dwOptionalLength=*/0) != FALSE;
}

/// Writes what comes as soon as it comes, so that progress is seen on slow lines.
bool Transfer::Receive() {
    char text[32];
    unsigned long long length = 0;
    lengthKnown = !Field(request.Get(), HTTP_QUERY_TRANSFER_ENCODING, text) &&
                  Field(request.Get(), HTTP_QUERY_CONTENT_LENGTH, text) &&
                  ParseLength(text, length);
    total = length;
    while (!stopped) {
        DWORD here = 0;
        DWORD got = 0;
        DWORD written = 0;
        if (InternetQueryDataAvailable(request.Get(), &here, /*dwFlags=*/0, /*dwContext=*/0) ==
                FALSE ||
            InternetReadFile(request.Get(), bytes, std::min<DWORD>(here, sizeof bytes), &got) ==
                FALSE)
            return false;
        if (got == 0)
            return true;
        if (WriteFile(file.Get(), bytes, got, &written, /*lpOverlapped=*/nullptr) == FALSE ||
            written != got)
            return false;
        received += got;
    }
    return false;
}

bool Transfer::HasAll() {
    return !stopped && (!lengthKnown || received == total);
}

/// Closing the handles ends what waits at them.
void Transfer::LetGo() {
    const Held held(handing);
    request.Reset();
    connection.Reset();
}

} // namespace vtr
