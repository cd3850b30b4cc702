#include "gallery/pages/ini/IniDocumentPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/app/DocumentPage.h"
#include "gallery/pages/ini/IniModel.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Question.h"
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
    void AddSection();
    void AddKey();
    void DeleteSection();
    void DeleteKey();
    void Find(const std::wstring& text) override;
    const ListView* Values() const override { return &pairs; }
    void ShowValue() override;
    bool Commit() override;
    void Enter(HWND focus) override;

    void GoTo(IniModel::Place place);
    void ShowDocument() override;
    void Refresh() override;
    void ShowChange() override;
    void ShowPairs();
    std::wstring Counts() const override;
    void ShowState() override;

    static constexpr Wording wording = {.files = {.nameKey = "IniFiles", .extension = L"ini"},
                                        .contents = Contents::ini,
                                        .shipped = "media-settings.ini",
                                        .notOpened = "NotOpenedIni",
                                        .findLabel = "FindKeyOrValue",
                                        .find = "FindNext",
                                        .typeText = "TypeKey",
                                        .valueLabel = "ValueLabel",
                                        .set = "Set"};

    IniModel model;
    IniModel::Place edited; ///< the pair whose value is in the edit field

    HWND sort = nullptr;
    ListView sections;
    ListView pairs;
    HWND addSection = nullptr;
    HWND deleteSection = nullptr;
    HWND addKey = nullptr;
    HWND deleteKey = nullptr;
};

bool IniDocumentPage::MakeControls() {
    MakeFileRow();
    sort = AddButton("Sort", ID_INI_SORT);
    MakeFindRow();
    if (!MakeLists())
        return false;
    MakeValueRow();
    addSection = AddButton("AddSection", ID_INI_ADD_SECTION);
    deleteSection = AddButton("DeleteSection", ID_INI_DELETE_SECTION);
    addKey = AddButton("AddKey", ID_INI_ADD_KEY);
    deleteKey = AddButton("DeleteKey", ID_INI_DELETE_KEY);
    ShowState();
    return deleteKey != nullptr;
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
        if (column == 2)
            return model.InheritedFrom(place);
        return column == 0 ? model.Key(place) : model.Value(place);
    };
    if (!AddList(sections, "Sections", ID_INI_SECTIONS, ListView::Titles::buttons, sectionCell) ||
        !AddList(pairs, "Pairs", ID_INI_PAIRS, ListView::Titles::buttons, pairCell))
        return false;
    sections.AddColumn("Section");
    sections.AddColumn("Pairs", ListView::Align::right);
    pairs.AddColumn("Key");
    pairs.AddColumn("Value");
    pairs.AddColumn("InheritedFrom");
    return true;
}

void IniDocumentPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/19);
    const int labels = std::max(Sizes().TextWidth(findLabel), Sizes().TextWidth(valueLabel));
    page.AlignButtons({sort, find, set});
    page.Put(End::top, {.field = fileLabel, .buttons = {open, save, saveAs, sort}});
    page.Put(End::top,
             {.label = findLabel, .field = findText, .buttons = {find}, .labelWidth = labels});
    page.Put(End::bottom,
             {.label = valueLabel, .field = valueText, .buttons = {set}, .labelWidth = labels});
    page.Put(End::bottom, {.buttons = {addSection, deleteSection, addKey, deleteKey}});
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
    const int room = ListView::RoomForColumns(right);
    const int source =
        std::max(room / 5, Sizes().TextWidth(Text("InheritedFrom")) + Sizes().Pixels(20));
    const int key = (room - source) * 2 / 5;
    pairs.SetColumnWidth(0, key);
    pairs.SetColumnWidth(1, room - source - key);
    pairs.SetColumnWidth(2, source);
}

void IniDocumentPage::Noticed(const NMHDR& header) {
    const bool ofSections = header.hwndFrom == sections.Handle();
    if (ListView::SelectionMoved(header) && ofSections)
        ShowPairs();
    else if (ListView::SelectionMoved(header))
        ShowValue();
    else if (ListView::DoubleClicked(header) && !ofSections)
        EditValue();
    else if (ListView::TitleClicked(header) >= 0)
        Sort();
    else if (ListView::KeyPressed(header) == VK_INSERT)
        ofSections ? AddSection() : AddKey();
    else if (ListView::KeyPressed(header) == VK_DELETE)
        ofSections ? DeleteSection() : DeleteKey();
}

