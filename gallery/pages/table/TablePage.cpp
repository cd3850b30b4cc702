#include "gallery/pages/table/TablePage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/app/DocumentPage.h"
#include "gallery/pages/table/TableModel.h"
#include "gallery/text/Language.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>
#include <vector>

namespace gallery {

namespace {

/// Lists and choices with more columns than these take their time.
constexpr int mostColumns = 100;

class TablePage final : public DocumentPage {
public:
    TablePage() : DocumentPage(model, wording) {}
    void Command(int id, int notification) override;
    void TakeFocus() override { SetFocus(rows.Handle()); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    void Retext() override;
    void Restyle() override { naturalWidths.clear(); }
    void Arrange(int width, int height) override;
    void ArrangeColumns(int width);
    void Noticed(const NMHDR& header) override;

    void Enter(HWND focus) override;
    void Find(const std::wstring& value) override;
    const ListView* Values() const override { return &rows; }
    void ShowValue() override;
    bool Commit() override;
    void KeepSorted();
    void Sort(int byColumn);
    void ChooseDelimiter();
    void ChooseColumn(int chosen);
    void AddRow();
    void DeleteRow();
    void ReplaceAll();

    int Column() const { return std::max(0, Chosen(column)); }
    int ShownColumns() const { return std::min(model.Columns(), mostColumns); }
    std::wstring Title(int index) const;
    void ShowDocument() override;
    void Refresh() override { rows.RedrawRows(); }
    void ShowChange() override;
    std::wstring OpenedNote() const override;
    void ShowTitles();
    void ShowRows(int selected);
    std::wstring Counts() const override;
    void ShowState() override;

    static constexpr Wording wording = {.files = {.nameKey = "TableFiles", .extension = L"csv"},
                                        .contents = Contents::table,
                                        .shipped = "media-library.csv",
                                        .notOpened = "NotOpenedTable",
                                        .findLabel = "FindLabel",
                                        .find = "Find",
                                        .typeText = "TypeFieldText",
                                        .valueLabel = "FieldLabel",
                                        .set = "SetField"};

    TableModel model;
    TableModel::Place edited;       ///< the field that is in the edit field
    std::vector<int> naturalWidths; ///< of the columns; empty when they are to be measured
    int sortedBy = -1;              ///< the column whose title was clicked last
    bool descending = false;

    HWND columnLabel = nullptr;
    HWND column = nullptr;
    HWND keepSorted = nullptr;
    HWND delimiterLabel = nullptr;
    HWND delimiter = nullptr;
    HWND whole = nullptr;
    ListView rows;
    HWND add = nullptr;
    HWND remove = nullptr;
    HWND replaceLabel = nullptr;
    HWND replaceText = nullptr;
    HWND byLabel = nullptr;
    HWND byText = nullptr;
    HWND replace = nullptr;
};

bool TablePage::MakeControls() {
    const HWND page = Handle();
    MakeFileRow();
    columnLabel = AddLabel("ColumnLabel", ID_TABLE_COLUMN_LABEL);
    column = MakeChoice(page, ID_TABLE_COLUMN);
    keepSorted = AddCaption(MakeCheckBox(page, ID_TABLE_KEEP_SORTED), "KeepSorted");
    delimiterLabel = AddLabel("DelimiterLabel", ID_TABLE_DELIMITER_LABEL);
    delimiter = MakeChoice(page, ID_TABLE_DELIMITER);
    MakeFindRow();
    whole = AddCaption(MakeCheckBox(page, ID_TABLE_WHOLE), "WholeValue");
    const auto cell = [this](int row, int index) { return model.Field({row, index}); };
    if (!AddList(rows, "TableRows", ID_TABLE_LIST, ListView::Titles::buttons, cell))
        return false;
    MakeValueRow();
    add = AddButton("AddRow", ID_TABLE_ADD);
    remove = AddButton("DeleteRow", ID_TABLE_DELETE);
    replaceLabel = AddLabel("ReplaceLabel", ID_TABLE_REPLACE_LABEL);
    replaceText = MakeEdit(page, ID_TABLE_REPLACE_TEXT);
    byLabel = AddLabel("ByLabel", ID_TABLE_BY_LABEL);
    byText = MakeEdit(page, ID_TABLE_BY_TEXT);
    replace = AddButton("ReplaceAll", ID_TABLE_REPLACE);
    ShowTitles();
    ShowState();
    return replace != nullptr;
}

void TablePage::Retext() {
    const int chosen = Column();
    ShowTitles();
    SendMessageW(column, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    DocumentPage::Retext();
}

void TablePage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/25);
    int labels = 0;
    for (const HWND label : {columnLabel, findLabel, valueLabel, replaceLabel})
        labels = std::max(labels, Sizes().TextWidth(label));
    page.Put(End::top, {.field = fileLabel, .buttons = {open, save, saveAs}});
    page.Put(End::top, {.label = columnLabel, .field = column, .labelWidth = labels}, 38,
             {.label = delimiterLabel, .field = delimiter, .buttons = {keepSorted}});
    page.Put(
        End::top,
        {.label = findLabel, .field = findText, .buttons = {whole, find}, .labelWidth = labels});
    page.AlignButtons({remove, replace});
    page.Put(End::bottom, {.label = replaceLabel, .field = replaceText, .labelWidth = labels}, 42,
             {.label = byLabel, .field = byText, .buttons = {replace}});
    page.Put(End::bottom, {.label = valueLabel,
                           .field = valueText,
                           .buttons = {set, add, remove},
                           .labelWidth = labels});
    page.Places().Put(rows.Handle(), 0, page.Top(), width, page.Room());
    ArrangeColumns(width);
}

/// As wide as their texts, as far as that is not too wide; the first one takes what is left.
void TablePage::ArrangeColumns(int width) {
    constexpr int looked = 100;
    if (naturalWidths.empty()) {
        for (int i = 0; i < ShownColumns(); ++i) {
            int widest = Sizes().TextWidth(Title(i));
            for (int row = 0; row < std::min(model.Rows(), looked); ++row)
                widest = std::max(widest, Sizes().TextWidth(model.Field({row, i})));
            naturalWidths.push_back(std::min(widest, Sizes().Pixels(260)) + Sizes().Pixels(20));
        }
    }
    int left = ListView::RoomForColumns(width);
    for (const int natural : naturalWidths)
        left -= natural;
    for (std::size_t i = 0; i < naturalWidths.size(); ++i)
        rows.SetColumnWidth(static_cast<int>(i),
                            naturalWidths[i] + (i == 0 ? std::max(left, 0) : 0));
}

void TablePage::Noticed(const NMHDR& header) {
    if (header.hwndFrom != rows.Handle())
        return;
    const int clicked = ListView::ColumnClicked(header);
    if (clicked >= 0 && clicked < ShownColumns())
        ChooseColumn(clicked);
    if (ListView::SelectionMoved(header))
        ShowValue();
    else if (ListView::DoubleClicked(header))
        EditValue();
    else if (ListView::TitleClicked(header) >= 0)
        Sort(ListView::TitleClicked(header));
    else if (ListView::KeyPressed(header) == VK_INSERT)
        AddRow();
    else if (ListView::KeyPressed(header) == VK_DELETE)
        DeleteRow();
}

void TablePage::Command(int id, int notification) {
    switch (id) {
    case ID_TABLE_COLUMN:
        if (notification == CBN_SELCHANGE)
            ShowValue();
        return;
    case ID_TABLE_KEEP_SORTED:
        return KeepSorted();
    case ID_TABLE_DELIMITER:
        if (notification == CBN_SELCHANGE)
            ChooseDelimiter();
        return;
    case ID_TABLE_ADD:
        return AddRow();
    case ID_TABLE_DELETE:
        return DeleteRow();
    case ID_TABLE_REPLACE:
        return ReplaceAll();
    default:
        return DocumentPage::Command(id, notification);
    }
}

void TablePage::Enter(HWND focus) {
    if (focus == rows.Handle())
        EditValue();
    else if (focus == replaceText)
        FocusAndSelect(byText);
    else if (focus == byText)
        ReplaceAll();
}

void TablePage::Find(const std::wstring& text) {
    const bool value = IsChecked(whole);
    const TableModel::Match match =
        value ? model.FindValue(Column(), text, rows.Selected()) : model.FindPart(text, edited);
    const char* key = match.bisected ? "ValueBisected" : value ? "ValueScanned" : "PartFound";
    if (match.place.row < 0) {
        key = match.bisected ? "NoValueBisected" : value ? "NoValueScanned" : "NoPart";
        return Warn(Text(key, {text, Title(Column())}));
    }
    rows.Select(match.place.row);
    ChooseColumn(match.place.column);
    Tell(Text(key, {std::to_wstring(match.place.row + 1), Title(match.place.column)}));
}

void TablePage::ChooseColumn(int chosen) {
    SendMessageW(column, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    ShowValue();
}

bool TablePage::Commit() {
    const std::wstring text = TextOf(valueText);
    if (text == model.Field(edited))
        return true;
    if (const char* reason = model.SetField(edited, text))
        return Reject(reason);
    ShowChange();
    Tell(Text("FieldSet", {Title(edited.column), std::to_wstring(edited.row + 1)}));
    return true;
}

void TablePage::ShowChange() {
    const TableModel::Place touched = model.Touched();
    if (touched.column < ShownColumns())
        SendMessageW(column, CB_SETCURSEL, static_cast<WPARAM>(touched.column), 0);
    ShowRows(std::min(touched.row, model.Rows() - 1));
}

void TablePage::KeepSorted() {
    const bool on = IsChecked(keepSorted);
    const char* reason = nullptr;
    if (!Commit() || (reason = model.KeepSorted(on, edited)) != nullptr) {
        if (reason != nullptr)
            Warn(Text(reason));
        return ShowState();
    }
    ShowChange();
    Tell(Text(on ? "SortedTable" : "NotSortedTable"));
}

/// The same title again turns the order around.
void TablePage::Sort(int byColumn) {
    if (!model.Loaded() || !Commit())
        return;
    descending = byColumn == sortedBy && !descending;
    sortedBy = byColumn;
    if (const char* reason = model.Sort(byColumn, descending, {0, edited.column}))
        return Warn(Text(reason));
    ShowChange();
    TakeFocus();
    Tell(Text(descending ? "SortedDown" : "SortedUp", {Title(byColumn)}));
}

void TablePage::ChooseDelimiter() {
    constexpr char delimiters[] = {',', ';', '\t'};
    const char chosen = delimiters[Chosen(delimiter)];
    if (!model.Loaded() || chosen == model.Delimiter() || !MayClose() || !model.ReadAs(chosen))
        return ShowState();
    ShowDocument();
    Tell(OpenedNote());
}

void TablePage::AddRow() {
    if (!model.Loaded() || !Commit())
        return;
    if (const char* reason = model.AddRow())
        return Warn(Text(reason));
    ShowChange();
    FocusAndSelect(valueText);
    Tell(Text("RowAdded", {std::to_wstring(edited.row + 1)}));
}

void TablePage::DeleteRow() {
    if (!Commit())
        return;
    const int row = rows.Selected();
    if (const char* reason = model.DeleteRow(row))
        return Warn(Text(reason));
    ShowChange();
    TakeFocus();
    Tell(Text("RowDeleted", {std::to_wstring(row + 1)}));
}

void TablePage::ReplaceAll() {
    if (!Commit())
        return;
    const std::wstring text = TextOf(replaceText);
    if (text.empty()) {
        Tell(Text("TypeReplaced"));
        return FocusAndSelect(replaceText);
    }
    int fields = 0;
    const std::wstring with = TextOf(byText);
    if (const char* reason = model.ReplaceAll(text, with, fields, edited))
        return Warn(Text(reason));
    if (fields == 0)
        return Warn(Text("NothingReplaced", {text}));
    ShowChange();
    Tell(Text("Replaced", {text, with, std::to_wstring(fields)}));
}

/// A value found by bisection.
bool TablePage::ShowExample() {
    if (!model.Loaded())
        return false;
    SendMessageW(keepSorted, BM_CLICK, 0, 0);
    SendMessageW(whole, BM_CLICK, 0, 0);
    ChooseColumn(0);
    SetText(findText, model.Field({model.Rows() / 2, 0}));
    FindNext();
    TakeFocus();
    return true;
}

std::wstring TablePage::Title(int index) const {
    const std::wstring title = model.Title(index);
    return title.empty() ? Text("UnnamedColumn", {std::to_wstring(index + 1)}) : title;
}

void TablePage::ShowDocument() {
    ShowTitles();
    sortedBy = -1;
    ShowRows(0);
}

void TablePage::ShowTitles() {
    std::vector<std::wstring> titles;
    for (int i = 0; i < ShownColumns(); ++i)
        titles.push_back(Title(i));
    rows.SetColumns(titles);
    SetChoices(column, titles, /*chosen=*/0);
    SetChoices(delimiter, {Text("Comma"), Text("Semicolon"), Text("Tab")}, /*chosen=*/0);
    naturalWidths.clear();
}

void TablePage::ShowRows(int selected) {
    rows.SetRows(model.Rows());
    rows.Select(selected);
    ShowValue();
    ShowState();
}

void TablePage::ShowValue() {
    edited = {rows.Selected(), Column()};
    SetText(valueText, model.Field(edited));
    EnableWindow(remove, edited.row >= 0);
}

std::wstring TablePage::OpenedNote() const {
    return model.LeftOut() > 0 ? Text("LinesLeftOut", {std::to_wstring(model.LeftOut())}) : L"";
}

std::wstring TablePage::Counts() const {
    return Text(model.Sorted() ? "SortedTableCounts" : "TableCounts",
                {std::to_wstring(model.Rows()), std::to_wstring(model.Columns())});
}

void TablePage::ShowState() {
    for (const HWND control : {column, keepSorted, delimiter, whole, add, replace})
        EnableWindow(control, model.Loaded());
    SendMessageW(keepSorted, BM_SETCHECK, model.Sorted() ? BST_CHECKED : BST_UNCHECKED, 0);
    const int chosen = model.Delimiter() == ',' ? 0 : model.Delimiter() == ';' ? 1 : 2;
    SendMessageW(delimiter, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    DocumentPage::ShowState();
}

} // namespace

std::unique_ptr<Page> MakeTablePage() {
    return std::make_unique<TablePage>();
}

} // namespace gallery
