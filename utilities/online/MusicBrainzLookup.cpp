#include "utilities/online/MusicBrainzLookup.h"

#include "utilities/base/StoreCut.h"
#include "utilities/online/MusicBrainzInternals.h"
#include "utilities/online/ServiceUrl.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <utility>

using Internals = vtr::Internals<MusicBrainzLookup>;
using Locked = Internals::Locked;

bool Internals::MakePath(const MusicBrainzLookup& lookup, char (&path)[260]) {
    const int length = std::snprintf(path, sizeof path, "%sTEMPFILENAME", lookup.tempFolder);
    return length > 0 && static_cast<std::size_t>(length) < sizeof path;
}

/// Returns what was pending if it is to be destroyed now: no thread has taken it.
Internals::OwnedRequest Internals::Replace(MusicBrainzLookup& lookup, Request* next) {
    OwnedRequest old(std::exchange(lookup.pending, next));
    if (old != nullptr && old->taken) {
        old->abandoned = true;
        static_cast<void>(old.release());
    }
    return old;
}

bool Internals::Post(MusicBrainzLookup& lookup, _cdRequestType type, const char* url,
                     int urlLength) {
    OwnedRequest request(new (std::nothrow) Request);
    if (request == nullptr || urlLength < 0 || static_cast<std::size_t>(urlLength) >= urlSize)
        return false;
    StoreCut(url, request->url, urlSize);
    request->type = type;
    OwnedRequest old; // destroyed without the lock
    const Locked hold(lookup.lock);
    if (lookup.access == nullptr || !MakePath(lookup, request->localPath) || !HasWorker(lookup))
        return false;
    // The handle is the session's first member.
    request->session = *reinterpret_cast<void* const*>(lookup.access);
    lookup.SetSearchComplete(false);
    lookup.requestType = type;
    lookup.error = false;
    lookup.results = nullptr;
    lookup.resultCount = 0;
    vtr::Internals<CDLookup>::Erase(vtr::Internals<CDLookup>::ListOf(lookup, type));
    old = Replace(lookup, request.release());
    return true;
}

/// Ends the search with these records, or with an error for null.
void Internals::Publish(MusicBrainzLookup& lookup, MusicBrainzReply* reply) {
    CMyList* list = nullptr;
    if (reply != nullptr) {
        list = &vtr::Internals<CDLookup>::ListOf(lookup, lookup.requestType);
        vtr::Internals<CDLookup>::Erase(*list);
        reply->MoveTo(*list);
    }
    lookup.error = reply == nullptr;
    lookup.results = list;
    lookup.resultCount = reply != nullptr ? reply->Total() : 0;
    lookup.SetSearchComplete(true);
}

MusicBrainzLookup::MusicBrainzLookup(MyInternetAccess* session, const char* folder) noexcept
    : access(session), tempFolder(), worker(nullptr), workerId(0), quit(false), pending(nullptr),
      link(nullptr) {
    // A folder that is cut here is too long for the file's path, too.
    vtr::StoreCut(folder != nullptr ? folder : "", tempFolder, sizeof tempFolder);
    const Locked hold(lock);
    Internals::HasWorker(*this);
}

// The base is copied with all else, under the lock. NOLINTNEXTLINE(bugprone-copy-constructor-init)
MusicBrainzLookup::MusicBrainzLookup(const MusicBrainzLookup& other) noexcept
    : CDLookup(), access(nullptr), tempFolder(), worker(nullptr), workerId(0), quit(false),
      pending(nullptr), link(nullptr) {
    *this = other;
}

MusicBrainzLookup& MusicBrainzLookup::operator=(const MusicBrainzLookup& other) noexcept {
    if (this == &other)
        return *this;
    Internals::OwnedRequest old;
    // In the same order on all threads: two lookups may be assigned to each other at once.
    const Locked first(std::min(this, const_cast<MusicBrainzLookup*>(&other))->lock);
    const Locked second(std::max(this, const_cast<MusicBrainzLookup*>(&other))->lock);
    old = Internals::Replace(*this, nullptr);
    CDLookup::operator=(other);
    access = other.access;
    vtr::StoreCut(other.tempFolder, tempFolder, sizeof tempFolder);
    return *this;
}

MusicBrainzLookup::~MusicBrainzLookup() {
    Internals::Stop(*this);
}

bool MusicBrainzLookup::SearchArtists(char* name, int offset) noexcept {
    if (name == nullptr)
        return false;
    char url[Internals::urlSize];
    const int length =
        std::snprintf(url, sizeof url, "%s/ws/1/artist/?type=xml&offset=%i&limit=100&name=%s",
                      vtr::MusicLookupUrl().text, offset, name);
    return Internals::Post(*this, cdArtistSearch, url, length);
}

bool MusicBrainzLookup::SearchAlbums(char* artist, char* title, int offset) noexcept {
    if (artist == nullptr || title == nullptr)
        return false;
    char url[Internals::urlSize];
    const int length = std::snprintf(url, sizeof url,
                                     "%s/ws/1/release/?type=xml&offset=%i&releasetypes=Official"
                                     "&limit=100&artist=%s&title=%s",
                                     vtr::MusicLookupUrl().text, offset, artist, title);
    return Internals::Post(*this, cdAlbumSearch, url, length);
}

bool MusicBrainzLookup::GetAlbums(char* artistId, int offset) noexcept {
    if (artistId == nullptr)
        return false;
    char url[Internals::urlSize];
    const int length = std::snprintf(url, sizeof url,
                                     "%s/ws/1/release/?type=xml&offset=%i&releasetypes=Official"
                                     "&limit=100&artistid=%s",
                                     vtr::MusicLookupUrl().text, offset, artistId);
    return Internals::Post(*this, cdAlbumsOfArtist, url, length);
}

bool MusicBrainzLookup::GetSongs(char* releaseId) noexcept {
    if (releaseId == nullptr)
        return false;
    char url[Internals::urlSize];
    const int length = std::snprintf(url, sizeof url, "%s/ws/1/release/%s?type=xml&inc=tracks",
                                     vtr::MusicLookupUrl().text, releaseId);
    return Internals::Post(*this, cdSongsOfAlbum, url, length);
}

int MusicBrainzLookup::GetPercentageComplete() noexcept {
    const Locked hold(lock);
    if (pending == nullptr || error)
        return 100;
    const unsigned long long total = pending->started ? pending->download.TotalBytes() : 0;
    if (total == 0)
        return 0;
    const unsigned long long received = std::min(pending->download.BytesReceived(), total);
    return static_cast<int>(received * 100 / total);
}

void MusicBrainzLookup::GetSearchResults(bool& errorOut, int& countOut,
                                         CMyList*& listOut) noexcept {
    const Locked hold(lock);
    errorOut = error;
    countOut = error ? 0 : resultCount;
    listOut = error ? nullptr : results;
}

void MusicBrainzLookup::CancelCurrentSearch() noexcept {
    const Locked hold(lock);
    if (pending != nullptr)
        pending->abandoned = true;
}

void MusicBrainzLookup::ParseResults(MusicBrainzLookup* lookup) noexcept {
    if (lookup == nullptr)
        return;
    const Locked hold(lookup->lock);
    char path[260];
    vtr::MusicBrainzReply reply(lookup->requestType);
    const bool good = Internals::MakePath(*lookup, path) && reply.Read(path);
    Internals::Publish(*lookup, good ? &reply : nullptr);
}
