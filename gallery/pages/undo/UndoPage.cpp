#include "gallery/pages/undo/UndoPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/undo/ItemFile.h"
#include "gallery/pages/undo/ItemModel.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/FileDialog.h"
#include "gallery/widgets/Question.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace gallery {

namespace {

constexpr FileKind itemFiles = {.nameKey = "ItemFiles", .extension = L"txt"};

class UndoPage final : public Page {
public:
    UndoPage() : model([this] { Host().DocumentChanged(); }) {}
    void Command(int id, int notification) override;
    void TakeFocus() override { SetFocus(list.Handle()); }
    bool ShowExample() override;
    std::wstring DocumentName() const override {
        return file.empty() ? Text("ItemList") : NameOfFile(file);
    }
    bool Offers(int command) const override { return command == ID_EDIT || Page::Offers(command); }
    bool Unsaved() const override { return model.History().Dirty() != 0; }
    bool MayClose() override;
    void Shown() override;

private:
    bool MakeControls() override;
    void Retext() override { Show(list.Selected(), L""); }
    void Arrange(int width, int height) override;
    void Noticed(const NMHDR& header) override;

    void Enter();
    void Escape();
    void Add();
    void Change();
    void Remove();
    void Group();
    void Undo();
    void Redo();
    void UndoAll();
    void RedoAll();
    void AskAndOpen();
    bool Save();
    bool SaveAs();

    /// Shows the state of list and history, and `text` as the message.
    void Show(int selected, const std::wstring& text);
    void ShowItem();
    void Enable(HWND button, bool possible) const;

    ItemModel model;
    std::wstring file; ///< that the items were read from or saved to; "" for none
    bool visited = false;

    HWND group = nullptr;
    HWND open = nullptr;
    HWND save = nullptr;
    HWND listLabel = nullptr;
    ListView list;
    HWND itemLabel = nullptr;
    HWND itemText = nullptr;
    HWND add = nullptr;
    HWND change = nullptr;
    HWND remove = nullptr;
    HWND undo = nullptr;
    HWND redo = nullptr;
    HWND undoAll = nullptr;
    HWND redoAll = nullptr;
};

bool UndoPage::MakeControls() {
    const HWND page = Handle();
    group = AddCaption(MakeCheckBox(page, ID_UNDO_GROUP), "GroupChanges");
    open = AddButton("Open", ID_OPEN);
    save = AddButton("Save", ID_SAVE);
    listLabel = AddLabel("ItemsLabel", ID_UNDO_LIST_LABEL);
    const auto cell = [this](int row, int) { return model.All()[static_cast<std::size_t>(row)]; };
    if (!AddList(list, "Items", ID_UNDO_LIST, ListView::Titles::hidden, cell))
        return false;
    list.AddColumn("Items");
    itemLabel = AddLabel("ItemLabel", ID_UNDO_ITEM_LABEL);
    itemText = MakeEdit(page, ID_UNDO_ITEM);
    add = AddButton("AddItem", ID_UNDO_ADD);
    change = AddButton("ChangeItem", ID_UNDO_CHANGE);
    remove = AddButton("RemoveItem", ID_UNDO_REMOVE);
    undo = MakeButton(page, L"", ID_UNDO);
    redo = MakeButton(page, L"", ID_REDO);
    undoAll = AddButton("UndoAll", ID_UNDO_UNDO_ALL);
    redoAll = AddButton("RedoAll", ID_UNDO_REDO_ALL);
    Show(-1, L"");
    return redoAll != nullptr;
}

void UndoPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/16);
    const int right = Sizes().TextWidth(group) + Sizes().Pixels(30) + Sizes().ButtonWidth(open) +
                      Sizes().ButtonWidth(save);
    page.Put(End::top, {.field = listLabel},
             100 - 100 * (right + 3 * page.Gap()) / std::max(width, 1),
             {.field = group, .buttons = {open, save}});
    page.Put(End::bottom, {.buttons = {undo, redo, undoAll, redoAll}});
    page.Put(End::bottom,
             {.label = itemLabel, .field = itemText, .buttons = {add, change, remove}});
    page.Places().Put(list.Handle(), 0, page.Top(), width, page.Room());
    list.SetColumnWidth(0, ListView::RoomForColumns(width));
}

