#include "gallery/pages/online/MusicPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/online/MusicSearch.h"
#include "gallery/pages/online/RecordedServices.h"
#include "gallery/pages/online/WebText.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"
#include "utilities/online/ServiceHosts.h"
#include "vtrfutls/InternetAccess.h"

#include <algorithm>
#include <commctrl.h>

namespace gallery {

namespace {

constexpr UINT_PTR pollTimer = 1;
constexpr UINT pollPeriod = 50;

using State = MusicSearch::State;

/// A column of results, with its part of the list's width in percent.
struct Column {
    const char* title;
    int part;
};

std::vector<Column> ColumnsOf(MusicLevel level) {
    switch (level) {
    case MusicLevel::artists:
        return {{"MusicArtist", 100}};
    case MusicLevel::albums:
        return {{"MusicAlbum", 40},
                {"MusicArtist", 25},
                {"MusicDate", 12},
                {"MusicType", 13},
                {"MusicTracks", 10}};
    default:
        return {{"MusicNumber", 10}, {"MusicTitle", 75}, {"MusicLength", 15}};
    }
}

class MusicPage final : public Page {
public:
    void Command(int id, int notification) override;
    void TakeFocus() override { FocusAndSelect(artist); }
    bool ShowExample() override;

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool MakeControls() override;
    void Retext() override;
    void Arrange(int width, int height) override;
    void Noticed(const NMHDR& header) override;

    void Search();
    void OpenRow();
    void Back();
    void Step(int pages);
    bool SetHost();
    void Begin();
    void Poll();
    void ShowResults();
    void ShowState();
    void TellOutcome();

    MusicSearch search;

