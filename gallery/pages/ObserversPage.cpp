#include "gallery/ControlIds.h"
#include "gallery/Controls.h"
#include "gallery/ListView.h"
#include "gallery/ObserverModel.h"
#include "gallery/Page.h"
#include "gallery/Text.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace gallery {

namespace {

constexpr wchar_t addText[] = L"&Add";
constexpr wchar_t removeText[] = L"&Remove";
constexpr wchar_t removeAllText[] = L"Re&move all";
constexpr wchar_t sendLabelText[] = L"Send:";
constexpr wchar_t clearText[] = L"&Clear log";

/// A button's id is `ID_OBSERVERS_SEND` and its code; the digit is the key and the code.
struct SendButton {
    int code;
    const wchar_t* text;
};

constexpr SendButton sendButtons[] = {{ObserverModel::play, L"&1 Play"},
                                      {ObserverModel::stop, L"&2 Stop"},
                                      {ObserverModel::seek, L"&3 Seek"},
                                      {ObserverModel::eject, L"&4 Eject"}};

/// A subject and its observers: add and remove them, notify them, and read who received what, also
/// when observers remove themselves, come back or notify within a delivery.
class ObserversPage final : public Page {
public:
    void Command(int id, int notification) override;
    void TakeFocus() override { SetFocus(observers.Handle()); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    bool MakeObserverList();
    bool MakeLog();
    void Restyle() override;
    void Arrange(int width, int height) override;
    int ArrangeObservers(Placement& placement, int width, int height);
    void ArrangeSendRow(Placement& placement, int y) const;
    void ArrangeLog(Placement& placement, int y, int width, int height);
    LRESULT Notify(const NMHDR& header) override;

    void Add();
    void Remove();
    void AddOrRemove();
    void RemoveAll();
    void Send(int code);
    void ClearLog();

    void ShowLogLine();
    /// The lists and the counts anew, with the end of the log in sight, and `text` as the message.
    void Show(const std::wstring& text);

    ObserverModel model;

    HWND observersLabel = nullptr;
    ListView observers;
    HWND add = nullptr;
    HWND remove = nullptr;
    HWND removeAll = nullptr;
    HWND sendLabel = nullptr;
    HWND send[std::size(sendButtons)] = {};
    HWND logLabel = nullptr;
    ListView log;
    HWND clear = nullptr;
    HWND message = nullptr;
    HWND counts = nullptr;
};

bool ObserversPage::MakeControls() {
    const HWND page = Handle();
    observersLabel = MakeLabel(page, L"&Observers of a player", ID_OBSERVERS_LABEL);
    if (!MakeObserverList())
        return false;
    add = MakeButton(page, addText, ID_OBSERVERS_ADD);
    remove = MakeButton(page, removeText, ID_OBSERVERS_REMOVE);
    removeAll = MakeButton(page, removeAllText, ID_OBSERVERS_REMOVE_ALL);
    sendLabel = MakeLabel(page, sendLabelText, ID_OBSERVERS_SEND_LABEL);
    for (std::size_t i = 0; i < std::size(sendButtons); ++i)
        send[i] = MakeButton(page, sendButtons[i].text, ID_OBSERVERS_SEND + sendButtons[i].code);
    logLabel =
        MakeLabel(page, L"&Log of calls and of what observers receive", ID_OBSERVERS_LOG_LABEL);
    if (!MakeLog())
        return false;
    clear = MakeButton(page, clearText, ID_OBSERVERS_CLEAR);
    message = MakeTextLine(page, SS_ENDELLIPSIS, ID_OBSERVERS_MESSAGE);
    counts = MakeTextLine(page, SS_RIGHT, ID_OBSERVERS_COUNTS);
    observers.SetRows(model.Observers());
    Show(L"");
    return counts != nullptr;
}

bool ObserversPage::MakeObserverList() {
    const auto cell = [this](int row, int column) -> std::wstring {
        switch (column) {
        case 0:
            return model.Name(row);
        case 1:
            return model.Attached(row) ? L"attached" : L"removed";
        case 2:
            return model.Codes(row);
        default:
            return model.Reaction(row);
        }
    };
    if (!observers.Create(Handle(), L"Observers", ID_OBSERVERS_LIST, ListView::Titles::shown, cell))
        return false;
    for (const wchar_t* title : {L"Observer", L"State", L"Registered for", L"When notified"})
        observers.AddColumn(title, ListView::Align::left);
    return true;
}

bool ObserversPage::MakeLog() {
    const auto cell = [this](int row, int column) -> std::wstring {
        const ObserverModel::LogLine& line = model.Log()[static_cast<std::size_t>(row)];
        if (column == 0)
            return std::to_wstring(row + 1);
        constexpr std::size_t spacesALevel = 6;
        const std::size_t indent = static_cast<std::size_t>(line.level) * spacesALevel;
        return column == 1 ? std::wstring(indent, L' ') + line.text : line.result;
    };
    if (!log.Create(Handle(), L"Log", ID_OBSERVERS_LOG, ListView::Titles::shown, cell))
        return false;
    // The first column of a list cannot be aligned to the right.
    for (const wchar_t* title : {L"No.", L"Call", L"What comes of it"})
        log.AddColumn(title, ListView::Align::left);
    return true;
}

void ObserversPage::Restyle() {
    observers.SetLook(Sizes());
    log.SetLook(Sizes());
}

void ObserversPage::Arrange(int width, int height) {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    Placement placement(/*expected=*/15);
    const int sendRow = ArrangeObservers(placement, width, height) + gap;
    const int messageRow = height - row + gap / 2;
    ArrangeSendRow(placement, sendRow);
    const int logTop = sendRow + row + gap;
    ArrangeLog(placement, logTop, width, messageRow - gap / 2 - logTop);
    const int countsWidth = std::min(width, Sizes().TextWidth(TextOf(counts).c_str()) + gap);
    placement.Put(message, 0, messageRow, width - countsWidth - gap, row);
    placement.Put(counts, width - countsWidth, messageRow, countsWidth, row);
}

/// As high as the observers are, with the buttons beside them. Returns where the list ends.
int ObserversPage::ArrangeObservers(Placement& placement, int width, int height) {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    const int buttonWidth = Sizes().ButtonWidth(removeAllText);
    const int listWidth = width - buttonWidth - gap;
    const int listHeight = std::min(height / 2, (model.Observers() + 1) * row);
    placement.Put(observersLabel, 0, 0, listWidth, row);
    placement.Put(observers.Handle(), 0, row, listWidth, listHeight);
    int y = row;
    for (const HWND button : {add, remove, removeAll}) {
        placement.Put(button, width - buttonWidth, y, buttonWidth, row);
        y += row + gap;
    }
    const int padding = Sizes().Pixels(20);
    int left = ListView::RoomForColumns(listWidth);
    int column = 0;
    for (const wchar_t* widest : {L"Observer", L"attached", L"play, stop, seek"}) {
        const int columnWidth = Sizes().TextWidth(widest) + padding;
        observers.SetColumnWidth(column++, columnWidth);
        left -= columnWidth;
    }
    observers.SetColumnWidth(column, left);
    return row + listHeight;
}

void ObserversPage::ArrangeSendRow(Placement& placement, int y) const {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    int x = Sizes().TextWidth(sendLabelText) + gap;
    placement.Put(sendLabel, 0, y, x, row);
    for (std::size_t i = 0; i < std::size(send); ++i) {
        const int buttonWidth = Sizes().ButtonWidth(sendButtons[i].text);
        placement.Put(send[i], x, y, buttonWidth, row);
        x += buttonWidth + gap;
    }
}

void ObserversPage::ArrangeLog(Placement& placement, int y, int width, int height) {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    const int buttonWidth = Sizes().ButtonWidth(clearText);
    placement.Put(logLabel, 0, y, width - buttonWidth - gap, row);
    placement.Put(clear, width - buttonWidth, y, buttonWidth, row);
    const int top = y + row + gap / 2;
    placement.Put(log.Handle(), 0, top, width, y + height - top);
    const int number = Sizes().TextWidth(L"0000") + Sizes().Pixels(12);
    const int rest = ListView::RoomForColumns(width) - number;
    log.SetColumnWidth(0, number);
    const int call = rest * 2 / 5;
    log.SetColumnWidth(1, call);
    log.SetColumnWidth(2, rest - call);
}

LRESULT ObserversPage::Notify(const NMHDR& header) {
    LRESULT result = 0;
    if (observers.Notified(header, result) || log.Notified(header, result))
        return result;
    if (header.hwndFrom == log.Handle() && ListView::SelectionMoved(header))
        ShowLogLine();
    else if (header.hwndFrom == observers.Handle() && header.code == static_cast<UINT>(NM_DBLCLK))
        AddOrRemove();
    return 0;
}

void ObserversPage::Command(int id, int) {
    switch (id) {
    case ID_OBSERVERS_ADD:
        return Add();
    case ID_OBSERVERS_REMOVE:
        return Remove();
    case ID_OBSERVERS_REMOVE_ALL:
        return RemoveAll();
    case ID_OBSERVERS_CLEAR:
        return ClearLog();
    case IDOK:
        if (GetFocus() == observers.Handle())
            AddOrRemove();
        return;
    default:
        for (const SendButton& button : sendButtons) {
            if (id == ID_OBSERVERS_SEND + button.code)
                Send(button.code);
        }
        return;
    }
}

void ObserversPage::Add() {
    const int observer = observers.Selected();
    if (observer < 0)
        return;
    const bool before = model.Attached(observer);
    model.Add(observer);
    Show(model.Name(observer) + (before ? L" was attached already: nothing changes."
                                        : L" is attached: the last to be notified from now on."));
}

void ObserversPage::Remove() {
    const int observer = observers.Selected();
    if (observer < 0)
        return;
    model.Remove(observer);
    Show(model.Name(observer) + L" is removed.");
}

void ObserversPage::AddOrRemove() {
    const int observer = observers.Selected();
    if (observer >= 0 && model.Attached(observer))
        Remove();
    else
        Add();
}

void ObserversPage::RemoveAll() {
    model.RemoveAll();
    Show(L"All observers are removed.");
}

void ObserversPage::Send(int code) {
    const int received = model.Send(code);
    const std::wstring name = L"\"" + ObserverModel::NameOf(code) + L"\"";
    if (received == 0)
        Show(L"Nobody is registered for " + name + L".");
    else
        Show(
            Format(received == 1 ? L"%d observer received " : L"%d observers received ", received) +
            name + L".");
}

void ObserversPage::ClearLog() {
    model.ClearLog();
    Show(L"");
}

/// A removal, a removal that is cancelled and a nested delivery, all in the delivery of "stop".
bool ObserversPage::ShowExample() {
    model.RemoveAll();
    for (int i = 0; i < model.Observers(); ++i)
        model.Add(i);
    model.ClearLog();
    for (const int code : {ObserverModel::stop, ObserverModel::eject, ObserverModel::play})
        Send(code);
    observers.Select(1);
    return true;
}

void ObserversPage::ShowLogLine() {
    const int row = log.Selected();
    const ObserverModel::LogLine& line = model.Log()[static_cast<std::size_t>(row)];
    SetText(message, Format(L"%d. ", row + 1) + line.text +
                         (line.result.empty() ? L"" : L" - " + line.result));
}

void ObserversPage::Show(const std::wstring& text) {
    observers.RedrawRows();
    const int lines = static_cast<int>(model.Log().size());
    log.SetRows(lines);
    log.Select(lines - 1);
    SetText(message, text);
    SetText(counts, Format(L"%d of %d observers attached, %d deliveries", model.AllAttached(),
                           model.Observers(), model.Deliveries()));
    Rearrange();
}

} // namespace

std::unique_ptr<Page> MakeObserversPage();

std::unique_ptr<Page> MakeObserversPage() {
    return std::make_unique<ObserversPage>();
}

} // namespace gallery