void UndoPage::Noticed(const NMHDR& header) {
    if (header.hwndFrom != list.Handle())
        return;
    if (ListView::SelectionMoved(header))
        ShowItem();
    else if (ListView::DoubleClicked(header))
        FocusAndSelect(itemText);
    else if (ListView::KeyPressed(header) == VK_DELETE)
        Remove();
}

void UndoPage::Command(int id, int) {
    switch (id) {
    case ID_UNDO_ADD:
        return Add();
    case ID_UNDO_CHANGE:
        return Change();
    case ID_UNDO_REMOVE:
        return Remove();
    case ID_UNDO_GROUP:
        return Group();
    case ID_UNDO:
        return Undo();
    case ID_REDO:
        return Redo();
    case ID_UNDO_UNDO_ALL:
        return UndoAll();
    case ID_UNDO_REDO_ALL:
        return RedoAll();
    case ID_OPEN:
        return AskAndOpen();
    case ID_SAVE:
        Save();
        return;
    case ID_SAVE_AS:
        SaveAs();
        return;
    case ID_EDIT:
        return FocusAndSelect(itemText);
    case IDOK:
        return Enter();
    case IDCANCEL:
        return Escape();
    default:
        return;
    }
}

void UndoPage::Enter() {
    if (GetFocus() == itemText)
        Add();
    else if (GetFocus() == list.Handle())
        FocusAndSelect(itemText);
}

/// Takes back what was typed.
void UndoPage::Escape() {
    ShowItem();
    TakeFocus();
}

/// Below the selected item.
void UndoPage::Add() {
    const std::wstring text = TextOf(itemText);
    if (text.empty()) {
        Tell(Text("TypeItem"));
        return FocusAndSelect(itemText);
    }
    const int place = list.Selected() + 1;
    const bool added = model.Add(place, text);
    Show(place, added ? Text("ItemAdded", {text}) : Text("NoMemory"));
    FocusAndSelect(itemText);
}

void UndoPage::Change() {
    const int place = list.Selected();
    const std::wstring text = TextOf(itemText);
    if (place < 0)
        return Tell(Text("SelectItem"));
    if (text == model.All()[static_cast<std::size_t>(place)])
        return;
    const bool changed = model.Change(place, text);
    Show(place, changed ? Text("ItemChanged", {text}) : Text("NoMemory"));
}

void UndoPage::Remove() {
    const int place = list.Selected();
    if (place < 0)
        return Tell(Text("SelectItem"));
    const std::wstring text = model.All()[static_cast<std::size_t>(place)];
    const bool removed = model.Remove(place);
    Show(place, removed ? Text("ItemRemoved", {text}) : Text("NoMemory"));
}

void UndoPage::Group() {
    const bool on = IsChecked(group);
    model.Group(on);
    Show(list.Selected(), Text(on ? "GroupBegins" : "GroupEnds"));
}

void UndoPage::Undo() {
    if (model.History().CanUndo() == 0)
        return;
    model.History().Undo();
    Show(list.Selected(), Text("Undone"));
}

void UndoPage::Redo() {
    if (model.History().CanRedo() == 0)
        return;
    model.History().Redo();
    Show(list.Selected(), Text("Redone"));
}

void UndoPage::UndoAll() {
    model.UndoAll();
    Show(list.Selected(), Text("AllUndone"));
}

void UndoPage::RedoAll() {
    model.RedoAll();
    Show(list.Selected(), Text("AllRedone"));
}

void UndoPage::AskAndOpen() {
    std::wstring path = file;
    ItemModel::Items items;
    if (!MayClose() || !AskForFile(Handle(), FileQuestion::open, itemFiles, path))
        return;
    if (!LoadItems(path, items))
        return Show(list.Selected(), Text("NotOpenedItems", {path}));
    file = path;
    SendMessageW(group, BM_SETCHECK, BST_UNCHECKED, 0);
    model.Reset(items);
    Show(0, Text("ItemsOpened", {path}));
    TakeFocus();
}

