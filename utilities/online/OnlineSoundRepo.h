#ifndef VTRUTILS_ONLINE_ONLINESOUNDREPO_H
#define VTRUTILS_ONLINE_ONLINESOUNDREPO_H

#include "utilities/Export.h"

#include <json/reader.h>
#include <json/value.h>

class CFileObj;
class MyInternetAccess;

/// By what a search sorts its results.
enum _sbos_type : int {
    sbosScore = 0,
    sbosDuration = 1,
    sbosCreated = 2,
    sbosDownloads = 3,
    sbosRating = 4,
};

/// Has no effect.
enum _sbosdescasc_t : int {
    sbosDescending = 0,
    sbosAscending = 1,
};

/// The licence of a sound, and the one that a search asks for.
enum _licType : int {
    licCreativeCommons0 = 0,
    licAttribution = 1,
    licAttributionNoncommercial = 2,
    licSamplingPlus = 3,  ///< of sounds; a search with it is not restricted
    licNotRecognized = 6, ///< of sounds; a search with it is not restricted
};

/// The state of a search.
enum _tFS_Q_State : int {
    fsIdle = 0,
    fsUnderWay = 1,
    fsReplyReceived = 2,
    fsFailed = 3,
};

/// One sound. Texts are terminated; they are UTF-8 as the service sent them, cut to their field
/// without regard to where characters begin. What the reply does not have is 0 or "".
struct _osrSndItem {
    unsigned int soundID;   ///< the service's number
    char url[2084];         ///< of the sound's page
    char userName[256];     ///< who made it
    char name[256];         ///< of the sound
    char description[2048]; ///< as its maker wrote it
    char created[128];      ///< date and time, as sent
    char tags[256];         ///< separated by ","
    char previewURL[2084];  ///< an Ogg file
    _licType licenseType;   ///< told by the licence's address
    char licenseURL[2084];  ///< cut to 511 characters
    int channels;           ///< 1: mono, 2: stereo
    int bitDepth;           ///< bits a sample
    int sampleRate;         ///< of the member "sampleRate", which the service does not send: 0
    float duration;         ///< seconds
    float bpm;              ///< beats per minute
    char key[128];          ///< "C", "F#"
    char scale[128];        ///< "major", "minor"
    int numDownloads;       ///< so far
    int numRatings;         ///< so far
    float avgRating;        ///< as sent
    char reserved[8];       ///< zeros
};

/// A library of sounds that is searched over the internet, one page of results at a time. A search
/// runs in the background, into a file in the folder for temporary files. The caller asks
/// `GetState`, from a timer for example, until it is another than `fsUnderWay`. The reply is read
/// by that call of `GetState`, on the caller's thread.
///
/// | state             | when                                                                     |
/// |-------------------|--------------------------------------------------------------------------|
/// | `fsIdle`          | at the start                                                             |
/// | `fsUnderWay`      | a search was started; it stays so if the server cannot be reached, is    |
/// |                   | not trusted, answers with a status other than 200, or if the reply is    |
/// |                   | cut off: the caller decides when to give up                              |
/// | `fsReplyReceived` | the whole reply has come and is JSON; without a list of results, it      |
/// |                   | counts as one of no results                                              |
/// | `fsFailed`        | the search could not be started, the whole reply has come but could not  |
/// |                   | be read or is not JSON, or memory ran out                                |
///
/// A member of the reply that has another type than expected, or a number that its field cannot
/// hold, reads as missing. JSON that is nested deeper than 1,000 levels counts as no JSON.
///
/// To give a search up, start another one or destroy the object: that ends the transfer, within a
/// second, and deletes its file. `SetSoundRepoHost` says which server is asked.
/// Thread-safety: one thread at a time.
class VTRUTILS_API COnlineSoundRepo {
public:
    /// With `filterBadWords`, results are left out that have an offensive word (`HasBadWord`) in
    /// name, description or tags as stored. `access` must outlive the object; with null, or with a
    /// session that is not open, no search starts.
    COnlineSoundRepo(bool filterBadWords, MyInternetAccess* access) noexcept;

