#include "gallery/pages/folders/FoldersPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/folders/FolderFiles.h"
#include "gallery/text/Formats.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"
#include "utilities/ui/ExplorerTree.h"

#include <algorithm>
#include <iterator>

namespace gallery {

namespace {

using Properties = TExplorerTreeProperties;

struct FlagBox {
    DWORD flag;
    const char* key;
    bool checked; ///< at first
};
constexpr FlagBox flagBoxes[] = {
    {Properties::desktopAtRoot, "TreeDesktop", true},
    {Properties::myDocumentsAtRoot, "TreeDocuments", true},
    {Properties::myPicturesAtRoot, "TreePictures", false},
    {Properties::networkDrives, "TreeNetwork", true},
    {Properties::removableDrives, "TreeRemovable", true},
    {Properties::cdDrives, "TreeCd", true},
    {Properties::openFolderIcon, "TreeOpenIcon", true},
};

/// In the order that the tree has.
constexpr int treeIcons[] = {ID_ICON_DRIVE,
                             ID_ICON_CD,
                             0,
                             ID_ICON_REMOVABLE,
                             ID_ICON_FOLDER,
                             ID_ICON_OPEN_FOLDER,
                             ID_ICON_NETWORK,
                             ID_ICON_DOCUMENTS,
                             ID_ICON_PICTURES,
                             ID_ICON_DESKTOP,
                             ID_ICON_FOLDER_SHORTCUT,
                             ID_ICON_OPEN_FOLDER_SHORTCUT,
                             ID_ICON_DRIVE_SHORTCUT,
                             ID_ICON_CD_SHORTCUT,
                             0,
                             ID_ICON_REMOVABLE_SHORTCUT,
                             ID_ICON_NETWORK_SHORTCUT,
                             ID_ICON_DOCUMENTS_SHORTCUT,
                             ID_ICON_PICTURES_SHORTCUT,
                             ID_ICON_DESKTOP_SHORTCUT};

/// The text of a key in the code page of the language, cut to the room that it has.
void CopyText(const char* key, char (&room)[MAX_PATH]) {
    std::string narrow;
    Narrow(Text(key), narrow);
    room[narrow.copy(room, MAX_PATH - 1)] = '\0';
}

/// As it is written on the keyboard; "" for a key without a name.
std::wstring NameOfKey(WORD key) {
    wchar_t name[64] = L"";
    constexpr LONG extended = 1 << 24;
    // Those of the block of arrows have the scan codes of the number block.
    const LONG arrows = key >= VK_PRIOR && key <= VK_DELETE ? extended : 0;
    const auto scan = static_cast<LONG>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC) << 16);
    GetKeyNameTextW(scan | arrows, name, static_cast<int>(std::size(name)));
    return name;
}

