#ifndef VTRUTILS_ONLINE_MUSICBRAINZLOOKUP_H
#define VTRUTILS_ONLINE_MUSICBRAINZLOOKUP_H

#include "utilities/Export.h"
#include "utilities/online/CDLookup.h"
#include "utilities/system/locks/Lock.h"

#include <windows.h>

class MyInternetAccess;

/// Asks the MusicBrainz service, or the server that `SetMusicLookupHost` names when a search is
/// posted. A thread of its own, which begins with the object and ends with it, downloads each reply
/// into the file "TEMPFILENAME" of the folder for temporary files and reads it from there. It looks
/// for a posted search every 50 ms and pauses for a second after each that reached the network, so
/// the service gets at most one request a second. Nothing calls the host.
///
/// A search ends with an error if the download does not start, if the file is not XML, and if it
/// has no list of what was asked for. Whatever else came is read as far as it goes: part of a
/// reply gives part of the records, and an entry without identifier or title, or one for which
/// there is no memory, is left out. A name or title of bytes above 0x7F only is none, as XMLFile.h
/// says. No reply, however long or deep, costs more than time and memory in proportion.
///
/// Each search deletes the file of the one before, and the last file goes with the object.
/// Requires: nobody else uses a file of that name in the folder, so each object that searches at
/// the same time has a folder of its own. Thread-safety: locked by itself. A list from
/// `GetSearchResults` is for the thread that posts searches; while one is under way, its list may
/// change.
class VTRUTILS_API MusicBrainzLookup : public CDLookup {
public:
    /// `tempFolder` ends with a path separator, for the file name is put right after it; null
    /// counts as "". FileFunctions.h says in which code page it is. The session stays the host's
    /// and must live as long as this object; with null no search begins.
    MusicBrainzLookup(MyInternetAccess* access, const char* tempFolder) noexcept;

    /// Copies session and folder too, but neither the search under way nor the thread: a copy makes
    /// its own at its first search. Assignment drops the target's search under way.
    MusicBrainzLookup(const MusicBrainzLookup& other) noexcept;
    MusicBrainzLookup& operator=(const MusicBrainzLookup& other) noexcept;

    /// Ends the search under way and waits until the thread has ended: no time if no search is
    /// under way, otherwise as long as the transfer takes to end or the reply to be read, and never
    /// more than 10 seconds. A thread that takes longer touches nothing of this object any more.
    /// It keeps the library loaded, and deletes the file when it ends. Requires: no thread is
    /// inside the object.
    ~MusicBrainzLookup() override;

    // A search that is posted while another is under way takes its place: that one's transfer ends,
    // and its results never appear. False, with nothing changed and the search under way going on,
    // without a session, for a null text, if the URL would have more than 2,047 characters or the
    // file's path more than 259, and if there is no memory or no thread can be made.

    /// Posts the search.
    bool SearchArtists(char* name, int offset) noexcept override;
    /// Official releases only.
    bool SearchAlbums(char* artist, char* title, int offset) noexcept override;
    /// Official releases only.
    bool GetAlbums(char* artistId, int offset) noexcept override;
    bool GetSongs(char* releaseId) noexcept override;

    /// How much of the reply has come; 0 while the service has not told its length, and 100 if no
    /// search is under way.
    int GetPercentageComplete() noexcept override;

    void GetSearchResults(bool& errorOut, int& countOut, CMyList*& listOut) noexcept override;

    /// Ends the transfer within 50 ms and the time it takes to end. The search ends as usual, with
    /// what had come of the reply, and with an error if nothing had. Does nothing if no search is
    /// under way.
    void CancelCurrentSearch() noexcept override;

protected:
    /// Reads the file of this lookup's last search and ends the search with what it holds. The
    /// request type says what to look for. Does nothing for null. Requires: no search is under way.
    static void ParseResults(MusicBrainzLookup* lookup) noexcept;

    /// Serves searches on the calling thread until the lookup is destroyed, as the lookup's own
    /// thread does. Returns 0, at once if a thread does that already, for null, and if memory runs
    /// out.
    static unsigned long MusicBrainzWorker(MusicBrainzLookup* lookup) noexcept;

private:
    friend struct vtr::Internals<MusicBrainzLookup>;
    struct Request;
    struct Link;

    mutable CLock lock; ///< guards all fields, those of the base too
    MyInternetAccess* access;
    char tempFolder[264];
    HANDLE worker; ///< null without a thread of its own
    DWORD workerId;
    bool quit;
    Request* pending; ///< the search under way: posted, and not complete

    Link* link; ///< shared with the thread; null without one
};

#endif
