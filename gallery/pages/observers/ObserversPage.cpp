#include "gallery/pages/observers/ObserversPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/observers/ObserverModel.h"
#include "gallery/text/Formats.h"
#include "gallery/text/Language.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>
#include <iterator>

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
    void Retext() override { Show(L""); }
    void Arrange(int width, int height) override;
    void Noticed(const NMHDR& header) override;

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
};

bool ObserversPage::MakeControls() {
    observersLabel = AddLabel("ObserversLabel", ID_OBSERVERS_LABEL);
    if (!MakeObserverList())
        return false;
    add = AddButton("Add", ID_OBSERVERS_ADD, "AddTip");
    remove = AddButton("Remove", ID_OBSERVERS_REMOVE, "RemoveTip");
    removeAll = AddButton("RemoveAll", ID_OBSERVERS_REMOVE_ALL);
    sendLabel = AddLabel("SendLabel", ID_OBSERVERS_SEND_LABEL);
    for (std::size_t i = 0; i < std::size(sendButtons); ++i)
        send[i] = AddButton(sendButtons[i].key, ID_OBSERVERS_SEND + sendButtons[i].code);
    logLabel = AddLabel("LogLabel", ID_OBSERVERS_LOG_LABEL);
    if (!MakeLog())
        return false;
    clear = AddButton("ClearLog", ID_OBSERVERS_CLEAR, "ClearLogTip");
    observers.SetRows(model.Observers());
    Show(L"");
    return clear != nullptr;
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
    if (!AddList(observers, "Observers", ID_OBSERVERS_LIST, ListView::Titles::shown, cell))
        return false;
    for (const char* title : observerTitles)
        observers.AddColumn(title);
    return true;
}

bool ObserversPage::MakeLog() {
    const auto cell = [this](int row, int column) -> std::wstring {
        const ObserverModel::LogLine& line = model.Log()[static_cast<std::size_t>(row)];
        if (column == 0)
            return Number(row + 1);
        constexpr std::size_t spacesALevel = 6;
        const std::size_t indent = static_cast<std::size_t>(line.level) * spacesALevel;
        return column == 1 ? std::wstring(indent, L' ') + model.Text(line) : model.Result(line);
    };
    if (!AddList(log, "Log", ID_OBSERVERS_LOG, ListView::Titles::shown, cell))
        return false;
    // The first column of a list cannot be aligned to the right.
    for (const char* title : {"Number", "Call", "WhatComesOfIt"})
        log.AddColumn(title);
    return true;
}

void ObserversPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/15);
    page.AlignButtons({add, remove, removeAll, clear});
    page.Put(End::top, {.field = observersLabel, .buttons = {add, remove, removeAll}});
    const int listHeight = std::min(height / 3, (model.Observers() + 1) * Sizes().Row());
    page.Places().Put(observers.Handle(), 0, page.Top(), width, listHeight);
    page.Skip(listHeight + page.Gap());
    page.Put(End::top, {.field = sendLabel, .buttons = {send[0], send[1], send[2], send[3]}});
    page.Put(End::top, {.field = logLabel, .buttons = {clear}});
    page.Places().Put(log.Handle(), 0, page.Top(), width, page.Room());
    observers.FitColumns(Sizes(), width, /*stretched=*/3);
    log.FitColumns(Sizes(), width, /*stretched=*/2);
}

void ObserversPage::Noticed(const NMHDR& header) {
    if (header.hwndFrom == log.Handle() && ListView::SelectionMoved(header))
        ShowLogLine();
    else if (header.hwndFrom == observers.Handle() && ListView::DoubleClicked(header))
        AddOrRemove();
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
              {ObserverModel::NameOf(code), Number(received)}));
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
    Tell(Number(row + 1) + L". " + model.Text(line) + (result.empty() ? L"" : L" - " + result));
}

void ObserversPage::Show(const std::wstring& text) {
    observers.RedrawRows();
    const int lines = static_cast<int>(model.Log().size());
    log.SetRows(lines);
    log.Select(lines - 1);
    Tell(text);
    TellState(Text("ObserverCounts", {Number(model.AllAttached()), Number(model.Observers()),
                                      Number(model.Deliveries())}));
    Rearrange();
}

} // namespace

std::unique_ptr<Page> MakeObserversPage() {
    return std::make_unique<ObserversPage>();
}

} // namespace gallery
