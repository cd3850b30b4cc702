#include "gallery/pages/online/SoundsPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/online/RecordedServices.h"
#include "gallery/pages/online/SoundSearch.h"
#include "gallery/pages/online/WebText.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Browser.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"
#include "utilities/online/ServiceHosts.h"
#include "vtrfutls/InternetAccess.h"

#include <algorithm>
#include <commctrl.h>
#include <initializer_list>

namespace gallery {

namespace {

constexpr UINT_PTR pollTimer = 1;
constexpr UINT pollPeriod = 50;

using State = SoundSearch::State;

class SoundsPage final : public Page {
public:
    void Command(int id, int notification) override;
    void TakeFocus() override { FocusAndSelect(question); }
    bool ShowExample() override;

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool MakeControls() override;
    void MakeQuestion();
    bool MakeResults();
    std::wstring Cell(int row, int column) const;
    void Retext() override;
    void Arrange(int width, int height) override;
    void ArrangeColumns(int width);
    void Noticed(const NMHDR& header) override;

    void Search();
    void GoToPage(int page);
    void Poll();
    void Cancel();
    void ShowResults();
    void ShowState();
    void ShowSound();
    void TellOutcome();
    const Sound* Chosen() const;
    void OpenIt(std::wstring Sound::*address);

    SoundSearch search;
    SoundQuestion asked;

