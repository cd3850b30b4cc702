#ifndef VTRUTILS_TESTS_ONLINE_MUSICSEARCH_H
#define VTRUTILS_TESTS_ONLINE_MUSICSEARCH_H

#include "common/Owner.h"
#include "tests/online/OnlineServices.h"
#include "tests/support/ImportPatch.h"
#include "utilities/online/MusicBrainzLookup.h"

#include <atomic>

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

/// A lookup that asks for artists of a name, which may tell of a fault.
class MusicSearch : public MusicBrainzLookup {
public:
    explicit MusicSearch(OnlineServices& services)
        : MusicBrainzLookup(&services.access, services.folder.Path().c_str()) {}
    using MusicBrainzLookup::MusicBrainzWorker;

    bool Post(std::string name) { return SearchArtists(name.data(), 0); }
    std::string Run(const std::string& name) { return Post(name) ? Finished(*this) : "refused"; }

    /// To where it shows progress.
    void PostToHalf(const std::string& name = "fault-hold") {
        EXPECT_TRUE(Post(name));
        while (GetPercentageComplete() == 0)
            Sleep(1);
    }
};

#endif
