#include "vtrfutls/Transfer.h"

#include "common/WidePath.h"
#include "vtrfutls/FileNames.h"
#include "vtrfutls/Interruption.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <new>
#include <utility>

namespace {

constexpr int mostRedirections = 10;
constexpr DWORD requestFlags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE |
                               INTERNET_FLAG_PRAGMA_NOCACHE | INTERNET_FLAG_NO_COOKIES |
                               INTERNET_FLAG_NO_UI | INTERNET_FLAG_NO_AUTO_REDIRECT;
/// A connection that is kept would outlive the transfer by a minute.
constexpr char requestHeaders[] = "Connection: close\r\n";
constexpr DWORD longestLocation = 8192;
constexpr DWORD largestRead = 256 * 1024;
constexpr DWORD stackSize = 1024 * 1024; // for such a read, whatever the host's threads have
constexpr DWORD longestReadingOn = 500;  // milliseconds

using Holder = vtr::CriticalLock::Holder;

/// A field of the reply's head; false if it is not there or does not fit.
template <std::size_t size>
bool Field(HINTERNET request, DWORD which, char (&text)[size]) {
    DWORD length = size;
    return HttpQueryInfoA(request, which, text, &length, /*lpdwIndex=*/nullptr) != FALSE;
}

/// False for a field that is not a number of digits alone.
bool NumberField(HINTERNET request, DWORD which, unsigned long long& number) {
    char text[32];
    char* end = nullptr;
    if (!Field(request, which, text) || *text < '0' || *text > '9')
        return false;
    errno = 0;
    number = std::strtoull(text, &end, 10);
    return *end == '\0' && errno == 0;
}

/// False where the server announced no length, as for a reply in chunks.
bool AnnouncedLength(HINTERNET request, unsigned long long& length) {
    char text[32];
    return !Field(request, HTTP_QUERY_TRANSFER_ENCODING, text) &&
           NumberField(request, HTTP_QUERY_CONTENT_LENGTH, length);
}

unsigned long long StatusOf(HINTERNET request) {
    unsigned long long status = 0;
    NumberField(request, HTTP_QUERY_STATUS_CODE, status);
    return status;
}

/// How much to ask for at once. A read waits until all of it is there: on a slow line that would
/// hide the progress, and small reads take most of the time on a fast one. So as long as reads end
/// quickly, the next one is larger; otherwise it takes what is there.
class ReadSize {
public:
    /// False when the connection has failed.
    bool Next(HINTERNET request, DWORD& next) {
        next = 0;
        if (size == 0 && InternetQueryDataAvailable(request, &next, /*dwFlags=*/0,
                                                    /*dwContext=*/0) == FALSE)
            return false;
        next = size == 0 && next < plenty ? next : std::clamp(2 * size, plenty, largestRead);
        size = next < plenty ? 0 : next;
        begin = GetTickCount();
        return true;
    }

    void WasRead() {
        if (GetTickCount() - begin > quick)
            size = size / 4 < plenty ? 0 : size / 4; // the next is twice that
    }

private:
    static constexpr DWORD plenty = 4096;
    static constexpr DWORD quick = 100; // milliseconds
    DWORD size = 0;                     ///< 0: what is there
    DWORD begin = 0;
};

bool IsRedirection(unsigned long long status) {
    return (status >= 301 && status <= 303) || status == 307 || status == 308;
}

} // namespace

namespace vtr {

Transfer* Transfer::Start(HINTERNET session, const char* url, const char* localPath,
                          KernelHandle& thread) {
    auto* transfer = new (std::nothrow) Transfer;
    if (transfer == nullptr)
        return nullptr;
    transfer->session = session;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const wchar_t*>(&Transfer::Run), &transfer->library);
    if (transfer->library != nullptr && transfer->Open(url, localPath)) {
        thread.Reset(CreateThread(/*lpThreadAttributes=*/nullptr, stackSize, &Transfer::Run,
                                  transfer, STACK_SIZE_PARAM_IS_A_RESERVATION,
                                  /*lpThreadId=*/nullptr));
        if (thread)
            return transfer;
        transfer->file.Close();
        DeleteFileW(WidePath(localPath, GetCodePageForFiles()).Get());
    }
    if (transfer->library != nullptr)
        FreeLibrary(transfer->library);
    delete transfer;
    return nullptr;
}

bool Transfer::Open(const char* url, const char* localPath) {
    if (!target.Set(url))
        return false;
    file.Reset(CreateFileW(WidePath(localPath, GetCodePageForFiles()).Get(), GENERIC_WRITE,
                           FILE_SHARE_READ | FILE_SHARE_DELETE,
                           /*lpSecurityAttributes=*/nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                           /*hTemplateFile=*/nullptr));
    return static_cast<bool>(file);
}

void Transfer::Abandon() {
    End(/*good=*/false);
}

void Transfer::Release() {
    if (--users == 0)
        delete this;
}