    HWND questionLabel = nullptr;
    HWND question = nullptr;
    HWND start = nullptr;
    HWND cancel = nullptr;
    HWND sortLabel = nullptr;
    HWND sort = nullptr;
    HWND licenceLabel = nullptr;
    HWND licence = nullptr;
    HWND clean = nullptr;
    HWND hostLabel = nullptr;
    HWND host = nullptr;
    ListView sounds;
    HWND previous = nullptr;
    HWND next = nullptr;
    HWND range = nullptr;
    HWND progress = nullptr;
    HWND details = nullptr;
    Link page;
    HWND openPage = nullptr;
    HWND preview = nullptr;
    HWND openLicence = nullptr;
};

bool SoundsPage::MakeControls() {
    MakeQuestion();
    if (!MakeResults())
        return false;
    Retext();
    return openLicence != nullptr;
}

void SoundsPage::MakeQuestion() {
    questionLabel = AddLabel("SoundQuestionLabel", ID_SOUNDS_QUESTION_LABEL);
    question = MakeEdit(Handle(), ID_SOUNDS_QUESTION);
    SetText(question, L"rain");
    start = AddButton("SoundSearch", ID_SOUNDS_SEARCH, "SoundSearchTip");
    cancel = AddButton("OnlineCancel", ID_SOUNDS_CANCEL, "OnlineCancelTip");
    sortLabel = AddLabel("SoundSortLabel", ID_SOUNDS_SORT_LABEL);
    sort = MakeChoice(Handle(), ID_SOUNDS_SORT);
    licenceLabel = AddLabel("SoundLicenceLabel", ID_SOUNDS_LICENCE_LABEL);
    licence = MakeChoice(Handle(), ID_SOUNDS_LICENCE);
    clean = AddCaption(MakeCheckBox(Handle(), ID_SOUNDS_CLEAN), "SoundsClean");
    hostLabel = AddLabel("OnlineHostLabel", ID_SOUNDS_HOST_LABEL);
    host = MakeEdit(Handle(), ID_SOUNDS_HOST);
}

bool SoundsPage::MakeResults() {
    const auto cell = [this](int row, int column) { return Cell(row, column); };
    if (!AddList(sounds, "Sounds", ID_SOUNDS_LIST, ListView::Titles::shown, cell))
        return false;
    sounds.AddColumn("SoundName");
    sounds.AddColumn("SoundUser");
    sounds.AddColumn("SoundLength", ListView::Align::right);
    sounds.AddColumn("SoundRateTitle", ListView::Align::right);
    sounds.AddColumn("SoundLicence");
    sounds.AddColumn("SoundTags");
    previous = AddButton("OnlinePrevious", ID_SOUNDS_PREVIOUS, "OnlinePreviousTip");
    next = AddButton("OnlineNext", ID_SOUNDS_NEXT, "OnlineNextTip");
    range = MakeTextLine(Handle(), SS_LEFT, ID_SOUNDS_RANGE);
    progress = MakeControl(Handle(), PROGRESS_CLASSW, L"", PBS_MARQUEE, ID_SOUNDS_PROGRESS);
    details = MakeReader(Handle(), ID_SOUNDS_DETAILS);
    if (!AddLink(page, ID_SOUNDS_PAGE_LINK, "SoundPageTip"))
        return false;
    openPage = AddButton("SoundPage", ID_SOUNDS_PAGE, "SoundPageTip");
    preview = AddButton("SoundPreview", ID_SOUNDS_PREVIEW, "SoundPreviewTip");
    openLicence = AddButton("SoundLicencePage", ID_SOUNDS_LICENCE_PAGE, "SoundLicencePageTip");
    return true;
}

std::wstring SoundsPage::Cell(int row, int column) const {
    constexpr std::wstring Sound::*cells[] = {&Sound::name, &Sound::user,    &Sound::length,
                                              &Sound::rate, &Sound::licence, &Sound::tags};
    return search.Sounds()[static_cast<std::size_t>(row)].*cells[column];
}

void SoundsPage::Retext() {
    const auto choose = [](HWND choice, std::initializer_list<const char*> keys) {
        std::vector<std::wstring> texts;
        for (const char* key : keys)
            texts.push_back(Text(key));
        SetChoices(choice, texts, std::max(gallery::Chosen(choice), 0));
    };
    choose(sort, {"SortScore", "SortDuration", "SortCreated", "SortDownloads", "SortRating"});
    choose(licence, {"LicenceAny", "LicenceZero", "LicenceAttribution", "LicenceNoncommercial"});
    SetHint(host, Text("OnlineHostHint"));
    search.UpdateTexts();
    ShowState();
    ShowSound();
    TellOutcome();
}

void SoundsPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows rows(Sizes(), width, height, /*expected=*/23);
    rows.AlignButtons({start, cancel, previous, next});
    const int labels = std::max({Sizes().TextWidth(questionLabel), Sizes().TextWidth(sortLabel),
                                 Sizes().TextWidth(hostLabel)});
    rows.Put(End::top, {.label = questionLabel,
                        .field = question,
                        .buttons = {start, cancel},
                        .labelWidth = labels});
    rows.Put(End::top, {.label = sortLabel, .field = sort, .labelWidth = labels}, 50,
             {.label = licenceLabel, .field = licence});
    rows.Put(End::top, {.label = hostLabel, .field = host, .labelWidth = labels}, 50,
             {.field = clean});
    rows.Put(End::bottom, {.buttons = {openPage, preview, openLicence}, .link = page.Handle()});
    // Some lines of details, where the list keeps the larger part.
    const int navigation = Sizes().Row() + rows.Gap();
    const int detailHeight = std::min((rows.Room() - navigation) * 2 / 5, 8 * Sizes().Line());
    const int listHeight = rows.Room() - navigation - detailHeight - rows.Gap();
    rows.Places().Put(sounds.Handle(), 0, rows.Top(), width, listHeight);
    rows.PutAt(
        rows.Top() + listHeight + rows.Gap(),
        {.label = range, .field = progress, .buttons = {previous, next}, .labelWidth = width / 3});
    rows.Places().Put(details, 0, rows.Top() + listHeight + navigation + rows.Gap(), width,
                      detailHeight - rows.Gap());
    ArrangeColumns(width);
}

/// The narrow columns are as wide as their texts; name, user and tags share the rest.
void SoundsPage::ArrangeColumns(int width) {
    const int padding = Sizes().Pixels(20);
    int room = ListView::RoomForColumns(width);
    constexpr struct {
        int column;
        const char* title;
    } narrow[] = {{2, "SoundLength"}, {3, "SoundRateTitle"}, {4, "SoundLicence"}};
    for (const auto& one : narrow) {
        int least = Sizes().TextWidth(Text(one.title));
        for (std::size_t row = 0; row < search.Sounds().size(); ++row)
            least = std::max(least, Sizes().TextWidth(Cell(static_cast<int>(row), one.column)));
        sounds.SetColumnWidth(one.column, least + padding);
        room -= least + padding;
    }
    sounds.SetColumnWidth(0, room * 45 / 100);
    sounds.SetColumnWidth(1, room * 22 / 100);
    sounds.SetColumnWidth(5, room - room * 45 / 100 - room * 22 / 100);
}

void SoundsPage::Noticed(const NMHDR& header) {
    if (header.hwndFrom != sounds.Handle())
        return;
    if (ListView::SelectionMoved(header))
        ShowSound();
    else if (ListView::DoubleClicked(header))
        OpenIt(&Sound::page);
}

void SoundsPage::Command(int id, int /*notification*/) {
    switch (id) {
    case ID_SOUNDS_SEARCH:
        return Search();
    case ID_SOUNDS_CANCEL:
    case IDCANCEL:
        return Cancel();
    case ID_SOUNDS_PREVIOUS:
        return GoToPage(search.Page() - 1);
    case ID_SOUNDS_NEXT:
        return GoToPage(search.Page() + 1);
    case ID_SOUNDS_PAGE:
    case ID_SOUNDS_PAGE_LINK:
        return OpenIt(&Sound::page);
    case ID_SOUNDS_PREVIEW:
        return OpenIt(&Sound::preview);
    case ID_SOUNDS_LICENCE_PAGE:
        return OpenIt(&Sound::licencePage);
    case IDOK:
        if (GetFocus() == sounds.Handle())
            OpenIt(&Sound::page);
        else
            Search();
        return;
    default:
        return;
    }
}

LRESULT SoundsPage::OnMessage(UINT kind, WPARAM wParam, LPARAM lParam) {
    if (kind == WM_TIMER && wParam == pollTimer) {
        Poll();
        return 0;
    }
    return Page::OnMessage(kind, wParam, lParam);
}

void SoundsPage::Search() {
    asked.text = TextOf(question);
    asked.sort = gallery::Chosen(sort);
    asked.licence = gallery::Chosen(licence);
    asked.withoutOffence = IsChecked(clean);
    if (asked.text.find_first_not_of(L' ') == std::wstring::npos)
        return Warn(Text("OnlineNothingAsked"));
    GoToPage(0);
}

void SoundsPage::GoToPage(int newPage) {
    std::string name;
    if (!Narrow(TextOf(host), name) || !SetSoundRepoHost(name.empty() ? nullptr : name.c_str()))
        return Warn(Text("OnlineNoHost"));
    if (search.Start(asked, newPage) == State::running)
        SetTimer(Handle(), pollTimer, pollPeriod, /*lpTimerFunc=*/nullptr);
    ShowResults();
}

void SoundsPage::Poll() {
    if (search.Poll() == State::running)
        return;
    KillTimer(Handle(), pollTimer);
    ShowResults();
}

void SoundsPage::Cancel() {
    if (search.Current() != State::running)
        return;
    search.Cancel();
    KillTimer(Handle(), pollTimer);
    ShowResults();
    Tell(Text("OnlineCancelled"));
}

void SoundsPage::ShowResults() {
    sounds.SetRows(static_cast<int>(search.Sounds().size()));
    ShowState();
    ShowSound();
    TellOutcome();
    Rearrange();
}

void SoundsPage::ShowState() {
    const bool running = search.Current() == State::running;
    SendMessageW(progress, PBM_SETMARQUEE, running ? TRUE : FALSE, /*default period=*/0);
    ShowWindow(progress, running ? SW_SHOWNA : SW_HIDE);
    EnableControls(question, {{cancel, running},
                              {previous, !running && search.Page() > 0},
                              {next, !running && search.HasNext()}});
    SetText(range, RangeText(search.Page() * SoundSearch::pageSize + 1,
                             static_cast<int>(search.Sounds().size()), search.Total()));
}

/// Null for none.
const Sound* SoundsPage::Chosen() const {
    const int row = sounds.Selected();
    return row < 0 ? nullptr : &search.Sounds()[static_cast<std::size_t>(row)];
}

void SoundsPage::ShowSound() {
    const Sound* sound = Chosen();
    SetText(details, sound != nullptr ? sound->details : L"");
    page.Set(sound != nullptr ? sound->page : L"");
    const auto has = [sound](std::wstring Sound::*address) {
        return sound != nullptr && !(sound->*address).empty();
    };
    EnableControls(question, {{openPage, has(&Sound::page)},
                              {preview, has(&Sound::preview)},
                              {openLicence, has(&Sound::licencePage)}});
}

void SoundsPage::TellOutcome() {
    switch (search.Current()) {
    case State::idle:
        return Tell(Text("SoundsHint"));
    case State::running:
        return Tell(Text("OnlineRunning"));
    case State::found:
        return Tell(search.Total() > 0 ? L"" : Text("OnlineNothingFound"));
    case State::notStarted:
        return Warn(Text("OnlineNotStarted"));
    case State::noAnswer:
        return Warn(Text(IsInternetConnectionAvailable() ? "OnlineNoAnswer" : "OnlineNoNetwork"));
    case State::notReadable:
        return Warn(Text("OnlineNotReadable"));
    }
}

void SoundsPage::OpenIt(std::wstring Sound::*address) {
    const Sound* sound = Chosen();
    if (sound == nullptr || (sound->*address).empty())
        return;
    if (!OpenAddress(sound->*address, Handle())) {
        Warn(Text("AddressNotOpened", {sound->*address}));
    }
}

/// What the recorded services find, where they run; else the page as it is at first.
bool SoundsPage::ShowExample() {
    const std::wstring server = RecordedServices();
    if (server.empty())
        return true;
    SetText(host, server);
    Search();
    const bool found = HandleMessagesUntil([this] { return search.Current() != State::running; }) &&
                       search.Current() == State::found;
    SetText(host, L"");
    SetFocus(sounds.Handle());
    return found;
}

} // namespace

std::unique_ptr<Page> MakeSoundsPage() {
    return std::make_unique<SoundsPage>();
}

} // namespace gallery
