#include "gallery/pages/ini/IniDocumentPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/app/DocumentPage.h"
#include "gallery/pages/ini/IniModel.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>

namespace gallery {

namespace {

class IniDocumentPage final : public DocumentPage {
public:
    IniDocumentPage() : DocumentPage(model, wording) {}
    void Command(int id, int notification) override;
    void TakeFocus() override { SetFocus(sections.Handle()); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    bool MakeLists();
    void Arrange(int width, int height) override;
    void ArrangeLists(Placement& placement, int y, int width, int height);
    void Noticed(const NMHDR& header) override;

    void Sort();
    void Find(const std::wstring& text) override;
    const ListView* Values() const override { return &pairs; }
    void ShowValue() override;
    bool Commit() override;
    void Enter(HWND focus) override;

    void GoTo(IniModel::Place place);
    void ShowDocument() override;
    void Refresh() override;
    void ShowPairs();
    std::wstring Counts() const override;
    void ShowState() override;

    static constexpr Wording wording = {.files = {.nameKey = "IniFiles", .extension = L"ini"},
                                        .shipped = "media-settings.ini",
                                        .notOpened = "NotOpenedIni",
                                        .findLabel = "FindKey",
                                        .find = "FindNext",
                                        .typeText = "TypeKey",
                                        .replace = "ReplaceIni",
                                        .savedAs = "SavedAsIni",
                                        .valueLabel = "ValueLabel",
                                        .set = "Set"};

    IniModel model;
    IniModel::Place edited; ///< the pair whose value is in the edit field

    HWND sort = nullptr;
    ListView sections;
    ListView pairs;
};

bool IniDocumentPage::MakeControls() {
    MakeFileRow();
    sort = AddButton("Sort", ID_INI_SORT);
    MakeFindRow();
    if (!MakeLists())
        return false;
    MakeValueRow();
    ShowState();
    return set != nullptr;
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
    if (!AddList(sections, "Sections", ID_INI_SECTIONS, ListView::Titles::shown, sectionCell) ||
        !AddList(pairs, "Pairs", ID_INI_PAIRS, ListView::Titles::shown, pairCell))
        return false;
    sections.AddColumn("Section");
    sections.AddColumn("Pairs", ListView::Align::right);
    pairs.AddColumn("Key");
    pairs.AddColumn("Value");
    return true;
}

void IniDocumentPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/15);
    const int labels = std::max(Sizes().TextWidth(findLabel), Sizes().TextWidth(valueLabel));
    page.AlignButtons({sort, find, set});
    page.Put(End::top, {.field = fileLabel, .buttons = {open, save, saveAs, sort}});
    page.Put(End::top,
             {.label = findLabel, .field = findText, .buttons = {find}, .labelWidth = labels});
    page.Put(End::bottom,
             {.label = valueLabel, .field = valueText, .buttons = {set}, .labelWidth = labels});
    ArrangeLists(page.Places(), page.Top(), width, page.Room());
}

void IniDocumentPage::ArrangeLists(Placement& placement, int y, int width, int height) {
    const int gap = Sizes().Pixels(8);
    const int left = std::clamp(width / 3, Sizes().Pixels(180), Sizes().Pixels(300));
    const int right = width - left - gap;
    placement.Put(sections.Handle(), 0, y, left, height);
    placement.Put(pairs.Handle(), left + gap, y, right, height);
    const int number = std::max(Sizes().TextWidth(L"00000"), Sizes().TextWidth(Text("Pairs"))) +
                       Sizes().Pixels(20);
    sections.SetColumnWidth(0, ListView::RoomForColumns(left) - number);
    sections.SetColumnWidth(1, number);
    const int key = ListView::RoomForColumns(right) * 2 / 5;
    pairs.SetColumnWidth(0, key);
    pairs.SetColumnWidth(1, ListView::RoomForColumns(right) - key);
}

void IniDocumentPage::Noticed(const NMHDR& header) {
    const bool ofSections = header.hwndFrom == sections.Handle();
    if (ListView::SelectionMoved(header) && ofSections)
        ShowPairs();
    else if (ListView::SelectionMoved(header))
        ShowValue();
    else if (ListView::DoubleClicked(header) && !ofSections)
        EditValue();
}

void IniDocumentPage::Command(int id, int notification) {
    if (id == ID_INI_SORT)
        Sort();
    else
        DocumentPage::Command(id, notification);
}

void IniDocumentPage::Enter(HWND focus) {
    if (focus == sections.Handle())
        SetFocus(pairs.Handle());
    else if (focus == pairs.Handle())
        EditValue();
}

void IniDocumentPage::Sort() {
    if (!Commit())
        return;
    model.Sort();
    TakeFocus();
    ShowDocument();
    Tell(Text("SortedIni"));
}

void IniDocumentPage::Find(const std::wstring& text) {
    const IniModel::Match match = model.FindKey(text, {sections.Selected(), pairs.Selected()});
    if (match.count == 0)
        return Warn(Text("NoKey", {text}));
    GoTo(match.place);
    Tell(Text("Match", {std::to_wstring(match.number), std::to_wstring(match.count),
                        model.Key(match.place), model.SectionName(match.place.section)}));
}

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

std::wstring IniDocumentPage::Counts() const {
    return Text("IniCounts", {std::to_wstring(model.Sections()), std::to_wstring(model.AllPairs()),
                              Text(model.Sorted() ? "Sorted" : "FileOrder"),
                              Format(L"%.2f", model.LoadMilliseconds())});
}

void IniDocumentPage::ShowState() {
    EnableWindow(sort, model.Loaded() && !model.Sorted());
    DocumentPage::ShowState();
}

} // namespace

std::unique_ptr<Page> MakeIniDocumentPage() {
    return std::make_unique<IniDocumentPage>();
}

} // namespace gallery
