// The thread of a lookup. It keeps the lookup in place only while it takes a request and while it
// ends a search; what takes long, transfers and reading, it does with what is its own.

#include "common/WidePath.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/StoreCut.h"
#include "utilities/online/MusicBrainzInternals.h"

#include <new>
#include <utility>

using Internals = vtr::Internals<MusicBrainzLookup>;

namespace {

constexpr DWORD pollMilliseconds = 50;
constexpr DWORD pauseMilliseconds = 1000;
constexpr DWORD leaveMilliseconds = 10000;

vtr::KernelHandle MakeEvent() {
    return vtr::KernelHandle(CreateEventW(/*lpEventAttributes=*/nullptr, /*bManualReset=*/TRUE,
                                          /*bInitialState=*/FALSE, /*lpName=*/nullptr));
}

void DeleteIfThere(const char* path) {
    if (*path != '\0')
        DeleteFileW(vtr::WidePath(path, vtr::CurrentCodePage()).Get());
}

} // namespace

namespace vtr {

/// The file of the last reply, which is deleted with this.
class ReplyFile {
public:
    ReplyFile() = default;
    ReplyFile(const ReplyFile&) = delete;
    ReplyFile& operator=(const ReplyFile&) = delete;
    ~ReplyFile() { DeleteIfThere(path); }

    /// Deletes the last file and whatever has the new path. Nothing of an earlier reply can be read
    /// there when a transfer does not begin.
    void Begin(const char* newPath) {
        DeleteIfThere(path);
        StoreCut(newPath, path, sizeof path);
        DeleteIfThere(path);
    }

private:
    char path[260] = "";
};

} // namespace vtr

bool Internals::Stopped(const Link& link, DWORD milliseconds) {
    return WaitForSingleObject(link.stop.Get(), milliseconds) == WAIT_OBJECT_0;
}

void Internals::GiveUp(Link* link) {
    if (--link->users == 0)
        delete link;
}

bool Internals::MakeLink(MusicBrainzLookup& lookup) {
    auto* link = new (std::nothrow) Link;
    if (link == nullptr)
        return false;
    link->stop = MakeEvent();
    link->ended = MakeEvent();
    if (!link->stop || !link->ended) {
        delete link;
        return false;
    }
    link->lookup = &lookup;
    lookup.link = link;
    return true;
}

/// Makes the thread if there is none.
bool Internals::HasWorker(MusicBrainzLookup& lookup) {
    if (lookup.link != nullptr)
        return true;
    if (!MakeLink(lookup))
        return false;
    HMODULE& library = lookup.link->library;
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                           reinterpret_cast<const wchar_t*>(&Internals::Run), &library) != FALSE)
        lookup.worker =
            CreateThread(/*lpThreadAttributes=*/nullptr, /*dwStackSize=*/0, &Internals::Run,
                         lookup.link, /*dwCreationFlags=*/0, &lookup.workerId);
    if (lookup.worker != nullptr)
        return true;
    if (library != nullptr)
        FreeLibrary(library);
    delete std::exchange(lookup.link, nullptr);
    return false;
}

DWORD WINAPI Internals::Run(void* parameter) noexcept {
    auto* link = static_cast<Link*>(parameter);
    const HMODULE library = link->library;
    Serve(*link);
    GiveUp(link);
    FreeLibraryAndExitThread(library, /*dwExitCode=*/0);
}

unsigned long MusicBrainzLookup::MusicBrainzWorker(MusicBrainzLookup* lookup) noexcept {
    if (lookup == nullptr)
        return 0;
    Link* made = nullptr;
    {
        const Internals::Locked hold(lookup->lock);
        if (lookup->link == nullptr && Internals::MakeLink(*lookup)) {
            made = lookup->link;
            lookup->workerId = GetCurrentThreadId();
        }
    }
    if (made != nullptr) {
        Internals::Serve(*made);
        SetEvent(made->ended.Get());
        Internals::GiveUp(made);
    }
    return 0;
}

void Internals::Serve(Link& link) {
    ReplyFile file;
    while (!Stopped(link, pollMilliseconds)) {
        if (ServeNext(link, file))
            Stopped(link, pauseMilliseconds);
    }
}

/// True if a request reached the network.
bool Internals::ServeNext(Link& link, ReplyFile& file) {
    const OwnedRequest request = Take(link);
    if (request == nullptr)
        return false;
    file.Begin(request->localPath);
    const bool sent = Transfer(link, *request);
    MusicBrainzReply reply(request->type);
    const bool good = sent && !Stopped(link, 0) && reply.Read(request->localPath);
    Finish(link, *request, good ? &reply : nullptr);
    return sent;
}

/// Null if there is none. From here on the thread destroys it.
Internals::OwnedRequest Internals::Take(Link& link) {
    const Locked inPlace(link.gate);
    MusicBrainzLookup* lookup = link.lookup;
    if (lookup == nullptr)
        return nullptr;
    const Locked hold(lookup->lock);
    if (lookup->quit || lookup->pending == nullptr)
        return nullptr;
    lookup->pending->taken = true;
    return OwnedRequest(lookup->pending);
}

/// False if the transfer could not begin. Otherwise it has ended.
bool Internals::Transfer(Link& link, Request& request) {
    CInternetDownload& download = request.download;
    if (request.abandoned ||
        !download.StartDownload(request.session, request.url, request.localPath, /*flags=*/0))
        return false;
    request.started = true;
    while (download.IsDownloading()) {
        if (request.abandoned || Stopped(link, pollMilliseconds)) {
            download.TerminateDownload();
            break;
        }
    }
    return true;
}

/// Ends the search with the reply, or with an error for null. Does nothing but let go of the
/// request if the lookup wants it no longer.
void Internals::Finish(Link& link, const Request& request, MusicBrainzReply* reply) {
    const Locked inPlace(link.gate);
    MusicBrainzLookup* lookup = link.lookup;
    if (lookup == nullptr)
        return;
    const Locked hold(lookup->lock);
    if (lookup->pending != &request)
        return;
    lookup->pending = nullptr;
    Publish(*lookup, reply);
}

/// False if the thread has not ended: it took too long, or this is that thread, which reads a reply
/// and logs it to a host that destroys the lookup.
bool Internals::WaitForWorker(const MusicBrainzLookup& lookup) {
    if (lookup.workerId == GetCurrentThreadId())
        return false;
    const HANDLE end = lookup.worker != nullptr ? lookup.worker : lookup.link->ended.Get();
    return WaitForSingleObject(end, leaveMilliseconds) == WAIT_OBJECT_0;
}

void Internals::Stop(MusicBrainzLookup& lookup) {
    Link* link = lookup.link;
    if (link == nullptr)
        return;
    const KernelHandle thread(lookup.worker);
    {
        const Locked hold(lookup.lock);
        lookup.quit = true;
    }
    SetEvent(link->stop.Get());
    OwnedRequest old;
    if (WaitForWorker(lookup)) {
        old = Replace(lookup, nullptr);
    } else {
        // The thread destroys the request that it has taken only after it has held the gate.
        const Locked inPlace(link->gate);
        link->lookup = nullptr;
        old = Replace(lookup, nullptr);
    }
    GiveUp(link);
}