class FoldersPage final : public Page {
public:
    void Command(int id, int notification) override;
    void Shown() override;
    void TakeFocus() override { SetFocus(View()); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    void Retext() override;
    void Restyle() override { StyleTree(); }
    void Arrange(int width, int height) override;
    int ArrangeBoxes(Placement& places, int width) const;

    bool MakeTree(const std::string& startPath);
    void RemakeTree();
    void StyleTree() const;
    /// The tree-view; null without one.
    HWND View() const { return GetWindow(tree.hWnd(), GW_CHILD); }
    void ShowFolder();

    static void Selected(const char* path, void* self, const TExplorerTreeNode* node,
                         NMHDR* header);
    static void KeyPressed(WORD key, void* self, WPARAM wParam, NMHDR* header);

    std::vector<FolderFile> files;

    HWND boxes[std::size(flagBoxes)] = {};
    HWND reload = nullptr;
    HWND treeLabel = nullptr;
    HWND filesLabel = nullptr;
    ListView fileList;
    HWND folder = nullptr;

    CExplorerTree tree; ///< its handlers use what stands above
};

bool FoldersPage::MakeControls() {
    for (std::size_t i = 0; i < std::size(flagBoxes); ++i) {
        boxes[i] = AddCaption(MakeCheckBox(Handle(), ID_FOLDERS_FLAG + static_cast<int>(i)),
                              flagBoxes[i].key);
        SendMessageW(boxes[i], BM_SETCHECK, flagBoxes[i].checked ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    reload = AddButton("ReloadTree", ID_FOLDERS_RELOAD, "ReloadTreeTip");
    treeLabel = AddLabel("TreeLabel", ID_FOLDERS_TREE_LABEL);
    filesLabel = AddLabel("FolderFilesLabel", ID_FOLDERS_FILES_LABEL);
    const auto cell = [this](int row, int column) {
        const FolderFile& file = files[static_cast<std::size_t>(row)];
        return column == 0 ? file.name : Size(static_cast<double>(file.bytes));
    };
    if (!AddList(fileList, "FolderFiles", ID_FOLDERS_FILES, ListView::Titles::shown, cell))
        return false;
    fileList.AddColumn("FileName");
    fileList.AddColumn("Length", ListView::Align::right);
    folder = MakeTextLine(Handle(), SS_PATHELLIPSIS, ID_FOLDERS_FOLDER);
    char start[MAX_PATH] = "";
    GetWindowsDirectoryA(start, MAX_PATH);
    return folder != nullptr && MakeTree(start);
}

/// The flags and labels of a tree are those of its making.
bool FoldersPage::MakeTree(const std::string& startPath) {
    Properties wanted{};
    wanted.parent = Handle();
    wanted.controlId = ID_FOLDERS_TREE;
    wanted.instance = GetModuleHandleW(nullptr);
    for (std::size_t i = 0; i < std::size(flagBoxes); ++i)
        wanted.flags |= IsChecked(boxes[i]) ? flagBoxes[i].flag : 0;
    wanted.selectionHandler = &FoldersPage::Selected;
    wanted.selectionContext = this;
    wanted.keyHandler = &FoldersPage::KeyPressed;
    wanted.keyContext = this;
    startPath.copy(wanted.startPath, MAX_PATH - 1);
    std::copy(std::begin(treeIcons), std::end(treeIcons), wanted.icons);
    CopyText("FolderDocuments", wanted.myDocumentsLabel);
    CopyText("FolderPictures", wanted.myPicturesLabel);
    CopyText("FolderDesktop", wanted.desktopLabel);
    const HWND focus = GetFocus();
    const bool good = tree.Create(wanted);
    SetFocus(IsWindow(focus) != FALSE ? focus : View());
    // Its name comes right before it, and Tab reaches into it.
    SetWindowPos(tree.hWnd(), treeLabel, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetWindowLongPtrW(tree.hWnd(), GWL_EXSTYLE, WS_EX_CONTROLPARENT);
    SetWindowLongPtrW(View(), GWL_STYLE,
                      GetWindowLongPtrW(View(), GWL_STYLE) | WS_TABSTOP | TVS_SHOWSELALWAYS);
    StyleTree();
    Rearrange();
    ShowFolder();
    return good;
}

void FoldersPage::RemakeTree() {
    // The tree has its path in the code page that the language had when it was selected.
    std::string path;
    Narrow(TextOf(folder), path);
    MakeTree(path);
}

void FoldersPage::StyleTree() const {
    const HWND parent = Handle();
    SendMessageW(View(), WM_SETFONT, static_cast<WPARAM>(SendMessageW(parent, WM_GETFONT, 0, 0)),
                 /*redraw=*/TRUE);
}

/// The labels at the root are in another language.
void FoldersPage::Retext() {
    Tell(Text("PressKeys"));
    if (tree.hWnd() != nullptr)
        RemakeTree();
}

void FoldersPage::Shown() {
    ShowFolder();
}

void FoldersPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/14);
    page.Skip(ArrangeBoxes(page.Places(), width));
    const int left = width * 2 / 5;
    page.Put(End::top, {.field = treeLabel}, 40, {.label = filesLabel, .field = folder});
    page.Places().Put(tree.hWnd(), 0, page.Top(), left - page.Gap(), page.Room());
    const int listWidth = width - left - page.Gap();
    page.Places().Put(fileList.Handle(), left + page.Gap(), page.Top(), listWidth, page.Room());
    fileList.FitColumns(Sizes(), listWidth, /*stretched=*/0);
}

/// In rows, each as full as it can be, with the button at the end of the first one. Returns their
/// height.
int FoldersPage::ArrangeBoxes(Placement& places, int width) const {
    const int gap = Sizes().Pixels(8);
    const int row = Sizes().Row();
    const int button = Sizes().ButtonWidth(reload);
    places.Put(reload, width - button, 0, button, row);
    int x = 0;
    int y = 0;
    int room = width - button - gap;
    for (const HWND box : boxes) {
        const int boxWidth = Sizes().TextWidth(box) + Sizes().Pixels(24);
        if (x > 0 && x + boxWidth > room) {
            x = 0;
            y += row;
            room = width;
        }
        places.Put(box, x, y, boxWidth, row);
        x += boxWidth + gap;
    }
    return y + row + gap;
}

void FoldersPage::Command(int id, int /*notification*/) {
    if (id == ID_FOLDERS_RELOAD) {
        tree.Load();
        ShowFolder();
    } else if (id >= ID_FOLDERS_FLAG && id < ID_FOLDERS_FLAG + static_cast<int>(std::size(boxes))) {
        RemakeTree();
    }
}

void FoldersPage::ShowFolder() {
    const std::wstring path = Widen(tree.CurrentSelection());
    files = FilesOfFolder(path);
    fileList.SetRows(static_cast<int>(files.size()));
    SetText(folder, path);
    TellState(Text("FolderCounts", {Number(std::ssize(files))}));
    Rearrange();
}

void FoldersPage::Selected(const char*, void* self, const TExplorerTreeNode*, NMHDR*) {
    static_cast<FoldersPage*>(self)->ShowFolder();
}

void FoldersPage::KeyPressed(WORD key, void* self, WPARAM, NMHDR*) {
    static_cast<FoldersPage*>(self)->Tell(
        Text("KeyPressed", {NameOfKey(key), std::to_wstring(key)}));
}

bool FoldersPage::ShowExample() {
    KeyPressed(VK_DOWN, this, 0, nullptr);
    return tree.Loaded();
}

} // namespace

std::unique_ptr<Page> MakeFoldersPage() {
    return std::make_unique<FoldersPage>();
}

} // namespace gallery