DWORD WINAPI Transfer::Run(void* parameter) noexcept {
    auto* transfer = static_cast<Transfer*>(parameter);
    const HMODULE library = transfer->library;
    {
        const InterruptibleSockets interruptible;
        const bool good = transfer->Fetch();
        transfer->End(good);
        transfer->CloseRequest();
    }
    transfer->Release();
    FreeLibraryAndExitThread(library, 0);
}

/// The last word of the transfer, which is said once: by the thread or by who abandons it.
void Transfer::End(bool good) {
    const Holder held(lock);
    const bool closed = file.Close();
    if (IsRunning())
        state = good && closed ? State::Good : State::Failed;
}

/// Redirections are followed here: WinINet would ask a server of any scheme before it said so.
bool Transfer::Fetch() {
    for (int redirections = 0; redirections <= mostRedirections; ++redirections) {
        const HINTERNET asked = Ask();
        if (asked == nullptr)
            return false;
        const unsigned long long status = StatusOf(asked);
        if (!IsRedirection(status))
            return status == HTTP_STATUS_OK && Receive(asked);
        if (!Redirect(asked))
            return false;
        CloseRequest();
    }
    return false;
}

/// Sends the request and waits for the head of the reply. Null if none came.
HINTERNET Transfer::Ask() {
    HINTERNET opened = nullptr;
    {
        const Holder held(lock);
        if (stopped)
            return nullptr;
        connection.Reset(InternetConnectA(session, target.Host(), target.Port(),
                                          /*lpszUserName=*/nullptr, /*lpszPassword=*/nullptr,
                                          INTERNET_SERVICE_HTTP, /*dwFlags=*/0, /*dwContext=*/0));
        if (connection)
            opened = HttpOpenRequestA(connection.Get(), "GET", target.Path(),
                                      /*lpszVersion=*/nullptr, /*lpszReferrer=*/nullptr,
                                      /*lplpszAcceptTypes=*/nullptr,
                                      requestFlags | (target.IsSecure() ? INTERNET_FLAG_SECURE : 0),
                                      /*dwContext=*/0);
        request.Reset(opened);
    }
    const bool answered = opened != nullptr &&
                          HttpSendRequestA(opened, requestHeaders, sizeof requestHeaders - 1,
                                           /*lpOptional=*/nullptr, /*dwOptionalLength=*/0) != FALSE;
    return answered ? opened : nullptr;
}

bool Transfer::Redirect(HINTERNET asked) {
    char here[longestLocation];
    char place[longestLocation];
    char whole[longestLocation];
    DWORD sizeOfHere = sizeof here;
    DWORD size = sizeof whole;
    const bool wasSecure = target.IsSecure();
    return Field(asked, HTTP_QUERY_LOCATION, place) &&
           InternetQueryOptionA(asked, INTERNET_OPTION_URL, here, &sizeOfHere) != FALSE &&
           InternetCombineUrlA(here, place, whole, &size, ICU_NO_ENCODE) != FALSE &&
           target.Set(whole) && (target.IsSecure() || !wasSecure);
}

/// Writes what comes. WinINet calls a reply complete that broke off before its end, or even in its
/// head; it hands out what comes after the end.
bool Transfer::Receive(HINTERNET asked) {
    unsigned long long length = 0;
    const bool lengthIsKnown = AnnouncedLength(asked, length);
    if (lengthIsKnown)
        total = length;
    char bytes[largestRead];
    ReadSize size;
    while (!lengthIsKnown || received < length) {
        DWORD got = 0;
        DWORD wanted = 0;
        if (!size.Next(asked, wanted))
            return false;
        unsigned long long most = std::min(wanted, largestRead);
        if (lengthIsKnown)
            most = std::min(most, length - received);
        if (InternetReadFile(asked, bytes, static_cast<DWORD>(most), &got) == FALSE)
            return false;
        size.WasRead();
        if (got == 0)
            return !lengthIsKnown && received > 0;
        if (!Write(bytes, got)) {
            LoseConnection(asked, bytes, sizeof bytes);
            return false;
        }
    }
    return true;
}

/// Closing a request may read on, to keep its connection, for as long as the server sends without a
/// pause. A read that failed has closed it: here one that is cancelled. Gives up after a while.
void Transfer::LoseConnection(HINTERNET asked, char* bytes, DWORD size) const {
    const DWORD begin = GetTickCount();
    DWORD got = 0;
    while (stopped && GetTickCount() - begin < longestReadingOn &&
           InternetReadFile(asked, bytes, size, &got) != FALSE && got != 0) {
    }
}

bool Transfer::Write(const char* bytes, DWORD count) {
    const Holder held(lock);
    DWORD written = 0;
    if (stopped ||
        WriteFile(file.Get(), bytes, count, &written, /*lpOverlapped=*/nullptr) == FALSE ||
        written != count)
        return false;
    received += count;
    return true;
}

void Transfer::CloseRequest() {
    InternetHandle lastConnection;
    InternetHandle lastRequest;
    const Holder held(lock);
    std::swap(request, lastRequest);
    std::swap(connection, lastConnection);
}

} // namespace vtr
