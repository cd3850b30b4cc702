#include "gallery/pages/files/FilesPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/files/FilesModel.h"
#include "gallery/text/Formats.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>

namespace gallery {

namespace {

class FilesPage final : public Page {
public:
    void Command(int id, int notification) override;
    void Shown() override;
    void TakeFocus() override { FocusAndSelect(nameText); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    bool MakeLists();
    std::wstring NameCell(int row, int column) const;
    std::wstring PlaceCell(int row, int column) const;
    void Retext() override;
    void Arrange(int width, int height) override;
    void Noticed(const NMHDR& header) override;

    void ShowNames();
    void ShowPlaces();
    void ChoosePlace();
    void OpenPlace();
    void ShowPath(const std::wstring& path);
    void ShowProgram();
    const SpecialFolder* Place() const;

    std::vector<MadeName> made;
    std::vector<SpecialFolder> found;

    HWND nameLabel = nullptr;
    HWND nameText = nullptr;
    HWND folderLabel = nullptr;
    HWND folderText = nullptr;
    ListView names;
    HWND placesLabel = nullptr;
    ListView places;
    HWND open = nullptr;
    HWND programLabel = nullptr;
    Link program;
    HWND openProgram = nullptr;
};

bool FilesPage::MakeControls() {
    nameLabel = AddLabel("FileNameLabel", ID_FILES_NAME_LABEL);
    nameText = MakeEdit(Handle(), ID_FILES_NAME);
    folderLabel = AddLabel("InFolderLabel", ID_FILES_FOLDER_LABEL);
    folderText = MakeEdit(Handle(), ID_FILES_FOLDER);
    if (!MakeLists())
        return false;
    open = AddButton("OpenFolder", ID_FILES_SHOW, "OpenFolderTip");
    programLabel = AddLabel("ProgramFolderLabel", ID_FILES_PROGRAM_LABEL);
    if (!AddLink(program, ID_FILES_PROGRAM_LINK, "OpenProgramFolderTip"))
        return false;
    openProgram = AddButton("OpenProgramFolder", ID_FILES_PROGRAM, "OpenProgramFolderTip");
    SetText(nameText, L"media-library.csv");
    SetText(folderText, Widen(ProgramFolder().c_str()));
    ShowProgram();
    return openProgram != nullptr;
}

bool FilesPage::MakeLists() {
    const auto nameCell = [this](int row, int column) { return NameCell(row, column); };
    if (!AddList(names, "MadeNames", ID_FILES_NAMES, ListView::Titles::shown, nameCell))
        return false;
    for (const char* title : {"Function", "Result", "Returned"})
        names.AddColumn(title);
    placesLabel = AddLabel("SpecialFoldersLabel", ID_FILES_PLACES_LABEL);
    const auto placeCell = [this](int row, int column) { return PlaceCell(row, column); };
    if (!AddList(places, "SpecialFolders", ID_FILES_PLACES, ListView::Titles::shown, placeCell))
        return false;
    places.AddColumn("SpecialFolder");
    places.AddColumn("Path");
    places.AddColumn("FreeSpace", ListView::Align::right);
    return true;
}

std::wstring FilesPage::NameCell(int row, int column) const {
    const MadeName& name = made[static_cast<std::size_t>(row)];
    switch (column) {
    case 0:
        return name.callKey != nullptr ? Text(name.callKey, {name.function}) : name.function;
    case 1:
        return name.result;
    default:
        return name.returned;
    }
}

std::wstring FilesPage::PlaceCell(int row, int column) const {
    const SpecialFolder& place = found[static_cast<std::size_t>(row)];
    switch (column) {
    case 0:
        return Text(place.nameKey);
    case 1:
        return place.path.empty() ? Text("NoSuchFolder") : place.path;
    default:
        return place.path.empty() ? L"" : Size(place.bytesFree);
    }
}

/// The language has another code page.
void FilesPage::Retext() {
    ShowNames();
    ShowProgram();
}

void FilesPage::ShowProgram() {
    const std::wstring path = ProgramPath();
    program.Set(path.substr(0, path.size() - NameOfFile(path).size()));
}

/// Files and space may be others by now.
void FilesPage::Shown() {
    found = SpecialFolders();
    ShowPlaces();
    ShowNames();
}

void FilesPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/12);
    const int labels = std::max(Sizes().TextWidth(nameLabel), Sizes().TextWidth(folderLabel));
    page.Put(End::top, {.label = nameLabel, .field = nameText, .labelWidth = labels});
    page.Put(End::top, {.label = folderLabel, .field = folderText, .labelWidth = labels});
    page.AlignButtons({open, openProgram});
    page.Put(End::bottom,
             {.label = programLabel, .buttons = {openProgram}, .link = program.Handle()});
    // Seven lines, where there is room for these and a few special folders.
    const int line = Sizes().Line() + Sizes().Pixels(6);
    const int namesHeight = std::min(page.Room() * 3 / 5, 7 * line + Sizes().Pixels(10));
    const int labelTop = page.Top() + namesHeight + page.Gap() / 2;
    const int placesTop = labelTop + Sizes().Row() + page.Gap() / 2;
    page.Places().Put(names.Handle(), 0, page.Top(), width, namesHeight);
    page.PutAt(labelTop, {.field = placesLabel, .buttons = {open}});
    page.Places().Put(places.Handle(), 0, placesTop, width, page.Top() + page.Room() - placesTop);
    names.FitColumns(Sizes(), width, /*stretched=*/1);
    places.FitColumns(Sizes(), width, /*stretched=*/1);
}

void FilesPage::Noticed(const NMHDR& header) {
    // In full, where the column is too narrow.
    if (header.hwndFrom == names.Handle() && ListView::SelectionMoved(header))
        Tell(made[static_cast<std::size_t>(names.Selected())].result);
    else if (header.hwndFrom == places.Handle() && ListView::DoubleClicked(header))
        ChoosePlace();
}

void FilesPage::Command(int id, int notification) {
    switch (id) {
    case ID_FILES_NAME:
    case ID_FILES_FOLDER:
        if (notification == EN_CHANGE)
            ShowNames();
        return;
    case ID_FILES_SHOW:
        return OpenPlace();
    case ID_FILES_PROGRAM:
    case ID_FILES_PROGRAM_LINK:
        return ShowPath(ProgramPath());
    case IDOK:
        if (GetFocus() == places.Handle())
            ChoosePlace();
        return;
    default:
        return;
    }
}

void FilesPage::ShowNames() {
    const std::wstring folder = TextOf(folderText);
    made = NamesMadeOf(TextOf(nameText), folder);
    const DWORD attributes = GetFileAttributesW(folder.c_str());
    if (made.empty())
        TellState(Text("NameNotPossible"), Tone::error);
    else if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        TellState(Text("FolderMissing"));
    else
        TellState(L"");
    names.SetRows(static_cast<int>(made.size()));
    Rearrange();
}

void FilesPage::ShowPlaces() {
    const int selected = places.Selected();
    places.SetRows(static_cast<int>(found.size()));
    places.Select(selected);
    Rearrange();
}

/// Null for none, and for one that the system does not have.
const SpecialFolder* FilesPage::Place() const {
    const int row = places.Selected();
    if (row < 0 || found[static_cast<std::size_t>(row)].path.empty())
        return nullptr;
    return &found[static_cast<std::size_t>(row)];
}

void FilesPage::ChoosePlace() {
    if (Place() == nullptr)
        return;
    SetText(folderText, Place()->path);
    TakeFocus();
}

void FilesPage::OpenPlace() {
    if (Place() != nullptr)
        ShowPath(Place()->path);
}

void FilesPage::ShowPath(const std::wstring& path) {
    if (!ShowInFolder(path, Handle())) {
        Warn(Text("FolderNotOpened", {path}));
    }
}

/// A name that every function changes.
bool FilesPage::ShowExample() {
    SetText(nameText, L"Night drive: part 2, live? [12].wav");
    TakeFocus();
    return !made.empty();
}

} // namespace

std::unique_ptr<Page> MakeFilesPage() {
    return std::make_unique<FilesPage>();
}

} // namespace gallery
