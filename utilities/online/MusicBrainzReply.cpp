#include "utilities/online/MusicBrainzReply.h"

#include "utilities/base/OwnedText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/text/html/HtmlText.h"
#include "utilities/xml/XMLFile.h"

#include <algorithm>
#include <cstring>

namespace {

/// The element that has the entries.
const char* ListName(_cdRequestType type) {
    if (type == cdArtistSearch)
        return "artist-list";
    return type == cdSongsOfAlbum ? "track-list" : "release-list";
}

const char* Value(const CXMLNode& node, const char* name) {
    return node.GetValue(name, /*recurse=*/false, /*contentIndex=*/0);
}

const char* ValueBelow(const CXMLNode& node, const char* name) {
    return node.GetValue(name, /*recurse=*/true, /*contentIndex=*/0);
}

/// `long` has the size of `int`, and `strtol` ends at its limits.
int Number(const char* text) {
    return text != nullptr ? static_cast<int>(std::strtol(text, nullptr, 10)) : 0;
}

/// Most texts have nothing to decode, which is seen while they are copied.
template <std::size_t size>
void StoreDecoded(const char* text, char (&field)[size]) {
    if (text == nullptr)
        return;
    bool mayHaveReferences = false;
    for (std::size_t i = 0; i < size - 1 && text[i] != '\0'; ++i) {
        field[i] = text[i]; // the rest is zero
        mayHaveReferences |= text[i] == '&' || text[i] == '%';
    }
    if (mayHaveReferences)
        DeHTMLifyString(field, size);
}

/// The name gives way to what tells artists of that name apart.
template <std::size_t size>
void StoreDisplayName(const char* name, const char* disambiguation, char (&field)[size]) {
    constexpr std::size_t around = sizeof " ()";
    const std::size_t room = size - around - std::min(strnlen(disambiguation, size), size - around);
    std::size_t length = vtr::StoreCut(name, field, room + 1);
    for (const char* part : {" (", disambiguation, ")"})
        length += vtr::StoreCut(part, field + length, size - length);
    DeHTMLifyString(field, size);
}

bool Fill(const CXMLNode& node, _cdArtistItem& artist) {
    const char* id = Value(node, "id");
    const char* name = Value(node, "name");
    if (id == nullptr || name == nullptr)
        return false;
    vtr::StoreCut(id, artist.identifier, sizeof artist.identifier);
    if (const char* disambiguation = Value(node, "disambiguation"))
        StoreDisplayName(name, disambiguation, artist.displayName);
    else
        StoreDecoded(name, artist.displayName);
    return true;
}

bool Fill(const CXMLNode& node, _cdAlbumItem& album) {
    const char* id = Value(node, "id");
    const char* title = Value(node, "title");
    if (id == nullptr || title == nullptr)
        return false;
    vtr::StoreCut(id, album.identifier, sizeof album.identifier);
    StoreDecoded(title, album.title);
    StoreDecoded(ValueBelow(node, "name"), album.artistName);
    StoreDecoded(ValueBelow(node, "date"), album.date);
    StoreDecoded(Value(node, "type"), album.type);
    if (const CXMLNode* tracks = node.GetChildByName("track-list"))
        album.numTracks = Number(Value(*tracks, "count"));
    return true;
}

bool Fill(const CXMLNode& node, _cdSongItem& song) {
    const char* title = Value(node, "title");
    StoreDecoded(title, song.title);
    song.duration = Number(Value(node, "duration"));
    return title != nullptr;
}

} // namespace

namespace vtr {

MusicBrainzReply::~MusicBrainzReply() {
    records.Clear(Free());
}

template <class Record>
void MusicBrainzReply::Add(const CXMLNode& node) {
    OwnedChars<Record> record(static_cast<Record*>(std::calloc(1, sizeof(Record))));
    if (record != nullptr && Fill(node, *record) && records.Append(record.get()))
        static_cast<void>(record.release());
}

bool MusicBrainzReply::Read(const char* path) {
    CXMLFile file;
    if (!file.Open(path))
        return false;
    const CXMLNode* list = file.FindNode(ListName(type));
    if (list == nullptr)
        return false;
    const unsigned children = list->NumChildren();
    total = type == cdSongsOfAlbum ? static_cast<int>(children) : Number(Value(*list, "count"));
    for (unsigned i = 0; i < children; ++i) {
        const CXMLNode& child = *list->GetChild(i);
        if (type == cdArtistSearch)
            Add<_cdArtistItem>(child);
        else if (type == cdSongsOfAlbum)
            Add<_cdSongItem>(child);
        else
            Add<_cdAlbumItem>(child);
    }
    return true;
}

void MusicBrainzReply::MoveTo(CMyList& list) {
    records.Clear([&list](void* record) {
        if (list.AppendToTail(record, /*sortValue=*/0) < 0)
            std::free(record);
    });
}

} // namespace vtr
