#ifndef VTRUTILS_ONLINE_CDLOOKUP_H
#define VTRUTILS_ONLINE_CDLOOKUP_H

#include "utilities/Export.h"
#include "utilities/containers/MyList.h"

#include <cstddef>

/// What a search finds. Texts are bytes as the service sent them (UTF-8), with references such as
/// "&amp;" decoded as `DeHTMLifyString` does, but in identifiers. They are terminated, and cut to
/// their field's size - 1 bytes, even within a character. What the service did not send is "" or 0.
struct _cdArtistItem {
    char identifier[128];  ///< for `GetAlbums`
    char displayName[256]; ///< the name and, if the service tells artists apart, " (UK band)"
};
static_assert(sizeof(_cdArtistItem) == 384 && offsetof(_cdArtistItem, displayName) == 128);

/// An album, with texts as above.
struct _cdAlbumItem {
    char identifier[128]; ///< for `GetSongs`
    char title[256];      ///< of the album
    char artistName[256]; ///< of its artists
    char date[64];        ///< of release, as sent
    char type[64];        ///< such as "Album Official"
    int numTracks;        ///< as sent, even if negative
};
static_assert(sizeof(_cdAlbumItem) == 772 && offsetof(_cdAlbumItem, title) == 128 &&
              offsetof(_cdAlbumItem, artistName) == 384 && offsetof(_cdAlbumItem, date) == 640 &&
              offsetof(_cdAlbumItem, type) == 704 && offsetof(_cdAlbumItem, numTracks) == 768);

/// A song, with texts as above.
struct _cdSongItem {
    char title[256]; ///< of the song
    int duration;    ///< in milliseconds, as sent
};
static_assert(sizeof(_cdSongItem) == 260 && offsetof(_cdSongItem, duration) == 256);

/// What a search looks for.
enum _cdRequestType : int {
    cdArtistSearch = 0,
    cdAlbumSearch = 1,
    cdAlbumsOfArtist = 2,
    cdSongsOfAlbum = 3
};

/// A service that is asked for artists, their albums and the songs on these: one search at a time,
/// whose results stay with the object. A host posts a search, asks `IsSearchComplete` until that is
/// true, and takes the results. The order of fields and virtual operations is fixed.
/// Thread-safety: as the derived class says; `IsSearchComplete` is locked by itself.
class VTRUTILS_API CDLookup {
public:
    CDLookup() noexcept;

    /// Copies request type, flags and count, but no records: the result list of the copy is its own
    /// list of the same kind, and empty. Assignment frees the records that were there.
    CDLookup(const CDLookup& other) noexcept;
    CDLookup& operator=(const CDLookup& other) noexcept;

    /// Frees all records.
    virtual ~CDLookup();

    // The searches fetch one page, of up to 100 entries from number `offset` on; songs come all at
    // once. The texts are put into the request as they are, so the host encodes what has a meaning
    // in a URL, such as "&". False if no search was begun.

    /// By name; by artist and title.
    virtual bool SearchArtists(char* name, int offset) = 0;
    virtual bool SearchAlbums(char* artist, char* title, int offset) = 0;
    /// Takes the identifier of an artist.
    virtual bool GetAlbums(char* artistId, int offset) = 0;
    /// Takes the identifier of an album.
    virtual bool GetSongs(char* releaseId) = 0;

    /// True once the last search has ended, well or not. False before the first one.
    virtual bool IsSearchComplete();

    /// From 0 to 100.
    virtual int GetPercentageComplete() = 0;

    /// The outcome of the last search: `list` has pointers to `_cdArtistItem`, `_cdAlbumItem` or
    /// `_cdSongItem` records. `count` is the service's total, for all pages; for songs it is the
    /// number of tracks that came. With `error`, count and list are 0 and null, as they are before
    /// a search has ended. List and records stay the object's, and the next search of the same kind
    /// empties the list; both searches for albums fill one list.
    virtual void GetSearchResults(bool& error, int& count, CMyList*& list) = 0;

    /// Ends the search that is under way, if any.
    virtual void CancelCurrentSearch() = 0;

protected:
    /// Free the records of one list, which come from `malloc`, and empty it.
    void EraseArtistsList() noexcept;
    void EraseAlbumsList() noexcept;
    void EraseSongsList() noexcept;

    /// Another thread may ask `IsSearchComplete` meanwhile; if that is true, it sees all that this
    /// thread wrote before.
    void SetSearchComplete(bool complete) noexcept;

    CMyList artists;            ///< `_cdArtistItem` records
    CMyList albums;             ///< `_cdAlbumItem` records
    CMyList songs;              ///< `_cdSongItem` records
    _cdRequestType requestType; ///< of the last search
    bool error;                 ///< of the last search
    bool searchComplete;        ///< as `IsSearchComplete` says
    CMyList* results;           ///< one of the lists; null without results
    int resultCount;            ///< the service's total

private:
    friend struct vtr::Internals<CDLookup>;
};

#endif
