#include "utilities/online/OnlineSoundRepo.h"

#include "common/WidePath.h"
#include "utilities/base/Layout.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/online/RecordBlock.h"
#include "vtrfutls/FileNames.h"
#include "vtrfutls/FileObj.h"
#include "vtrfutls/InternetAccess.h"
#include "vtrfutls/Log.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <new>
#include <string_view>
#include <windows.h>

static_assert(sizeof(_osrSndItem) == 9500);
VTR_FIELD_AT(_osrSndItem, url, 4);
VTR_FIELD_AT(_osrSndItem, userName, 2088);
VTR_FIELD_AT(_osrSndItem, name, 2344);
VTR_FIELD_AT(_osrSndItem, description, 2600);
VTR_FIELD_AT(_osrSndItem, created, 4648);
VTR_FIELD_AT(_osrSndItem, tags, 4776);
VTR_FIELD_AT(_osrSndItem, previewURL, 5032);
VTR_FIELD_AT(_osrSndItem, licenseType, 7116);
VTR_FIELD_AT(_osrSndItem, licenseURL, 7120);
VTR_FIELD_AT(_osrSndItem, channels, 9204);
VTR_FIELD_AT(_osrSndItem, bitDepth, 9208);
VTR_FIELD_AT(_osrSndItem, sampleRate, 9212);
VTR_FIELD_AT(_osrSndItem, duration, 9216);
VTR_FIELD_AT(_osrSndItem, bpm, 9220);
VTR_FIELD_AT(_osrSndItem, key, 9224);
VTR_FIELD_AT(_osrSndItem, scale, 9352);
VTR_FIELD_AT(_osrSndItem, numDownloads, 9480);
VTR_FIELD_AT(_osrSndItem, numRatings, 9484);
VTR_FIELD_AT(_osrSndItem, avgRating, 9488);
VTR_FIELD_AT(_osrSndItem, reserved, 9492);

namespace {

/// Different from all that this process used before, so that repositories do not share a file: the
/// tick count, or the next number after the last one.
DWORD FreshNumber() {
    static std::atomic<DWORD> last{0};
    DWORD before = last.load();
    DWORD number = 0;
    do {
        const DWORD ticks = GetTickCount();
        number = static_cast<int>(ticks - before) > 0 ? ticks : before + 1;
    } while (!last.compare_exchange_weak(before, number));
    return number;
}

/// False when the folder for temporary files has no path that fits.
bool MakeLocalName(char (&path)[MAX_PATH]) {
    char folder[MAX_PATH];
    const DWORD length = GetTempPathA(sizeof folder, folder);
    if (length == 0 || length >= sizeof folder)
        return false;
    do {
        const int written =
            std::snprintf(path, sizeof path, "%stmp-%d", folder, static_cast<int>(FreshNumber()));
        if (written < 0 || written >= static_cast<int>(sizeof path))
            return false;
        // Another process may have a file of that name.
    } while (DoesFileExist(path));
    return true;
}

void DeleteLocalFile(const char* path) {
    DeleteFileW(vtr::WidePath(path, GetCodePageForFiles()).Get());
}

/// The whole file with a zero byte after it; null when it cannot be read or memory runs out.
vtr::OwnedText ReadWhole(CFileObj& file, std::size_t& size) {
    const long long length = file.Size();
    if (length < 0)
        return nullptr;
    size = static_cast<std::size_t>(length);
    vtr::OwnedText text = vtr::AllocateChars<char>(size + 1);
    if (text == nullptr)
        return nullptr;
    constexpr std::size_t most = 1 << 30;
    for (std::size_t got = 0; got < size;) {
        const int count = file.Read(text.get() + got, static_cast<int>(std::min(size - got, most)));
        if (count <= 0)
            return nullptr;
        got += static_cast<std::size_t>(count);
    }
    text.get()[size] = '\0';
    return text;
}

/// A comment on one line looks back to the value before it, past all others: with many of them that
/// would take for ever, and they are not worth it.
bool HasFewComments(std::string_view text) {
    unsigned count = 0;
    for (std::size_t at = 0; (at = text.find("/*", at)) != text.npos; at += 2) {
        if (++count > 16)
            return false;
    }
    return true;
}

} // namespace

template <>
struct vtr::Internals<COnlineSoundRepo> {
    VTR_FIELD_AT(COnlineSoundRepo, state, 8, 4);
    VTR_FIELD_AT(COnlineSoundRepo, filterBadWords, 12, 8);
    VTR_FIELD_AT(COnlineSoundRepo, replyProcessed, 13, 9);
    VTR_FIELD_AT(COnlineSoundRepo, access, 16, 12);
    VTR_FIELD_AT(COnlineSoundRepo, file, 24, 16);
    VTR_FIELD_AT(COnlineSoundRepo, reader, 32, 20);
    VTR_FIELD_AT(COnlineSoundRepo, lastPageSize, 32 + sizeof(Json::Reader),
                 20 + sizeof(Json::Reader));
    VTR_FIELD_AT(COnlineSoundRepo, apiKey, 36 + sizeof(Json::Reader), 24 + sizeof(Json::Reader));
    VTR_FIELD_AT(COnlineSoundRepo, totalResults, 296 + sizeof(Json::Reader),
                 284 + sizeof(Json::Reader));
    VTR_FIELD_AT(COnlineSoundRepo, numReturned, 300 + sizeof(Json::Reader),
                 288 + sizeof(Json::Reader));
    VTR_FIELD_AT(COnlineSoundRepo, records, 304 + sizeof(Json::Reader), 292 + sizeof(Json::Reader));
    VTR_FIELD_AT(COnlineSoundRepo, root, 312 + sizeof(Json::Reader), 300 + sizeof(Json::Reader));

