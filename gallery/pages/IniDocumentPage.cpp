#include "gallery/ControlIds.h"
#include "gallery/Controls.h"
#include "gallery/DocumentPage.h"
#include "gallery/IniModel.h"
#include "gallery/Language.h"
#include "gallery/ListView.h"
#include "gallery/Text.h"

#include <algorithm>
#include <memory>

namespace gallery {

namespace {

/// Sections and pairs of an INI document: find a key, change a value, sort, save.
class IniDocumentPage final : public DocumentPage {
public:
    IniDocumentPage() : DocumentPage(model, wording) {}
    void Command(int id, int notification) override;
    void TakeFocus() override { SetFocus(sections.Handle()); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    bool MakeLists();
    void Retext() override;
    void Restyle() override;
    void Arrange(int width, int height) override;
    int ArrangeFileRow(Placement& placement, int width) const;
    void ArrangeFieldRow(Placement& placement, int y, int width, HWND label, HWND edit,
                         HWND button) const;
    void ArrangeLists(Placement& placement, int y, int width, int height);
    LRESULT Notify(const NMHDR& header) override;

    void Enter();
    void Escape();
    void Sort();
    void FindNext();
    void EditValue();
    bool Commit() override;

    void GoTo(IniModel::Place place);
    void ShowDocument() override;
    void Refresh() override;
    void ShowPairs();
    void ShowValue();
    void ShowState();
    void Tell(const std::wstring& text) override { SetText(message, text); }

    static constexpr Wording wording = {
        {"IniFiles", L"ini"}, "media-settings.ini", "NotOpenedIni", "ReplaceIni", "SavedAsIni"};

    IniModel model;
    IniModel::Place edited; ///< the pair whose value is in the edit field

    HWND fileLabel = nullptr;
    HWND open = nullptr;
    HWND save = nullptr;
    HWND saveAs = nullptr;
    HWND sort = nullptr;
    HWND findLabel = nullptr;
    HWND findText = nullptr;
    HWND findNext = nullptr;
    ListView sections;
    ListView pairs;
    HWND valueLabel = nullptr;
    HWND valueText = nullptr;
    HWND set = nullptr;
    HWND message = nullptr;
    HWND counts = nullptr;
};

bool IniDocumentPage::MakeControls() {
    const HWND page = Handle();
    fileLabel = MakeTextLine(page, SS_PATHELLIPSIS, ID_INI_FILE_LABEL);
    open = AddButton("Open", ID_OPEN);
    save = AddButton("Save", ID_SAVE);
    saveAs = AddButton("SaveAs", ID_SAVE_AS);
    sort = AddButton("Sort", ID_INI_SORT);
    findLabel = AddLabel("FindKey", ID_INI_FIND_LABEL);
    findText = MakeEdit(page, ID_INI_FIND_TEXT);
    findNext = AddButton("FindNext", ID_FIND_NEXT);
    if (!MakeLists())
        return false;
    valueLabel = AddLabel("ValueLabel", ID_INI_VALUE_LABEL);
    valueText = MakeEdit(page, ID_INI_VALUE_TEXT);
    set = AddButton("Set", ID_INI_SET);
    message = MakeTextLine(page, SS_ENDELLIPSIS, ID_INI_MESSAGE);
    counts = MakeTextLine(page, SS_RIGHT, ID_INI_COUNTS);
    ShowState();
    return counts != nullptr;
}

bool IniDocumentPage::MakeLists() {
    const auto sectionCell = [this](int row, int column) {
        if (column == 1)
            return std::to_wstring(model.Pairs(row));
        const std::wstring name = model.SectionName(row);
        return name.empty() ? Text("BeforeFirstSection") : name;
    };
    const auto pairCell = [this](int row, int column) {
        const IniModel::Place place{sections.Selected(), row};
        return column == 0 ? model.Key(place) : model.Value(place);
    };
    if (!sections.Create(Handle(), "Sections", ID_INI_SECTIONS, ListView::Titles::shown,
                         sectionCell) ||
        !pairs.Create(Handle(), "Pairs", ID_INI_PAIRS, ListView::Titles::shown, pairCell))
        return false;
    sections.AddColumn("Section", ListView::Align::left);
    sections.AddColumn("Pairs", ListView::Align::right);
    pairs.AddColumn("Key", ListView::Align::left);
    pairs.AddColumn("Value", ListView::Align::left);
    return true;
}

void IniDocumentPage::Retext() {
    sections.UpdateTexts();
    pairs.UpdateTexts();
    // The document is read in the code page of the language.
    ShowValue();
    Tell(L"");
    ShowState();
}

void IniDocumentPage::Restyle() {
    sections.SetLook(Sizes());
    pairs.SetLook(Sizes());
}

void IniDocumentPage::Arrange(int width, int height) {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    Placement placement(/*expected=*/15);
    const int findRow = ArrangeFileRow(placement, width) + gap;
    const int listTop = findRow + row + gap;
    const int messageRow = height - row + gap / 2;
    const int valueRow = messageRow - gap / 2 - row;
    ArrangeFieldRow(placement, findRow, width, findLabel, findText, findNext);
    ArrangeLists(placement, listTop, width, valueRow - gap - listTop);
    ArrangeFieldRow(placement, valueRow, width, valueLabel, valueText, set);
    const int countsWidth = std::min(width, Sizes().TextWidth(counts) + gap);
    placement.Put(message, 0, messageRow, width - countsWidth - gap, row);
    placement.Put(counts, width - countsWidth, messageRow, countsWidth, row);
}

/// Returns where the row ends.
int IniDocumentPage::ArrangeFileRow(Placement& placement, int width) const {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    int right = width;
    for (const HWND button : {sort, saveAs, save, open}) {
        const int buttonWidth = Sizes().ButtonWidth(button);
        placement.Put(button, right - buttonWidth, 0, buttonWidth, row);
        right -= buttonWidth + gap;
    }
    placement.Put(fileLabel, 0, 0, right, row);
    return row;
}

void IniDocumentPage::ArrangeFieldRow(Placement& placement, int y, int width, HWND label, HWND edit,
                                      HWND button) const {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    const int labelWidth = std::max(Sizes().TextWidth(findLabel), Sizes().TextWidth(valueLabel));
    const int buttonWidth = std::max(Sizes().ButtonWidth(findNext), Sizes().ButtonWidth(set));
    placement.Put(label, 0, y, labelWidth, row);
    placement.Put(edit, labelWidth + gap, y + (row - Sizes().Field()) / 2,
                  width - labelWidth - buttonWidth - 2 * gap, Sizes().Field());
    placement.Put(button, width - buttonWidth, y, buttonWidth, row);
}

void IniDocumentPage::ArrangeLists(Placement& placement, int y, int width, int height) {
    const int gap = Sizes().Pixels(8);
    const int left = std::clamp(width / 3, Sizes().Pixels(180), Sizes().Pixels(300));
    const int right = width - left - gap;
    placement.Put(sections.Handle(), 0, y, left, height);
    placement.Put(pairs.Handle(), left + gap, y, right, height);
    const int number = Sizes().TextWidth(L"00000") + Sizes().Pixels(12);
    sections.SetColumnWidth(0, ListView::RoomForColumns(left) - number);
    sections.SetColumnWidth(1, number);
    const int key = ListView::RoomForColumns(right) * 2 / 5;
    pairs.SetColumnWidth(0, key);
    pairs.SetColumnWidth(1, ListView::RoomForColumns(right) - key);
}

LRESULT IniDocumentPage::Notify(const NMHDR& header) {
    LRESULT result = 0;
    if (sections.Notified(header, result) || pairs.Notified(header, result))
        return result;
    const bool ofSections = header.hwndFrom == sections.Handle();
    if (ListView::SelectionMoved(header) && ofSections)
        ShowPairs();
    else if (ListView::SelectionMoved(header))
        ShowValue();
    else if (header.code == static_cast<UINT>(NM_DBLCLK) && !ofSections)
        EditValue();
    return 0;
}

void IniDocumentPage::Command(int id, int notification) {
    switch (id) {
    case ID_OPEN:
        return AskAndOpen();
    case ID_SAVE:
        Save();
        return;
    case ID_SAVE_AS:
        return SaveAs();
    case ID_INI_SORT:
        return Sort();
    case ID_FIND:
        return FocusAndSelect(findText);
    case ID_FIND_NEXT:
        return FindNext();
    case ID_EDIT:
        return EditValue();
    case ID_INI_SET:
        Commit();
        return;
    case ID_INI_VALUE_TEXT:
        // What was typed counts, however the field is left; Esc takes it back before.
        if (notification == EN_KILLFOCUS)
            Commit();
        return;
    case IDOK:
        return Enter();
    case IDCANCEL:
        return Escape();
    default:
        return;
    }
}

void IniDocumentPage::Enter() {
    const HWND focus = GetFocus();
    if (focus == findText)
        FindNext();
    else if (focus == sections.Handle())
        SetFocus(pairs.Handle());
    else if (focus == pairs.Handle())
        EditValue();
    else if (focus == valueText && Commit())
        SetFocus(pairs.Handle());
}

void IniDocumentPage::Escape() {
    if (GetFocus() == valueText) {
        ShowValue();
        SetFocus(pairs.Handle());
    } else {
        SetText(findText, L"");
    }
    Tell(L"");
}

void IniDocumentPage::Sort() {
    if (!Commit())
        return;
    model.Sort();
    TakeFocus();
    ShowDocument();
    Tell(Text("SortedIni"));
}

void IniDocumentPage::FindNext() {
    if (!Commit())
        return;
    const std::wstring text = TextOf(findText);
    if (text.empty()) {
        Tell(Text("TypeKey"));
        return FocusAndSelect(findText);
    }
    const IniModel::Match match = model.FindKey(text, {sections.Selected(), pairs.Selected()});
    if (match.count == 0)
        return Warn(Text("NoKey", {text}));
    GoTo(match.place);
    Tell(Text("Match", {std::to_wstring(match.number), std::to_wstring(match.count),
                        model.Key(match.place), model.SectionName(match.place.section)}));
}

void IniDocumentPage::EditValue() {
    if (pairs.Selected() >= 0)
        FocusAndSelect(valueText);
}

/// False when what was typed cannot be the value; the page tells why.
bool IniDocumentPage::Commit() {
    const std::wstring value = TextOf(valueText);
    if (value == model.Value(edited))
        return true;
    const char* reason = model.SetValue(edited, value);
    if (reason != nullptr) {
        Warn(Text(reason));
        return false;
    }
    pairs.RedrawRows();
    ShowState();
    Tell(Text("PairSet", {model.Key(edited), model.SectionName(edited.section)}));
    return true;
}

/// A search for a key of a section in the middle.
bool IniDocumentPage::ShowExample() {
    if (model.AllPairs() == 0)
        return model.Loaded();
    const int section = model.Sections() / 2;
    GoTo({section, 0});
    SetText(findText, model.Key({section, model.Pairs(section) / 2}));
    FindNext();
    SetFocus(pairs.Handle());
    return true;
}

void IniDocumentPage::GoTo(IniModel::Place place) {
    sections.Select(place.section);
    pairs.Select(place.pair);
}

void IniDocumentPage::ShowDocument() {
    sections.SetRows(model.Sections());
    ShowPairs();
    SetText(fileLabel, model.Path());
    ShowState();
}

/// After saving: a sorted document was sorted again, which swaps equal names.
void IniDocumentPage::Refresh() {
    const IniModel::Place place = edited;
    ShowDocument();
    GoTo(place);
}

void IniDocumentPage::ShowPairs() {
    pairs.SetRows(model.Pairs(sections.Selected()));
    ShowValue();
}

void IniDocumentPage::ShowValue() {
    edited = {sections.Selected(), pairs.Selected()};
    SetText(valueText, model.Value(edited));
}

void IniDocumentPage::ShowState() {
    for (const HWND button : {save, saveAs, findNext, set})
        EnableWindow(button, model.Loaded());
    EnableWindow(sort, model.Loaded() && !model.Sorted());
    if (model.Loaded())
        SetText(counts, Text("IniCounts",
                             {std::to_wstring(model.Sections()), std::to_wstring(model.AllPairs()),
                              Text(model.Sorted() ? "Sorted" : "FileOrder"),
                              Format(L"%.2f", model.LoadMilliseconds())}));
    Host().DocumentChanged();
    Rearrange();
}

} // namespace

std::unique_ptr<Page> MakeIniDocumentPage();

std::unique_ptr<Page> MakeIniDocumentPage() {
    return std::make_unique<IniDocumentPage>();
}

} // namespace gallery
