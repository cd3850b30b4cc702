#include "gallery/ControlIds.h"
#include "gallery/Controls.h"
#include "gallery/Language.h"
#include "gallery/ListView.h"
#include "gallery/ObserverModel.h"
#include "gallery/Page.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace gallery {

namespace {

constexpr const char* observerTitles[] = {"Observer", "State", "RegisteredFor", "WhenNotified"};

/// A button's id is `ID_OBSERVERS_SEND` and its code; the digit is the key and the code.
struct SendButton {
    int code;
    const char* key;
};

constexpr SendButton sendButtons[] = {{ObserverModel::play, "SendPlay"},
                                      {ObserverModel::stop, "SendStop"},
                                      {ObserverModel::seek, "SendSeek"},
                                      {ObserverModel::eject, "SendEject"}};

/// A subject and its observers: add and remove them, notify them, and read who received what, also
/// when observers remove themselves, come back or notify within a delivery.
class ObserversPage final : public Page {
public:
    void Command(int id, int notification) override;
    void TakeFocus() override { SetFocus(observers.Handle()); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    std::wstring Cell(int row, int column) const;
    bool MakeObserverList();
    bool MakeLog();
    void Retext() override;
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
    observersLabel = AddLabel("ObserversLabel", ID_OBSERVERS_LABEL);
    if (!MakeObserverList())
        return false;
    add = AddButton("Add", ID_OBSERVERS_ADD);
    remove = AddButton("Remove", ID_OBSERVERS_REMOVE);
    removeAll = AddButton("RemoveAll", ID_OBSERVERS_REMOVE_ALL);
    sendLabel = AddLabel("SendLabel", ID_OBSERVERS_SEND_LABEL);
    for (std::size_t i = 0; i < std::size(sendButtons); ++i)
        send[i] = AddButton(sendButtons[i].key, ID_OBSERVERS_SEND + sendButtons[i].code);
    logLabel = AddLabel("LogLabel", ID_OBSERVERS_LOG_LABEL);
    if (!MakeLog())
        return false;
    clear = AddButton("ClearLog", ID_OBSERVERS_CLEAR);
    message = MakeTextLine(page, SS_ENDELLIPSIS, ID_OBSERVERS_MESSAGE);
    counts = MakeTextLine(page, SS_RIGHT, ID_OBSERVERS_COUNTS);
    observers.SetRows(model.Observers());
    Show(L"");
    return counts != nullptr;
}

std::wstring ObserversPage::Cell(int row, int column) const {
    switch (column) {
    case 0:
        return model.Name(row);
    case 1:
        return Text(model.Attached(row) ? "Attached" : "Removed");
    case 2:
        return model.Codes(row);
    default:
        return model.Reaction(row);
    }
}

bool ObserversPage::MakeObserverList() {
    const auto cell = [this](int row, int column) { return Cell(row, column); };
    if (!observers.Create(Handle(), "Observers", ID_OBSERVERS_LIST, ListView::Titles::shown, cell))
        return false;
    for (const char* title : observerTitles)
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
        return column == 1 ? std::wstring(indent, L' ') + model.Text(line) : model.Result(line);
    };
    if (!log.Create(Handle(), "Log", ID_OBSERVERS_LOG, ListView::Titles::shown, cell))
        return false;
    // The first column of a list cannot be aligned to the right.
    for (const char* title : {"Number", "Call", "WhatComesOfIt"})
        log.AddColumn(title, ListView::Align::left);
    return true;
}

void ObserversPage::Retext() {
    observers.UpdateTexts();
    log.UpdateTexts();
    Show(L"");
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
    const int countsWidth = std::min(width, Sizes().TextWidth(counts) + gap);
    placement.Put(message, 0, messageRow, width - countsWidth - gap, row);
    placement.Put(counts, width - countsWidth, messageRow, countsWidth, row);
}

/// As high as the observers are, with the buttons beside them. Returns where the list ends.
int ObserversPage::ArrangeObservers(Placement& placement, int width, int height) {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    int buttonWidth = 0;
    for (const HWND button : {add, remove, removeAll})
        buttonWidth = std::max(buttonWidth, Sizes().ButtonWidth(button));
    const int listWidth = width - buttonWidth - gap;
    const int listHeight = std::min(height / 2, (model.Observers() + 1) * row);
    placement.Put(observersLabel, 0, 0, listWidth, row);
    placement.Put(observers.Handle(), 0, row, listWidth, listHeight);
    int y = row;
    for (const HWND button : {add, remove, removeAll}) {
        placement.Put(button, width - buttonWidth, y, buttonWidth, row);
        y += row + gap;
    }
    // As wide as what they hold; the last one takes the rest.
    int left = ListView::RoomForColumns(listWidth);
    for (int column = 0; column < 3; ++column) {
        int textWidth = Sizes().TextWidth(Text(observerTitles[column]));
        if (column == 1)
            textWidth = std::max({textWidth, Sizes().TextWidth(Text("Attached")),
                                  Sizes().TextWidth(Text("Removed"))});
        for (int i = 0; i < model.Observers(); ++i)
            textWidth = std::max(textWidth, Sizes().TextWidth(Cell(i, column)));
        const int columnWidth = textWidth + Sizes().Pixels(20);
        observers.SetColumnWidth(column, columnWidth);
        left -= columnWidth;
    }
    observers.SetColumnWidth(3, left);
    return row + listHeight;
}

void ObserversPage::ArrangeSendRow(Placement& placement, int y) const {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    int x = Sizes().TextWidth(sendLabel) + gap;
    placement.Put(sendLabel, 0, y, x, row);
    for (std::size_t i = 0; i < std::size(send); ++i) {
        const int buttonWidth = Sizes().ButtonWidth(send[i]);
        placement.Put(send[i], x, y, buttonWidth, row);
        x += buttonWidth + gap;
    }
}

void ObserversPage::ArrangeLog(Placement& placement, int y, int width, int height) {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    const int buttonWidth = Sizes().ButtonWidth(clear);
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
    Show(Text(before ? "WasAttached" : "IsAttached", {model.Name(observer)}));
}

void ObserversPage::Remove() {
    const int observer = observers.Selected();
    if (observer < 0)
        return;
    model.Remove(observer);
    Show(Text("IsRemoved", {model.Name(observer)}));
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
    Show(Text("AllRemoved"));
}

void ObserversPage::Send(int code) {
    const int received = model.Send(code);
    Show(Text(received == 0 ? "NobodyFor" : "Received",
              {ObserverModel::NameOf(code), std::to_wstring(received)}));
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
    const std::wstring result = model.Result(line);
    SetText(message, std::to_wstring(row + 1) + L". " + model.Text(line) +
                         (result.empty() ? L"" : L" - " + result));
}

void ObserversPage::Show(const std::wstring& text) {
    observers.RedrawRows();
    const int lines = static_cast<int>(model.Log().size());
    log.SetRows(lines);
    log.Select(lines - 1);
    SetText(message, text);
    SetText(counts, Text("ObserverCounts",
                         {std::to_wstring(model.AllAttached()), std::to_wstring(model.Observers()),
                          std::to_wstring(model.Deliveries())}));
    Rearrange();
}

} // namespace

std::unique_ptr<Page> MakeObserversPage();

std::unique_ptr<Page> MakeObserversPage() {
    return std::make_unique<ObserversPage>();
}

} // namespace gallery