    static void FreeReply(COnlineSoundRepo& repo) {
        GiveRecordsBack(repo.records);
        repo.records = nullptr;
        repo.numReturned = 0;
        repo.totalResults = 0;
        Json::Value nothing;
        repo.root.swap(nothing);
    }

    /// False for what is not JSON. Throws when memory runs out and at a depth beyond measure.
    static bool Parse(COnlineSoundRepo& repo, std::string_view text) {
        if (!repo.readerMade) {
            new (&repo.reader) Json::Reader;
            repo.readerMade = true;
        }
        return repo.reader.parse(text.data(), text.data() + text.size(), repo.root,
                                 HasFewComments(text));
    }

    static bool ReadReply(COnlineSoundRepo& repo) {
        std::size_t size = 0;
        const OwnedText text = ReadWhole(*repo.file, size);
        return text != nullptr && Parse(repo, {text.get(), size});
    }

    static void ProcessResultsToJSON(COnlineSoundRepo& repo) {
        if (repo.replyProcessed || repo.file == nullptr || !repo.file->DownloadWasSuccessful())
            return;
        repo.state = fsReplyReceived;
        repo.replyProcessed = true;
        if (repo.file->CompleteDownload(/*discard=*/false) == 0) {
            Log("COnlineSoundRepo::ProcessResultsToJSON()-Failed to close inet download!");
            repo.state = fsFailed;
            return;
        }
        bool parsed = false;
        try {
            parsed = ReadReply(repo);
            if (parsed)
                repo.LoadDataFromJSONResult();
        } catch (...) {
            FreeReply(repo);
            repo.state = fsFailed;
        }
        if (!parsed) {
            FreeReply(repo);
            Log("COnlineSoundRepo::ProcessResultsToJSON() - Failed to parse JSON reply!");
            repo.state = fsFailed;
        }
    }
};

COnlineSoundRepo::COnlineSoundRepo(bool filter, MyInternetAccess* session) noexcept
    : state(fsIdle), filterBadWords(filter), replyProcessed(false), readerMade(false),
      access(session), file(nullptr), lastPageSize(0), apiKey{}, totalResults(0), numReturned(0),
      records(nullptr) {
    vtr::UseRecordBlocks();
}

COnlineSoundRepo::COnlineSoundRepo(const COnlineSoundRepo& other) noexcept
    : COnlineSoundRepo(other.filterBadWords, other.access) {
    *this = other;
}

COnlineSoundRepo& COnlineSoundRepo::operator=(const COnlineSoundRepo& other) noexcept {
    if (this == &other)
        return *this;
    ClearLastDownload();
    state = other.state;
    filterBadWords = other.filterBadWords;
    replyProcessed = other.replyProcessed;
    access = other.access;
    lastPageSize = other.lastPageSize;
    std::memcpy(apiKey, other.apiKey, sizeof apiKey);
    totalResults = other.totalResults;
    return *this;
}

COnlineSoundRepo::~COnlineSoundRepo() {
    ClearLastDownload();
    DeleteRefObject(&file);
    if (readerMade)
        reader.~Reader();
    vtr::LeaveRecordBlocks();
}

_tFS_Q_State COnlineSoundRepo::GetState() noexcept {
    vtr::Internals<COnlineSoundRepo>::ProcessResultsToJSON(*this);
    return state;
}

bool COnlineSoundRepo::GetItem(int index, _osrSndItem& out) const noexcept {
    if (index < 0 || index >= numReturned)
        return false;
    out = records[index];
    return true;
}

int COnlineSoundRepo::NumReturnedResults() const noexcept {
    return numReturned;
}

int COnlineSoundRepo::NumTotalResults() const noexcept {
    return totalResults;
}

int COnlineSoundRepo::NumTotalPages() const noexcept {
    return lastPageSize < 1 ? 0 : totalResults / lastPageSize;
}

int COnlineSoundRepo::LastPageSize() const noexcept {
    return lastPageSize;
}

bool COnlineSoundRepo::FilterBadWords() const noexcept {
    return filterBadWords;
}

char* COnlineSoundRepo::APIKey() noexcept {
    return apiKey;
}

bool COnlineSoundRepo::StartOnlineRequest(char* url) noexcept {
    ClearLastDownload();
    if (file == nullptr)
        file = new (std::nothrow) CFileObj;
    if (file == nullptr)
        return false;
    char localName[MAX_PATH];
    if (MakeLocalName(localName) && file->OpenFromInternet(access, url, localName) != 0) {
        state = fsUnderWay;
        return true;
    }
    state = fsFailed;
    LogFmtA("Failed to start online request\r\n%s", url != nullptr ? url : "");
    return false;
}

void COnlineSoundRepo::ClearLastDownload() noexcept {
    state = fsIdle;
    replyProcessed = false;
    if (file != nullptr) {
        file->CompleteDownload(/*discard=*/true);
        if (file->IsOpen()) {
            file->Close();
            DeleteLocalFile(file->LocalPath());
        }
    }
    vtr::Internals<COnlineSoundRepo>::FreeReply(*this);
}

bool OSRSoundIDToString(unsigned long id, char* buffer, int size) {
    if (buffer == nullptr || size < 1)
        return false;
    std::snprintf(buffer, static_cast<std::size_t>(size), "%lu", id);
    return true;
}

unsigned long StringToOSRSoundID(const char* text) {
    return text != nullptr ? std::strtoul(text, nullptr, /*base=*/0) : 0;
}
