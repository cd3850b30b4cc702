#include "gallery/pages/recent/RecentFilesPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/app/RecentFiles.h"
#include "gallery/text/Formats.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>
#include <iterator>

namespace gallery {

namespace {

constexpr const char* fileTitles[] = {"FileName", "Folder", "Length", "LastUsed", "Exists"};

class RecentFilesPage final : public Page {
public:
    void Command(int id, int notification) override;
    void Shown() override;
    void TakeFocus() override { SetFocus(list.Handle()); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    bool MakeFileList();
    bool MakeFolderList();
    std::wstring FileCell(int row, int column) const;
    std::wstring FolderCell(int row, int column) const;
    /// Paths are in the code page of the language.
    void Retext() override { Show(L""); }
    void Arrange(int width, int height) override;
    void Noticed(const NMHDR& header) override;

    void OpenSelected();
    void Remove();
    void Clear();
    void Show(const std::wstring& text);

    std::vector<RecentFiles::File> files;
    std::vector<RecentFiles::Folder> folders;

    HWND filesLabel = nullptr;
    ListView list;
    HWND open = nullptr;
    HWND remove = nullptr;
    HWND clear = nullptr;
    HWND foldersLabel = nullptr;
    ListView folderList;
};

bool RecentFilesPage::MakeControls() {
    filesLabel = AddLabel("RecentFilesLabel", ID_RECENT_FILES_LABEL);
    if (!MakeFileList())
        return false;
    open = AddButton("OpenRecent", ID_OPEN, "OpenRecentTip");
    remove = AddButton("RemoveRecent", ID_RECENT_REMOVE, "RemoveRecentTip");
    clear = AddButton("ClearRecent", ID_RECENT_CLEAR, "ClearRecentTip");
    foldersLabel = AddLabel("RecentFoldersLabel", ID_RECENT_FOLDERS_LABEL);
    return MakeFolderList();
}

bool RecentFilesPage::MakeFileList() {
    const auto cell = [this](int row, int column) { return FileCell(row, column); };
    if (!AddList(list, "RecentFiles", ID_RECENT_FILES, ListView::Titles::shown, cell))
        return false;
    for (const char* title : fileTitles)
        list.AddColumn(title,
                       title == fileTitles[2] ? ListView::Align::right : ListView::Align::left);
    return true;
}

bool RecentFilesPage::MakeFolderList() {
    const auto cell = [this](int row, int column) { return FolderCell(row, column); };
    if (!AddList(folderList, "RecentFolders", ID_RECENT_FOLDERS, ListView::Titles::shown, cell))
        return false;
    folderList.AddColumn("Folder");
    folderList.AddColumn("Uses", ListView::Align::right);
    folderList.AddColumn("FolderUsed");
    return true;
}

std::wstring RecentFilesPage::FileCell(int row, int column) const {
    const RecentFiles::File& file = files[static_cast<std::size_t>(row)];
    const std::wstring name = NameOfFile(file.path);
    switch (column) {
    case 0:
        return name;
    case 1:
        return file.path.substr(0, file.path.size() - name.size());
    case 2:
        return Size(file.length);
    case 3:
        return DateAndTime(file.used);
    default:
        return Text(file.exists ? "Yes" : "No");
    }
}

std::wstring RecentFilesPage::FolderCell(int row, int column) const {
    const RecentFiles::Folder& folder = folders[static_cast<std::size_t>(row)];
    switch (column) {
    case 0:
        return folder.path;
    case 1:
        return Number(folder.uses);
    default:
        return DateAndTime(folder.used);
    }
}

void RecentFilesPage::Shown() {
    Show(L"");
}

void RecentFilesPage::Arrange(int width, int height) {
    Rows page(Sizes(), width, height, /*expected=*/9);
    const int row = Sizes().Row();
    page.Put(Rows::End::top, {.field = filesLabel, .buttons = {open, remove, clear}});
    const int listHeight = (page.Room() - row) * 2 / 3;
    const int foldersTop = page.Top() + listHeight;
    Placement& placement = page.Places();
    placement.Put(list.Handle(), 0, page.Top(), width, listHeight);
    placement.Put(foldersLabel, 0, foldersTop, width, row);
    placement.Put(folderList.Handle(), 0, foldersTop + row, width, page.Room() - listHeight - row);
    list.FitColumns(Sizes(), width, /*stretched=*/1);
    folderList.FitColumns(Sizes(), width, /*stretched=*/0);
}

void RecentFilesPage::Noticed(const NMHDR& header) {
    if (header.hwndFrom != list.Handle())
        return;
    if (ListView::SelectionMoved(header))
        Tell(files[static_cast<std::size_t>(list.Selected())].path);
    else if (ListView::DoubleClicked(header))
        OpenSelected();
    else if (ListView::KeyPressed(header) == VK_DELETE)
        Remove();
}

void RecentFilesPage::Command(int id, int /*notification*/) {
    switch (id) {
    case ID_OPEN:
        return OpenSelected();
    case ID_RECENT_REMOVE:
        return Remove();
    case ID_RECENT_CLEAR:
        return Clear();
    case IDOK:
        if (GetFocus() == list.Handle())
            OpenSelected();
        return;
    default:
        return;
    }
}

void RecentFilesPage::OpenSelected() {
    const int row = list.Selected();
    if (row < 0)
        return;
    // The list is another one as soon as the file is open.
    const std::wstring path = files[static_cast<std::size_t>(row)].path;
    Host().OpenFile(path);
}

void RecentFilesPage::Remove() {
    const int row = list.Selected();
    if (row < 0)
        return;
    const std::wstring path = files[static_cast<std::size_t>(row)].path;
    Host().Recent().Remove(path);
    Show(L"");
    list.Select(std::min(row, static_cast<int>(files.size()) - 1));
    TakeFocus();
    Tell(Text("RecentRemoved", {path}));
}

void RecentFilesPage::Clear() {
    if (MessageBoxW(Handle(), Text("ClearRecentQuestion").c_str(), Text("Gallery").c_str(),
                    MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) != IDYES)
        return;
    Host().Recent().Clear();
    Show(Text("RecentCleared"));
    TakeFocus();
}

void RecentFilesPage::Show(const std::wstring& text) {
    files = Host().Recent().Files();
    folders = Host().Recent().Folders();
    list.SetRows(static_cast<int>(files.size()));
    folderList.SetRows(static_cast<int>(folders.size()));
    for (const HWND button : {open, remove, clear})
        EnableWindow(button, !files.empty());
    Tell(text);
    TellState(Text("RecentCounts", {Number(std::ssize(files)), Number(std::ssize(folders))}));
    Rearrange();
}

/// Files that come with the program, beside those that were opened.
bool RecentFilesPage::ShowExample() {
    const std::wstring languages = Widen((ProgramFolder() + "languages\\").c_str());
    for (const char* name : {"Japanese", "Russian", "German", "English"})
        Host().Recent().Use(languages + Widen(name) + L"\\gallery.ini");
    Host().Recent().Use(languages + L"Languages.csv");
    Show(L"");
    return !files.empty();
}

} // namespace

std::unique_ptr<Page> MakeRecentFilesPage() {
    return std::make_unique<RecentFilesPage>();
}

} // namespace gallery