bool UndoPage::Save() {
    if (file.empty())
        return SaveAs();
    const bool saved = SaveItems(file, model.All());
    if (saved)
        model.MarkSaved();
    Show(list.Selected(), Text(saved ? "ItemsSaved" : "NotSaved", {file}));
    return saved;
}

bool UndoPage::SaveAs() {
    std::wstring path = file;
    if (!AskForFile(Handle(), FileQuestion::save, itemFiles, path))
        return false;
    const std::wstring previous = std::exchange(file, path);
    if (Save())
        return true;
    file = previous;
    return false;
}

bool UndoPage::MayClose() {
    if (!model.DiffersFromSaved())
        return true;
    const int answer =
        Ask(Handle(), Text("SaveChanges", {DocumentName()}),
            {{IDYES, "SaveIt"}, {IDNO, "DropChanges"}, {IDCANCEL, "AnswerCancel"}}, IDYES);
    return answer == IDNO || (answer == IDYES && Save());
}

/// Some items to begin with, once.
void UndoPage::Shown() {
    if (std::exchange(visited, true) || !model.All().empty())
        return;
    model.Reset({Text("ExampleItem1"), Text("ExampleItem2")});
    Show(0, Text("UndoBegin"));
}

/// A group in effect and a change undone, after the save point.
bool UndoPage::ShowExample() {
    model.Reset({});
    for (const char* example : {"ExampleItem1", "ExampleItem2"})
        model.Add(static_cast<int>(model.All().size()), Text(example));
    model.MarkSaved();
    model.Group(true);
    model.Add(2, Text("ExampleItem3"));
    model.Change(0, Text("ExampleItem4"));
    model.Group(false);
    model.Remove(1);
    Show(2, L"");
    Undo();
    return true;
}

void UndoPage::Show(int selected, const std::wstring& text) {
    const CUndoMgr& history = model.History();
    const int items = static_cast<int>(model.All().size());
    list.SetRows(items);
    list.Select(std::min(std::max(selected, 0), items - 1));
    ShowItem();
    const bool canUndo = history.CanUndo() != 0;
    const bool canRedo = history.CanRedo() != 0;
    for (const auto& [button, key, name] : {std::tuple(undo, "UndoSet", history.GetUndoSetName()),
                                            std::tuple(redo, "RedoSet", history.GetRedoSetName())})
        SetText(button, Text(key, {Text(name != nullptr ? name : "NoSet")}));
    for (const auto& [button, possible] : {std::pair(undo, canUndo), std::pair(undoAll, canUndo),
                                           std::pair(redo, canRedo), std::pair(redoAll, canRedo)})
        Enable(button, possible);
    char newest[32];
    model.History().GetCurrentUndoText(newest, sizeof newest);
    TellState(Text(canUndo ? "ItemCountsAndChange" : "ItemCounts",
                   {std::to_wstring(items), Text(newest)}));
    Tell(text);
    Host().DocumentChanged();
    Rearrange();
}

void UndoPage::ShowItem() {
    const int row = list.Selected();
    const bool selected = row >= 0;
    if (selected)
        SetText(itemText, model.All()[static_cast<std::size_t>(row)]);
    // What was typed is an item now, or given up: Ctrl+Z is for the list again.
    SendMessageW(itemText, EM_EMPTYUNDOBUFFER, 0, 0);
    Enable(change, selected);
    Enable(remove, selected);
}

/// The keyboard must not stay with a button that is disabled.
void UndoPage::Enable(HWND button, bool possible) const {
    if (!possible && GetFocus() == button)
        SetFocus(list.Handle());
    EnableWindow(button, possible);
}

} // namespace

std::unique_ptr<Page> MakeUndoPage() {
    return std::make_unique<UndoPage>();
}

} // namespace gallery
