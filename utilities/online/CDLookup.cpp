#include "utilities/online/CDLookup.h"

#include "utilities/online/CDLookupInternals.h"

#include <atomic>
#include <cstdlib>

using Internals = vtr::Internals<CDLookup>;

CMyList& Internals::ListOf(CDLookup& lookup, _cdRequestType type) {
    if (type == cdArtistSearch)
        return lookup.artists;
    return type == cdSongsOfAlbum ? lookup.songs : lookup.albums;
}

void Internals::Erase(CMyList& list) {
    for (const _tNode_t* node = list.NodeByIndex(0); node != nullptr; node = node->next)
        std::free(node->item);
    list.RemoveAll();
}

CDLookup::CDLookup() noexcept
    : requestType(cdArtistSearch), error(false), searchComplete(false), results(nullptr),
      resultCount(0) {}

CDLookup::CDLookup(const CDLookup& other) noexcept : CDLookup() {
    *this = other;
}

CDLookup& CDLookup::operator=(const CDLookup& other) noexcept {
    if (this == &other)
        return *this;
    EraseArtistsList();
    EraseAlbumsList();
    EraseSongsList();
    requestType = other.requestType;
    error = other.error;
    results = other.results != nullptr ? &Internals::ListOf(*this, requestType) : nullptr;
    resultCount = other.resultCount;
    SetSearchComplete(other.searchComplete);
    return *this;
}

CDLookup::~CDLookup() {
    EraseArtistsList();
    EraseAlbumsList();
    EraseSongsList();
}

bool CDLookup::IsSearchComplete() {
    return std::atomic_ref<bool>(searchComplete).load(std::memory_order_acquire);
}

void CDLookup::SetSearchComplete(bool complete) noexcept {
    std::atomic_ref<bool>(searchComplete).store(complete, std::memory_order_release);
}

void CDLookup::EraseArtistsList() noexcept {
    Internals::Erase(artists);
}

void CDLookup::EraseAlbumsList() noexcept {
    Internals::Erase(albums);
}

void CDLookup::EraseSongsList() noexcept {
    Internals::Erase(songs);
}
