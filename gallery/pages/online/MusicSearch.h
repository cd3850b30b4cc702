#ifndef VTRUTILS_GALLERY_PAGES_ONLINE_MUSICSEARCH_H
#define VTRUTILS_GALLERY_PAGES_ONLINE_MUSICSEARCH_H

#include "utilities/online/MusicBrainzLookup.h"
#include "vtrfutls/InternetAccess.h"

#include <memory>
#include <string>
#include <vector>

namespace gallery {

enum class MusicLevel { artists, albums, songs };

/// A row of results: an artist, an album or a song.
struct MusicRow {
    std::string id; ///< "" for songs
    std::vector<std::wstring> cells;
};

/// What was asked, and a page of what was found.
struct MusicList {
    MusicLevel level = MusicLevel::artists;
    std::wstring of;     ///< the artist of albums, the album of songs; "" for a search by name
    std::string id;      ///< of that artist or album
    std::wstring artist; ///< what a search by name asks for
    std::wstring title;
    int offset = 0;
    int total = 0;
    std::vector<MusicRow> rows;
};

/// Looks up artists, their albums and the songs of these. The lists that led to the one on show are
/// kept, so that going back asks nobody. One thread at a time.
class MusicSearch {
public:
    static constexpr int pageSize = 100;

    enum class State {
        idle,    ///< nothing is under way
        running, ///< `Poll` is to be called again
        found,
        cancelled,
        notStarted, ///< the question is too long, or memory ran out
        failed      ///< no reply, or one of another kind
    };

    MusicSearch();
    ~MusicSearch();

    // Each of these does nothing while a search runs.
    /// Artists with this name; with a title, albums. Starts anew.
    void Search(const std::wstring& artist, const std::wstring& title);
    /// The albums of the artist, or the songs of the album, in this row.
    void Open(int row);
    /// The results from this one on.
    void GoTo(int offset);
    void Back();

    State Poll();
    void Cancel();
    int PercentDone();

    State Current() const { return state; }
    /// Null before anything was found.
    const MusicList* List() const { return lists.empty() ? nullptr : &lists.back(); }
    bool HasBack() const { return lists.size() > 1; }
    bool HasNext() const;

private:
    enum class Way { anew, deeper, inPlace };
    void Post(MusicList question, Way newWay);
    bool Ask(const MusicList& question);
    void Take(CMyList& found);

    MyInternetAccess access{"vtrutils gallery"};
    std::string folder; ///< for replies; "" when there is none
    std::unique_ptr<MusicBrainzLookup> lookup;
    State state = State::idle;
    bool stopping = false;
    Way way = Way::anew;
    MusicList asked;
    std::vector<MusicList> lists; ///< the last one is on show
};

} // namespace gallery

#endif
