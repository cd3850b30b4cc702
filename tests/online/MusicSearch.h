#ifndef VTRUTILS_TESTS_ONLINE_MUSICSEARCH_H
#define VTRUTILS_TESTS_ONLINE_MUSICSEARCH_H

#include "common/Owner.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/RecordedServices.h"
#include "tests/support/TestFolder.h"
#include "utilities/online/MusicBrainzLookup.h"
#include "utilities/online/ServiceHosts.h"
#include "vtrfutls/InternetAccess.h"

#include <atomic>
#include <gtest/gtest.h>
#include <string>

inline std::string Shown(const _cdArtistItem& artist) {
    return std::string(artist.identifier) + "|" + artist.displayName;
}
inline std::string Shown(const _cdAlbumItem& album) {
    return std::string(album.identifier) + "|" + album.title + "|" + album.artistName + "|" +
           album.date + "|" + album.type + "|" + std::to_string(album.numTracks);
}
inline std::string Shown(const _cdSongItem& song) {
    return std::string(song.title) + "|" + std::to_string(song.duration);
}

/// "error", or the count, ":" and a line for each record.
template <class Record>
std::string Outcome(CDLookup& lookup) {
    bool error = false;
    int count = -1;
    CMyList* list = nullptr;
    lookup.GetSearchResults(error, count, list);
    if (error || list == nullptr) {
        EXPECT_TRUE(error && count == 0 && list == nullptr);
        return "error";
    }
    std::string text = std::to_string(count) + ":";
    for (int i = 0; i < list->NumNodes(); ++i)
        text += "\n" + Shown(*static_cast<const Record*>(list->Index(i, nullptr)));
    return text;
}

/// When the search has ended.
template <class Record = _cdArtistItem>
std::string Finished(CDLookup& lookup) {
    while (!lookup.IsSearchComplete())
        Sleep(1);
    return Outcome<Record>(lookup);
}

/// The library's waits for posted searches and transfers take no time while it lives, nor do the
/// pauses after replies. A test may hold the threads that wait.
class QuickWaits {
public:
    QuickWaits()
        : patch(GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "WaitForSingleObject",
                reinterpret_cast<void*>(&Wait)) {}

    static void Hold() { ResetEvent(open.Get()); }
    static void LetGo() { SetEvent(open.Get()); }
    static inline std::atomic<DWORD> leave{10000}; ///< how long a destructor waits

private:
    static DWORD WINAPI Wait(HANDLE object, DWORD milliseconds) {
        if (milliseconds == 50)
            WaitForSingleObject(open.Get(), INFINITE);
        else if (milliseconds == 10000)
            milliseconds = leave;
        return WaitForSingleObject(object,
                                   milliseconds == 50 || milliseconds == 1000 ? 1 : milliseconds);
    }

    static inline const vtr::KernelHandle open{CreateEventA(nullptr, TRUE, TRUE, nullptr)};
    ImportPatch patch;
};

/// The recorded services, and what a lookup needs to ask them.
struct MusicServices {
    MusicServices() {
        ServiceControl("reset");
        EXPECT_TRUE(SetMusicLookupHost(ServiceAddress("plain").c_str()));
    }
    MusicServices(const MusicServices&) = delete;
    MusicServices& operator=(const MusicServices&) = delete;
    ~MusicServices() {
        SetMusicLookupHost(nullptr);
        EXPECT_EQ(folder.Listing(), "");
    }

    TestFolder folder;
    MyInternetAccess access{"online_test", /*throughProxy=*/false};
};

/// A lookup that asks them for artists of this name, which may tell of a fault.
class MusicSearch : public MusicBrainzLookup {
public:
    explicit MusicSearch(MusicServices& services)
        : MusicBrainzLookup(&services.access, services.folder.Path().c_str()) {}
    using MusicBrainzLookup::MusicBrainzWorker;

    bool Post(std::string name) { return SearchArtists(name.data(), 0); }
    std::string Run(const std::string& name) { return Post(name) ? Finished(*this) : "refused"; }
};

/// Reads replies from files.
class ReplyReader : public MusicBrainzLookup {
public:
    explicit ReplyReader(const TestFolder& place, MyInternetAccess* session = nullptr)
        : MusicBrainzLookup(session, place.Path().c_str()), folder(place) {}

    std::string Read(_cdRequestType type, const std::string& reply) {
        folder.Write("TEMPFILENAME", reply);
        requestType = type;
        ParseResults(this);
        EXPECT_TRUE(IsSearchComplete());
        if (type == cdArtistSearch)
            return Outcome<_cdArtistItem>(*this);
        return type == cdSongsOfAlbum ? Outcome<_cdSongItem>(*this) : Outcome<_cdAlbumItem>(*this);
    }

private:
    const TestFolder& folder;
};

#endif