    HWND artistLabel = nullptr;
    HWND artist = nullptr;
    HWND titleLabel = nullptr;
    HWND title = nullptr;
    HWND start = nullptr;
    HWND cancel = nullptr;
    HWND hostLabel = nullptr;
    HWND host = nullptr;
    HWND path = nullptr;
    HWND back = nullptr;
    HWND open = nullptr;
    ListView results;
    HWND previous = nullptr;
    HWND next = nullptr;
    HWND range = nullptr;
    HWND progress = nullptr;
};

bool MusicPage::MakeControls() {
    artistLabel = AddLabel("MusicArtistLabel", ID_MUSIC_ARTIST_LABEL);
    artist = MakeEdit(Handle(), ID_MUSIC_ARTIST);
    titleLabel = AddLabel("MusicTitleLabel", ID_MUSIC_TITLE_LABEL);
    title = MakeEdit(Handle(), ID_MUSIC_TITLE);
    hostLabel = AddLabel("OnlineHostLabel", ID_MUSIC_HOST_LABEL);
    host = MakeEdit(Handle(), ID_MUSIC_HOST);
    start = AddButton("MusicSearch", ID_MUSIC_SEARCH, "MusicSearchTip");
    cancel = AddButton("OnlineCancel", ID_MUSIC_CANCEL, "OnlineCancelTip");
    path = MakeTextLine(Handle(), SS_ENDELLIPSIS, ID_MUSIC_PATH);
    open = AddButton("MusicOpen", ID_MUSIC_OPEN, "MusicOpenTip");
    back = AddButton("MusicBack", ID_MUSIC_BACK, "MusicBackTip");
    const auto cell = [this](int row, int column) {
        return search.List()
            ->rows[static_cast<std::size_t>(row)]
            .cells[static_cast<std::size_t>(column)];
    };
    if (!AddList(results, "MusicResults", ID_MUSIC_LIST, ListView::Titles::shown, cell))
        return false;
    previous = AddButton("OnlinePrevious", ID_MUSIC_PREVIOUS, "OnlinePreviousTip");
    next = AddButton("OnlineNext", ID_MUSIC_NEXT, "OnlineNextTip");
    range = MakeTextLine(Handle(), SS_LEFT, ID_MUSIC_RANGE);
    progress = MakeControl(Handle(), PROGRESS_CLASSW, L"", /*style=*/0, ID_MUSIC_PROGRESS);
    SetText(artist, L"Foo");
    Retext();
    return progress != nullptr;
}

void MusicPage::Retext() {
    SetHint(host, Text("OnlineHostHint"));
    ShowResults();
}

void MusicPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows rows(Sizes(), width, height, /*expected=*/17);
    rows.AlignButtons({start, cancel, open, back, previous, next});
    const int labels = std::max({Sizes().TextWidth(artistLabel), Sizes().TextWidth(hostLabel)});
    rows.Put(End::top, {.label = artistLabel, .field = artist, .labelWidth = labels}, 50,
             {.label = titleLabel, .field = title});
    rows.Put(End::top,
             {.label = hostLabel, .field = host, .buttons = {start, cancel}, .labelWidth = labels});
    rows.Put(End::top, {.field = path, .buttons = {open, back}});
    rows.Put(
        End::bottom,
        {.label = range, .field = progress, .buttons = {previous, next}, .labelWidth = width / 3});
    rows.Places().Put(results.Handle(), 0, rows.Top(), width, rows.Room());
    const MusicList* list = search.List();
    int column = 0;
    for (const Column& one : ColumnsOf(list != nullptr ? list->level : MusicLevel::artists))
        results.SetColumnWidth(column++, ListView::RoomForColumns(width) * one.part / 100);
}

void MusicPage::Noticed(const NMHDR& header) {
    if (header.hwndFrom != results.Handle())
        return;
    if (ListView::DoubleClicked(header))
        OpenRow();
    else if (ListView::KeyPressed(header) == VK_BACK)
        Back();
}

void MusicPage::Command(int id, int /*notification*/) {
    switch (id) {
    case ID_MUSIC_SEARCH:
        return Search();
    case ID_MUSIC_CANCEL:
    case IDCANCEL:
        return search.Cancel();
    case ID_MUSIC_OPEN:
        return OpenRow();
    case ID_MUSIC_BACK:
        return Back();
    case ID_MUSIC_PREVIOUS:
        return Step(-1);
    case ID_MUSIC_NEXT:
        return Step(1);
    case IDOK:
        if (GetFocus() == results.Handle())
            OpenRow();
        else
            Search();
        return;
    default:
        return;
    }
}

LRESULT MusicPage::OnMessage(UINT kind, WPARAM wParam, LPARAM lParam) {
    if (kind == WM_TIMER && wParam == pollTimer) {
        Poll();
        return 0;
    }
    return Page::OnMessage(kind, wParam, lParam);
}

void MusicPage::Search() {
    if (search.Current() == State::running || !SetHost())
        return;
    const std::wstring name = TextOf(artist);
    if (name.find_first_not_of(L' ') == std::wstring::npos)
        return Warn(Text("OnlineNothingAsked"));
    search.Search(name, TextOf(title));
    Begin();
}

void MusicPage::OpenRow() {
    if (search.Current() == State::running || !SetHost())
        return;
    search.Open(results.Selected());
    Begin();
}

void MusicPage::Step(int pages) {
    const MusicList* list = search.List();
    if (list == nullptr || search.Current() == State::running || !SetHost())
        return;
    search.GoTo(list->offset + pages * MusicSearch::pageSize);
    Begin();
}

void MusicPage::Back() {
    search.Back();
    ShowResults();
}

bool MusicPage::SetHost() {
    std::string name;
    if (Narrow(TextOf(host), name) && SetMusicLookupHost(name.empty() ? nullptr : name.c_str()))
        return true;
    Warn(Text("OnlineNoHost"));
    return false;
}

void MusicPage::Begin() {
    if (search.Current() == State::running)
        SetTimer(Handle(), pollTimer, pollPeriod, /*lpTimerFunc=*/nullptr);
    ShowState();
    TellOutcome();
}

void MusicPage::Poll() {
    SendMessageW(progress, PBM_SETPOS, static_cast<WPARAM>(search.PercentDone()), 0);
    if (search.Poll() == State::running)
        return;
    KillTimer(Handle(), pollTimer);
    if (search.Current() == State::found)
        return ShowResults();
    ShowState();
    TellOutcome();
}

void MusicPage::ShowResults() {
    const MusicList* list = search.List();
    std::vector<std::wstring> titles;
    for (const Column& column : ColumnsOf(list != nullptr ? list->level : MusicLevel::artists))
        titles.push_back(Text(column.title));
    results.SetRows(0);
    results.SetColumns(titles);
    results.SetRows(list != nullptr ? static_cast<int>(list->rows.size()) : 0);
    ShowState();
    TellOutcome();
    Rearrange();
}

void MusicPage::ShowState() {
    const MusicList* list = search.List();
    const bool running = search.Current() == State::running;
    const int count = list != nullptr ? static_cast<int>(list->rows.size()) : 0;
    SendMessageW(progress, PBM_SETPOS, 0, 0);
    ShowWindow(progress, running ? SW_SHOWNA : SW_HIDE);
    EnableControls(running ? cancel : results.Handle(),
                   {{start, !running},
                    {cancel, running},
                    {open, !running && count > 0 && list->level != MusicLevel::songs},
                    {back, !running && search.HasBack()},
                    {previous, !running && list != nullptr && list->offset > 0},
                    {next, !running && search.HasNext()}});
    SetText(range, list != nullptr ? RangeText(list->offset + 1, count, list->total) : L"");
    if (list == nullptr)
        SetText(path, L"");
    else if (list->level == MusicLevel::songs)
        SetText(path, Text("MusicSongsOf", {list->of}));
    else if (list->level == MusicLevel::artists)
        SetText(path, Text("MusicArtists"));
    else
        SetText(path, list->of.empty() ? Text("MusicAlbums") : Text("MusicAlbumsOf", {list->of}));
}

void MusicPage::TellOutcome() {
    switch (search.Current()) {
    case State::idle:
        return Tell(Text("MusicHint"));
    case State::running:
        return Tell(Text("OnlineRunning"));
    case State::found:
        return Tell(search.List()->rows.empty() ? Text("OnlineNothingFound") : L"");
    case State::cancelled:
        return Tell(Text("OnlineCancelled"));
    case State::notStarted:
        return Warn(Text("OnlineNotStarted"));
    case State::failed:
        return Warn(Text(IsInternetConnectionAvailable() ? "MusicFailed" : "OnlineNoNetwork"));
    }
}

/// The albums of an artist that the recorded services know, where they run; else the page as it is
/// at first.
bool MusicPage::ShowExample() {
    const std::wstring server = RecordedServices();
    if (server.empty())
        return true;
    const auto finds = [this] {
        return HandleMessagesUntil([this] { return search.Current() != State::running; }) &&
               search.Current() == State::found;
    };
    SetText(host, server);
    Search();
    bool found = finds();
    if (found) {
        OpenRow();
        found = finds();
    }
    SetText(host, L"");
    SetFocus(results.Handle());
    return found;
}

} // namespace

std::unique_ptr<Page> MakeMusicPage() {
    return std::make_unique<MusicPage>();
}

} // namespace gallery