    /// A copy has the settings, the state and the numbers of results of all pages and a page, but
    /// no records, so that `NumReturnedResults` is 0, and no search that runs: copied while one is
    /// under way, its state is `fsUnderWay` until it starts a search of its own. Assignment ends
    /// the target's search and deletes its file; to itself it does nothing.
    COnlineSoundRepo(const COnlineSoundRepo& other) noexcept;
    COnlineSoundRepo& operator=(const COnlineSoundRepo& other) noexcept;

    /// Ends a search that runs, within a second, and deletes its file.
    virtual ~COnlineSoundRepo();

    /// Starts a search; an earlier one is given up and its results are gone, whatever is returned.
    /// True when the request was started. False, with the state `fsFailed`, when the URL does not
    /// fit 2,047 characters or the request does not start; false, with the state `fsIdle`, when
    /// there is no memory to start one.
    ///
    /// `query` must be ready for a URL: it is sent as it is; null counts as "". `page` counts from
    /// 0. `pageSize` is how many results the service is asked for. `order` has no effect. A
    /// `licence` of 0 to 2 restricts the search to that licence.
    virtual bool DoSearch(char* query, _sbos_type sort, _sbosdescasc_t order, int page,
                          int pageSize, _licType licence) = 0;

    /// Reads the reply once it has come whole, which takes up to 700 KB of the thread's stack if
    /// the reply is as deep as can be.
    _tFS_Q_State GetState() noexcept;

    /// Copies the record. False, with `out` unchanged, unless 0 <= index < `NumReturnedResults()`.
    bool GetItem(int index, _osrSndItem& out) const noexcept;

    /// The records that `GetItem` gives.
    int NumReturnedResults() const noexcept;

    /// What the service says it has found in all, whatever its sign; 0 before a reply.
    int NumTotalResults() const noexcept;

    /// Whole pages only: 9 for 95 results and a page size of 10. 0 for a page size below 1.
    int NumTotalPages() const noexcept;

    /// As the last search had it; 0 before the first one.
    int LastPageSize() const noexcept;

    /// As the constructor was told.
    bool FilterBadWords() const noexcept;

    /// The key by which the service knows the program, in a buffer of 260 characters that the
    /// object owns; "" until a derived class sets it. A host may write a key of its own there.
    char* APIKey() noexcept;

protected:
    /// Called by `GetState`, once for each reply that is JSON, with the reply in `root`: sets
    /// `totalResults`, `numReturned` and `records`, which are 0 and null before. The result does
    /// not matter. What it throws is stopped and leaves the state at `fsFailed`, without records.
    virtual bool LoadDataFromJSONResult() = 0;

    /// Gives an earlier search up, and asks for the URL: true, with the state `fsUnderWay`, when
    /// the request was started. False with `fsFailed` and a log line when it does not start, which
    /// is so for a null or empty URL too; false with `fsIdle` when memory runs out.
    bool StartOnlineRequest(char* url) noexcept;

    /// Gives the search up: `fsIdle`, no records, no file left.
    void ClearLastDownload() noexcept;

    _tFS_Q_State state;       ///< of the last search
    bool filterBadWords;      ///< as `FilterBadWords` says
    bool replyProcessed;      ///< `LoadDataFromJSONResult` was called for the reply
    bool readerMade;          ///< `reader` exists
    MyInternetAccess* access; ///< not owned
    CFileObj* file;           ///< owned; null before the first request
    union {
        Json::Reader reader; ///< made with the first reply, because that takes memory
    };
    int lastPageSize;     ///< of the last search
    char apiKey[260];     ///< as `APIKey` says
    int totalResults;     ///< of all pages
    int numReturned;      ///< records of this page
    _osrSndItem* records; ///< owned; one block from `malloc`, or null
    Json::Value root;     ///< the last reply

private:
    friend struct vtr::Internals<COnlineSoundRepo>;
};

/// Writes the identifier in decimal, cut to `size` - 1 characters. False for a null buffer or a
/// size below 1.
VTRUTILS_API bool OSRSoundIDToString(unsigned long id, char* buffer, int size);

/// The number at the start of the text, after white space: decimal, with "0x" hexadecimal, with a
/// leading zero octal. 0 for null and for no number; 4294967295 for one that is too large.
VTRUTILS_API unsigned long StringToOSRSoundID(const char* text);

#endif
