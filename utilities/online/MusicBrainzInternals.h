#ifndef VTRUTILS_ONLINE_MUSICBRAINZINTERNALS_H
#define VTRUTILS_ONLINE_MUSICBRAINZINTERNALS_H

#include "common/Owner.h"
#include "utilities/base/Layout.h"
#include "utilities/base/ScopedLock.h"
#include "utilities/online/CDLookupInternals.h"
#include "utilities/online/MusicBrainzLookup.h"
#include "utilities/online/MusicBrainzReply.h"
#include "vtrfutls/InternetDownload.h"

#include <atomic>
#include <memory>

/// A search on its way to the service. Until the thread has taken it, it is destroyed by who takes
/// it out of `pending`, afterwards by the thread. Private to the library. Locked by the lookup, but
/// for the download.
struct MusicBrainzLookup::Request {
    char localPath[260];
    char url[2048];
    CInternetDownload download; ///< started and ended by the thread alone
    void* session = nullptr;
    _cdRequestType type = cdArtistSearch;
    bool taken = false;
    std::atomic<bool> started{false};   ///< the download's counts are those of this transfer
    std::atomic<bool> abandoned{false}; ///< the transfer is to end, or not to begin
};

/// What a lookup and its thread share; the last of the two deletes it. Private to the library.
struct MusicBrainzLookup::Link {
    /// The thread holds it while it is at the lookup, which does not go away meanwhile. It is taken
    /// before the lookup's own lock.
    CLock gate;
    MusicBrainzLookup* lookup = nullptr; ///< null once it is destroyed
    vtr::KernelHandle stop;              ///< tells the thread to end
    vtr::KernelHandle ended;             ///< told by a thread that is not the lookup's own
    std::atomic<int> users{2};
    HMODULE library = nullptr; ///< kept loaded by a thread that the lookup made
};

namespace vtr {

class ReplyFile;

/// Private to the library.
template <>
struct Internals<MusicBrainzLookup> {
    static_assert(sizeof(MusicBrainzLookup) == vtr::ByPointer(640, 488));
    VTR_FIELD_AT(MusicBrainzLookup, lock, 296, 176);
    VTR_FIELD_AT(MusicBrainzLookup, access, 336, 200);
    VTR_FIELD_AT(MusicBrainzLookup, tempFolder, 344, 204);
    VTR_FIELD_AT(MusicBrainzLookup, worker, 608, 468);
    VTR_FIELD_AT(MusicBrainzLookup, workerId, 616, 472);
    VTR_FIELD_AT(MusicBrainzLookup, quit, 620, 476);
    VTR_FIELD_AT(MusicBrainzLookup, pending, 624, 480);
    VTR_FIELD_AT(MusicBrainzLookup, link, 632, 484);

    using Request = MusicBrainzLookup::Request;
    using Link = MusicBrainzLookup::Link;
    using OwnedRequest = std::unique_ptr<Request>;
    using Locked = ScopedLock<CLock>;

    static constexpr std::size_t urlSize = sizeof Request::url;

    // The lookup's side. The second group requires its lock.

    static bool Post(MusicBrainzLookup& lookup, _cdRequestType type, const char* url,
                     int urlLength);
    static void Stop(MusicBrainzLookup& lookup);
    static bool WaitForWorker(const MusicBrainzLookup& lookup);

    static OwnedRequest Replace(MusicBrainzLookup& lookup, Request* next);
    static bool MakePath(const MusicBrainzLookup& lookup, char (&path)[260]);
    static void Publish(MusicBrainzLookup& lookup, MusicBrainzReply* reply);
    static bool MakeLink(MusicBrainzLookup& lookup);
    static bool HasWorker(MusicBrainzLookup& lookup);

    // The thread's side.

    static DWORD WINAPI Run(void* link) noexcept;
    static void Serve(Link& link);
    static bool ServeNext(Link& link, ReplyFile& file);
    static OwnedRequest Take(Link& link);
    static bool Transfer(Link& link, Request& request);
    static void Finish(Link& link, const Request& request, MusicBrainzReply* reply);

    static bool Stopped(const Link& link, DWORD milliseconds);
    static void GiveUp(Link* link);
};

} // namespace vtr

#endif