void IniDocumentPage::Command(int id, int notification) {
    switch (id) {
    case ID_INI_SORT:
        return Sort();
    case ID_INI_ADD_SECTION:
        return AddSection();
    case ID_INI_DELETE_SECTION:
        return DeleteSection();
    case ID_INI_ADD_KEY:
        return AddKey();
    case ID_INI_DELETE_KEY:
        return DeleteKey();
    default:
        return DocumentPage::Command(id, notification);
    }
}

void IniDocumentPage::Enter(HWND focus) {
    if (focus == sections.Handle())
        SetFocus(pairs.Handle());
    else if (focus == pairs.Handle())
        EditValue();
}

void IniDocumentPage::Sort() {
    if (!Commit() || !model.Loaded() || model.Sorted())
        return;
    if (const char* reason = model.Sort())
        return Warn(Text(reason));
    TakeFocus();
    ShowDocument();
    Tell(Text("SortedIni"));
}

void IniDocumentPage::AddSection() {
    std::wstring name;
    if (!model.Loaded() || !Commit() || !AskForText(Handle(), Text("NewSection"), name))
        return;
    if (const char* reason = model.AddSection(name))
        return Warn(Text(reason));
    ShowChange();
    Tell(Text("SectionAdded", {name}));
}

void IniDocumentPage::AddKey() {
    const int section = sections.Selected();
    std::wstring key;
    if (!model.Loaded() || !Commit())
        return;
    if (model.IsLoose(section))
        return Warn(Text("LoosePair"));
    if (!AskForText(Handle(), Text("NewKey", {model.SectionName(section)}), key))
        return;
    if (const char* reason = model.AddPair(section, key))
        return Warn(Text(reason));
    ShowChange();
    FocusAndSelect(valueText);
    Tell(Text("KeyAdded", {key, model.SectionName(section)}));
}

void IniDocumentPage::DeleteSection() {
    const int section = sections.Selected();
    const std::wstring name = model.SectionName(section);
    if (!Commit())
        return;
    if (const char* reason = model.DeleteSection(section))
        return Warn(Text(reason));
    ShowChange();
    SetFocus(sections.Handle());
    Tell(Text("SectionDeleted", {name.empty() ? Text("BeforeFirstSection") : name}));
}

void IniDocumentPage::DeleteKey() {
    if (!Commit())
        return;
    const std::wstring key = model.Key(edited);
    if (const char* reason = model.DeletePair(edited))
        return Warn(Text(reason));
    ShowChange();
    SetFocus(pairs.Handle());
    Tell(Text("KeyDeleted", {key}));
}

void IniDocumentPage::Find(const std::wstring& text) {
    const IniModel::Match match = model.Find(text, {sections.Selected(), pairs.Selected()});
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
    if (const char* reason = model.SetValue(edited, value))
        return Reject(reason);
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
    pairs.Select(std::min(place.pair, model.Pairs(sections.Selected()) - 1));
}

void IniDocumentPage::ShowDocument() {
    sections.SetRows(model.Sections());
    ShowPairs();
    ShowState();
}

void IniDocumentPage::Refresh() {
    pairs.RedrawRows();
}

void IniDocumentPage::ShowChange() {
    const IniModel::Place place = model.Touched();
    ShowDocument();
    GoTo({std::min(place.section, model.Sections() - 1), place.pair});
}

void IniDocumentPage::ShowPairs() {
    pairs.SetRows(model.Pairs(sections.Selected()));
    ShowValue();
}

void IniDocumentPage::ShowValue() {
    edited = {sections.Selected(), pairs.Selected()};
    SetText(valueText, model.Value(edited));
    EnableWindow(deleteKey, edited.pair >= 0);
}

std::wstring IniDocumentPage::Counts() const {
    return Text("IniCounts", {std::to_wstring(model.Sections()), std::to_wstring(model.AllPairs()),
                              Text(model.Sorted() ? "Sorted" : "FileOrder"),
                              Format(L"%.2f", model.LoadMilliseconds())});
}

void IniDocumentPage::ShowState() {
    EnableWindow(sort, model.Loaded() && !model.Sorted());
    EnableWindow(addSection, model.Loaded());
    for (const HWND control : {deleteSection, addKey})
        EnableWindow(control, sections.Selected() >= 0);
    DocumentPage::ShowState();
}

} // namespace

std::unique_ptr<Page> MakeIniDocumentPage() {
    return std::make_unique<IniDocumentPage>();
}

} // namespace gallery
