#include "gallery/pages/online/MusicSearch.h"

#include "gallery/pages/online/WebText.h"
#include "gallery/text/Language.h"

#include <utility>
#include <windows.h>

namespace gallery {

namespace {

/// Every program with a look-up needs a folder of its own: replies have one name.
std::string MakeReplyFolder() {
    char temporary[MAX_PATH] = "";
    GetTempPathA(MAX_PATH, temporary);
    const std::string folder =
        std::string(temporary) + "vtrutils-gallery-" + std::to_string(GetCurrentProcessId()) + "\\";
    CreateDirectoryA(folder.c_str(), /*lpSecurityAttributes=*/nullptr);
    return folder;
}

MusicRow RowOf(const _cdArtistItem& artist) {
    return {artist.identifier, {LineOfService(artist.displayName)}};
}

MusicRow RowOf(const _cdAlbumItem& album) {
    return {album.identifier,
            {LineOfService(album.title), LineOfService(album.artistName), LineOfService(album.date),
             LineOfService(album.type),
             album.numTracks > 0 ? std::to_wstring(album.numTracks) : std::wstring()}};
}

MusicRow RowOf(const _cdSongItem& song, int number) {
    return {"",
            {std::to_wstring(number), LineOfService(song.title),
             song.duration > 0 ? LengthText(song.duration) : std::wstring()}};
}

} // namespace

MusicSearch::MusicSearch()
    : folder(MakeReplyFolder()),
      lookup(std::make_unique<MusicBrainzLookup>(&access, folder.c_str())) {}

MusicSearch::~MusicSearch() {
    lookup->CancelCurrentSearch();
    lookup.reset();
    DeleteFileA((folder + "TEMPFILENAME").c_str());
    RemoveDirectoryA(folder.c_str());
}

void MusicSearch::Search(const std::wstring& artist, const std::wstring& title) {
    MusicList question;
    question.level = title.empty() ? MusicLevel::artists : MusicLevel::albums;
    question.artist = artist;
    question.title = title;
    Post(std::move(question), Way::anew);
}

void MusicSearch::Open(int row) {
    const MusicList* list = List();
    if (list == nullptr || list->level == MusicLevel::songs || row < 0 ||
        row >= static_cast<int>(list->rows.size()))
        return;
    const MusicRow& chosen = list->rows[static_cast<std::size_t>(row)];
    MusicList question;
    question.level = list->level == MusicLevel::artists ? MusicLevel::albums : MusicLevel::songs;
    question.of = chosen.cells[0];
    question.id = chosen.id;
    Post(std::move(question), Way::deeper);
}

void MusicSearch::GoTo(int offset) {
    if (List() == nullptr || offset < 0)
        return;
    MusicList question = *List();
    question.offset = offset;
    question.rows.clear();
    Post(std::move(question), Way::inPlace);
}

void MusicSearch::Back() {
    if (state == State::running || !HasBack())
        return;
    lists.pop_back();
    state = State::found;
}

void MusicSearch::Post(MusicList question, Way newWay) {
    if (state == State::running)
        return;
    asked = std::move(question);
    way = newWay;
    stopping = false;
    state = Ask(asked) ? State::running : State::notStarted;
}

bool MusicSearch::Ask(const MusicList& question) {
    std::string artist = AddressValue(question.artist);
    std::string title = AddressValue(question.title);
    std::string id = question.id;
    if (question.level == MusicLevel::artists)
        return lookup->SearchArtists(artist.data(), question.offset);
    if (question.level == MusicLevel::songs)
        return lookup->GetSongs(id.data());
    return id.empty() ? lookup->SearchAlbums(artist.data(), title.data(), question.offset)
                      : lookup->GetAlbums(id.data(), question.offset);
}

MusicSearch::State MusicSearch::Poll() {
    if (state != State::running || !lookup->IsSearchComplete())
        return state;
    bool error = false;
    CMyList* found = nullptr;
    lookup->GetSearchResults(error, asked.total, found);
    if (stopping)
        return state = State::cancelled;
    if (error || found == nullptr)
        return state = State::failed;
    Take(*found);
    return state = State::found;
}

/// The records belong to the look-up until its next search.
void MusicSearch::Take(CMyList& found) {
    asked.rows.clear();
    for (int i = 0; i < found.NumNodes(); ++i) {
        const void* record = found.Index(i, /*sortValueOut=*/nullptr);
        if (asked.level == MusicLevel::artists)
            asked.rows.push_back(RowOf(*static_cast<const _cdArtistItem*>(record)));
        else if (asked.level == MusicLevel::albums)
            asked.rows.push_back(RowOf(*static_cast<const _cdAlbumItem*>(record)));
        else
            asked.rows.push_back(RowOf(*static_cast<const _cdSongItem*>(record), i + 1));
    }
    if (way == Way::anew)
        lists.clear();
    else if (way == Way::inPlace)
        lists.pop_back();
    lists.push_back(asked);
}

void MusicSearch::Cancel() {
    if (state != State::running)
        return;
    stopping = true;
    lookup->CancelCurrentSearch();
}

int MusicSearch::PercentDone() {
    return state == State::running ? lookup->GetPercentageComplete() : 0;
}

bool MusicSearch::HasNext() const {
    const MusicList* list = List();
    return list != nullptr && list->level != MusicLevel::songs &&
           list->offset + pageSize < list->total;
}

} // namespace gallery
