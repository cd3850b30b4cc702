#include "utilities/ui/ExplorerTree.h"

#include "tests/support/CapturedLog.h"
#include "tests/support/Dice.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/Shortcut.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestWindow.h"
#include "utilities/system/files/FileFunctions.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <vector>

namespace fs = std::filesystem;

namespace {

using Flags = TExplorerTreeProperties;
using Lines = std::vector<std::string>;

HTREEITEM Next(HWND view, UINT relation, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(view, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

std::string NameOf(HWND view, HTREEITEM item) {
    char text[MAX_PATH] = "";
    TVITEMA asked{};
    asked.mask = TVIF_TEXT;
    asked.hItem = item;
    asked.pszText = text;
    asked.cchTextMax = sizeof text;
    SendMessageA(view, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&asked));
    return text;
}

/// A tree in a window, what its handlers got, and what they do.
class Tree : public CExplorerTree {
public:
    explicit Tree(const HWND parent) {
        wanted.parent = parent;
        wanted.instance = GetModuleHandleW(nullptr);
        wanted.controlId = 77;
        wanted.place = {0, 0, 299, 199};
        wanted.selectionHandler = &Tree::Selected;
        wanted.selectionContext = this;
        wanted.keyHandler = &Tree::Key;
        wanted.keyContext = this;
    }

    bool Show(const std::string& start, DWORD flags = 0) {
        wanted.flags = flags;
        start.copy(wanted.startPath, sizeof wanted.startPath - 1);
        wanted.startPath[std::min<std::size_t>(start.size(), MAX_PATH - 1)] = '\0';
        return Create(wanted);
    }
    HWND View() const { return GetWindow(hWnd(), GW_CHILD); }
    HTREEITEM Caret() const { return Next(View(), TVGN_CARET, nullptr); }
    void Open(HTREEITEM item, UINT how = TVE_EXPAND) const {
        SendMessageW(View(), TVM_EXPAND, how, reinterpret_cast<LPARAM>(item));
    }
    void Choose(HTREEITEM item) const {
        SendMessageW(View(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    }
    std::vector<HTREEITEM> Children(HTREEITEM item) const {
        std::vector<HTREEITEM> children;
        for (HTREEITEM child = Next(View(), TVGN_CHILD, item); child != nullptr;
             child = Next(View(), TVGN_NEXT, child))
            children.push_back(child);
        return children;
    }
    TVITEMW ItemOf(HTREEITEM item) const {
        TVITEMW asked{};
        asked.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
        asked.hItem = item;
        SendMessageW(View(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked));
        return asked;
    }
    std::string PathOf(HTREEITEM item) const {
        const auto* node = reinterpret_cast<const TExplorerTreeNode*>(ItemOf(item).lParam);
        return node != nullptr ? node->path : "no record";
    }
    /// Name, images, and "+" with a button.
    std::string LineOf(HTREEITEM item) const {
        const TVITEMW asked = ItemOf(item);
        return NameOf(View(), item) + " " + std::to_string(asked.iImage) + " " +
               std::to_string(asked.iSelectedImage) +
               (Next(View(), TVGN_CHILD, item) != nullptr ? " +" : "");
    }
    Lines LinesOf(HTREEITEM item) const {
        Lines lines;
        for (const HTREEITEM child : Children(item))
            lines.push_back(LineOf(child));
        return lines;
    }

    bool HasSubDirectories(const char* path) override {
        ++askedFor;
        if (onAsked != nullptr) {
            std::exchange(onAsked, nullptr)();
            return true;
        }
        return CExplorerTree::HasSubDirectories(path);
    }

    TExplorerTreeProperties wanted{};
    Lines told;
    int askedFor = 0;
    std::function<void()> onTold; ///< once
    std::function<void()> onAsked;

private:
    static void Tell(void* self, const std::string& what) {
        auto& tree = *static_cast<Tree*>(self);
        tree.told.push_back(what);
        if (tree.onTold != nullptr)
            std::exchange(tree.onTold, nullptr)();
    }
    static void Selected(const char* path, void* self, const TExplorerTreeNode* node, NMHDR*) {
        EXPECT_STREQ(path, node != nullptr ? node->path : "");
        EXPECT_STREQ(path, static_cast<Tree*>(self)->CurrentSelection());
        Tell(self, path);
    }
    static void Key(WORD key, void* self, WPARAM wParam, NMHDR* header) {
        EXPECT_EQ(wParam, 77U);
        EXPECT_EQ(header->hwndFrom, static_cast<Tree*>(self)->View());
        Tell(self, "key " + std::to_string(key));
    }
};

/// The names in the order in which a tree-view sorts them in.
Lines AsATreeViewSorts(const TestWindow& window, const Lines& names) {
    const HWND view = window.Add(WC_TREEVIEWW, L"", 0, {0, 0, 9, 9});
    for (std::string name : names) {
        TVINSERTSTRUCTA item{};
        item.hInsertAfter = TVI_SORT;
        item.item.mask = TVIF_TEXT;
        item.item.pszText = name.data();
        SendMessageA(view, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    }
    Lines sorted;
    for (HTREEITEM item = Next(view, TVGN_ROOT, nullptr); item != nullptr;
         item = Next(view, TVGN_NEXT, item))
        sorted.push_back(NameOf(view, item));
    DestroyWindow(view);
    return sorted;
}

/// Folders, files and shortcuts at random, and beside them what a tree must show.
class Model {
public:
    Model(const std::string& root, unsigned seed) : dice(seed), folders{root} {
        for (int i = 0; i < 60; ++i)
            Add();
    }

    struct Child {
        std::string name;
        std::string path;
        int image;
    };
    std::map<std::string, std::vector<Child>> shown; ///< by the folder's path

    void Check(const Tree& tree, const TestWindow& window, HTREEITEM item,
               const std::string& folder, int depth) {
        SCOPED_TRACE(folder);
        tree.Open(item);
        const int open = tree.UseOpenFolderIcon() ? 1 : 0;
        Lines names;
        Lines lines;
        for (const Child& child : shown[folder]) {
            names.push_back(child.name);
            lines.push_back(child.name + " " + std::to_string(child.image) + " " +
                            std::to_string(child.image + open) +
                            (shown[child.path].empty() ? "" : " +"));
        }
        Lines shownNames;
        for (const HTREEITEM child : tree.Children(item))
            shownNames.push_back(NameOf(tree.View(), child));
        EXPECT_EQ(shownNames, AsATreeViewSorts(window, names));
        Lines shownLines = tree.LinesOf(item);
        std::sort(lines.begin(), lines.end());
        std::sort(shownLines.begin(), shownLines.end());
        ASSERT_EQ(shownLines, lines);
        for (const HTREEITEM child : tree.Children(item)) {
            if (depth > 0)
                Check(tree, window, child, tree.PathOf(child), depth - 1);
        }
    }

private:
    std::string AnyFolder() {
        return folders[static_cast<std::size_t>(dice.Below(static_cast<int>(folders.size())))];
    }

    void Add() {
        static constexpr const char* stems[] = {"a",   "B",   "b-c", "\xE9t\xE9",
                                                "Zoo", "x 1", "_",   "10"};
        const std::string folder = AnyFolder();
        const std::string name = stems[dice.Below(8)] + std::to_string(dice.Below(100));
        const std::string path = folder + "\\" + name;
        const std::string shortcut = path + (dice.Below(2) == 0 ? ".lnk" : ".Lnk");
        const std::string target = AnyFolder();
        switch (dice.Below(6)) {
        case 0:
        case 1:
            if (CreateDirectoryA(path.c_str(), nullptr) != FALSE) {
                folders.push_back(path);
                shown[folder].push_back({name, path, 4});
            }
            break;
        case 2:
            MakeShortcut(path + ".txt", target);
            break;
        case 3:
            if (CreateDirectoryA(shortcut.c_str(), nullptr) != FALSE)
                shown[folder].push_back({name + shortcut.substr(path.size()), shortcut, 4});
            break;
        case 4:
            if (GetFileAttributesA(shortcut.c_str()) == INVALID_FILE_ATTRIBUTES)
                MakeShortcut(shortcut, target + "\\nothing");
            break;
        default:
            if (GetFileAttributesA(shortcut.c_str()) == INVALID_FILE_ATTRIBUTES) {
                MakeShortcut(shortcut, target);
                shown[folder].push_back({target.substr(target.rfind('\\') + 1), target, 10});
            }
        }
    }

    Dice dice;
    std::vector<std::string> folders;
};

/// A folder whose path has no backslash at its end.
std::string Make(const std::string& path) {
    fs::create_directory(path);
    return path;
}

std::string WithoutEnd(std::string path) {
    path.pop_back();
    return path;
}

/// Replaces the drives of the system for the library.
std::map<std::string, UINT> drives;

UINT WINAPI TypeOfDrive(const char* root) {
    return drives.count(root) != 0 ? drives[root] : DRIVE_NO_ROOT_DIR;
}
DWORD WINAPI ListDrives(DWORD size, char* out) {
    std::string list;
    for (const auto& drive : drives)
        list += drive.first + '\0';
    EXPECT_EQ(size, 520U);
    list.copy(out, list.size());
    out[list.size()] = '\0';
    return static_cast<DWORD>(list.size());
}

int comparisons = 0;

int WINAPI CountedCompare(const wchar_t* left, const wchar_t* right) {
    ++comparisons;
    return lstrcmpiW(left, right);
}

} // namespace

TEST(ExplorerTree, ShowsWhatTheModelSays) {
    for (const unsigned seed : {1U, 2U, 3U}) {
        SCOPED_TRACE(seed);
        const TestFolder folder;
        const std::string root = Make(folder.File("root"));
        Model model(root, seed);
        const TestWindow window;
        Tree tree(window.Handle());
        ASSERT_TRUE(tree.Show(root, seed % 2 * Flags::openFolderIcon));
        ASSERT_EQ(tree.PathOf(tree.Caret()), root);
        model.Check(tree, window, tree.Caret(), root, 2);
        EXPECT_TRUE(tree.told.empty());
    }
}

TEST(ExplorerTree, WalksToTheStartPath) {
    const TestFolder folder;
    const std::string base = WithoutEnd(folder.Path());
    const std::string deep = Make(Make(folder.File("one")) + "\\Two");
    MakeShortcut(folder.File("way.lnk"), base + "\\one");
    struct Row {
        const char* name;
        std::string start;
        std::string reached; ///< "" for no selection
    };
    const TestWindow window;
    Tree tree(window.Handle());
    EXPECT_STREQ(tree.CurrentSelection(), "");
    EXPECT_TRUE(tree.hWnd() == nullptr && !tree.Loaded());
    for (const Row& row :
         {Row{"none", "", ""}, Row{"folder", deep, deep}, Row{"end", deep + "\\\\", deep},
          Row{"case", base + "\\ONE\\tWO", deep}, Row{"missing", deep + "\\x\\y", deep},
          Row{"root", "C:\\", "C:\\"}, Row{"small root", "c:\\", "C:\\"},
          Row{"bare drive", "C:", "C:\\"}, Row{"first folder", "C:\\windows", "C:\\windows"},
          Row{"missing at root", "C:\\no such folder", "C:\\"}, Row{"no drive", "Q:\\x", ""},
          Row{"server", "\\\\server\\share\\x", ""}, Row{"no path", "windows", ""},
          Row{"shortcut's name", base + "\\way", base},
          Row{"too long", base + "\\" + std::string(300, 'x'), base}}) {
        SCOPED_TRACE(row.name);
        const CapturedLog log;
        ASSERT_TRUE(tree.Show(row.start));
        EXPECT_TRUE(tree.Loaded());
        EXPECT_EQ(tree.Caret() != nullptr ? tree.PathOf(tree.Caret()) : "", row.reached);
        EXPECT_EQ(tree.CurrentSelection(), row.reached);
        EXPECT_EQ(log.Lines().front(), "CExplorerTree::Create: entered");
        EXPECT_EQ(log.Lines().back(), "CExplorerTree::Create: exited");
        if (!row.reached.empty()) {
            EXPECT_EQ(GetFocus(), tree.View());
        }
        EXPECT_TRUE(tree.told.empty());
    }
    // Through the shortcut: its name is that of what it leads to.
    fs::remove_all(folder.File("one"));
    Make(Make(folder.File("other")) + "\\Two");
    MakeShortcut(folder.File("way.lnk"), base + "\\other");
    ASSERT_TRUE(tree.Show(base + "\\other\\two", Flags::desktopAtRoot));
    EXPECT_EQ(NameOf(tree.View(), tree.Caret()), "Two");
    tree.wanted.parent = nullptr;
    EXPECT_FALSE(tree.Show(base));
    EXPECT_TRUE(tree.hWnd() == nullptr && !tree.Loaded());
    tree.Load();
    EXPECT_FALSE(tree.Loaded());
}

TEST(ExplorerTree, ShowsDrivesAndSpecialFolders) {
    const HMODULE library = GetModuleHandleA("vtrutils.dll");
    const ImportPatch types(library, "KERNEL32.dll", "GetDriveTypeA",
                            reinterpret_cast<void*>(&TypeOfDrive));
    const ImportPatch list(library, "KERNEL32.dll", "GetLogicalDriveStringsA",
                           reinterpret_cast<void*>(&ListDrives));
    const TestFolder folder;
    MakeShortcut(folder.File("drive.lnk"), "C:\\");
    MakeShortcut(folder.File("gone.lnk"), "Q:\\");
    char path[MAX_PATH];
    Lines special;
    int image = 17;
    for (const auto find : {&GetMyDocumentsPath, &GetMyPicturesPath, &GetDesktopPath}) {
        ASSERT_TRUE(find(path, MAX_PATH, true));
        MakeShortcut(folder.File("special" + std::to_string(image) + ".lnk"), path);
        special.push_back(path);
        ++image;
    }
    const TestWindow window;
    Tree tree(window.Handle());
    struct Row {
        const char* name;
        UINT type;
        DWORD flag;
        int image; ///< -1: not shown
        int shortcut;
    };
    for (const Row& row :
         {Row{"fixed", DRIVE_FIXED, 0, 0, 12}, Row{"unknown", DRIVE_UNKNOWN, 0, 0, 12},
          Row{"none", DRIVE_NO_ROOT_DIR, 7, -1, -1}, Row{"RAM", DRIVE_RAMDISK, 7, -1, -1},
          Row{"CD", DRIVE_CDROM, 4, 1, 13}, Row{"no CD", DRIVE_CDROM, 3, -1, -1},
          Row{"removable", DRIVE_REMOVABLE, 2, 3, 15},
          Row{"not removable", DRIVE_REMOVABLE, 5, -1, -1}, Row{"network", DRIVE_REMOTE, 1, 6, 16},
          Row{"no network", DRIVE_REMOTE, 6, -1, -1}}) {
        SCOPED_TRACE(row.name);
        drives = {{"C:\\", row.type}, {"R:\\", DRIVE_FIXED}};
        ASSERT_TRUE(tree.Show("", row.flag));
        EXPECT_TRUE(tree.ShowNetworkDrives() == ((row.flag & 1) != 0) &&
                    tree.ShowRemovableDrives() == ((row.flag & 2) != 0) &&
                    tree.ShowCDDrives() == ((row.flag & 4) != 0));
        Lines expected;
        const std::string shown = std::to_string(row.image);
        if (row.image >= 0)
            expected.push_back("C:\\ " + shown + " " + shown + " +");
        expected.push_back("R:\\ 0 0 +");
        EXPECT_EQ(tree.LinesOf(TVI_ROOT), expected);
        for (const HTREEITEM root : tree.Children(TVI_ROOT)) {
            const HTREEITEM placeholder = tree.Children(root).front();
            EXPECT_EQ(tree.LineOf(placeholder), " 25 25");
            EXPECT_EQ(tree.PathOf(placeholder), "no record");
        }
        // A folder below the Desktop, which is below the missing drive's root, shows shortcuts.
        tree.wanted.desktopLabel[0] = '\0';
        drives["C:\\"] = DRIVE_FIXED;
        ASSERT_TRUE(tree.Show(WithoutEnd(folder.Path()), row.flag));
        const HTREEITEM item = tree.Caret();
        drives["C:\\"] = row.type;
        tree.Open(item);
        Lines lines;
        for (const std::string& line : tree.LinesOf(item))
            lines.push_back(line);
        expected.clear();
        for (int i = 0; i < 3; ++i) {
            const std::string number = std::to_string(17 + i);
            const bool opens = fs::is_empty(special[static_cast<std::size_t>(i)]);
            expected.push_back(special[static_cast<std::size_t>(i)].substr(
                                   special[static_cast<std::size_t>(i)].rfind('\\') + 1) +
                               " " + number + " " + number + (opens ? "" : " +"));
        }
        if (row.shortcut >= 0)
            expected.push_back("C:\\ " + std::to_string(row.shortcut) + " " +
                               std::to_string(row.shortcut) + " +");
        std::sort(lines.begin(), lines.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(lines, expected);
    }
    drives = {{"C:\\", DRIVE_FIXED}};
    strcpy(tree.wanted.desktopLabel, "Top");
    strcpy(tree.wanted.myDocumentsLabel, "Texts");
    strcpy(tree.wanted.myPicturesLabel, "Pictures");
    ASSERT_TRUE(tree.Show(special[2], Flags::desktopAtRoot | Flags::myDocumentsAtRoot |
                                          Flags::myPicturesAtRoot));
    EXPECT_TRUE(tree.ShowDesktopAtRoot() && tree.ShowMyDocumentsAtRoot() &&
                tree.ShowMyPicturesAtRoot());
    EXPECT_EQ(tree.LinesOf(TVI_ROOT),
              (Lines{"Top 9 9 +", "Texts 7 7 +", "Pictures 8 8 +", "C:\\ 0 0 +"}));
    EXPECT_EQ(NameOf(tree.View(), tree.Caret()), "Top");
    EXPECT_EQ(tree.CurrentSelection(), special[2]);
    ASSERT_TRUE(tree.Show(Make(special[1] + "\\vtrutils-test"), 255));
    EXPECT_EQ(NameOf(tree.View(), Next(tree.View(), TVGN_PARENT, tree.Caret())), "Pictures");
    fs::remove(special[1] + "\\vtrutils-test");
}

TEST(ExplorerTree, ReadsFoldersAgainAndTellsTheHost) {
    const TestFolder folder;
    const std::string base = WithoutEnd(folder.Path());
    const std::string inner = Make(Make(folder.File("a")) + "\\inner");
    Make(folder.File("b"));
    const TestWindow window;
    Tree tree(window.Handle());
    ASSERT_TRUE(tree.Show(base));
    const HTREEITEM item = tree.Caret();
    tree.Open(item);
    EXPECT_EQ(tree.LinesOf(item), (Lines{"a 4 4 +", "b 4 4"}));
    tree.Open(tree.Children(item)[0]);
    const HTREEITEM below = tree.Children(tree.Children(item)[0])[0];
    tree.Choose(below);
    SendMessageW(tree.View(), WM_KEYDOWN, VK_F2, 0);
    EXPECT_EQ(tree.told, (Lines{inner, "key 113"}));
    // Read anew while it is open, with the selection inside.
    TVITEMA result{};
    Make(folder.File("c"));
    const HTREEITEM match = tree.ExpandNode(item, "B", &result);
    EXPECT_EQ(match, tree.Children(item)[1]);
    EXPECT_EQ(result.hItem, tree.Children(item)[1]);
    EXPECT_STREQ(reinterpret_cast<TExplorerTreeNode*>(result.lParam)->name, "b");
    EXPECT_EQ(tree.LinesOf(item), (Lines{"a 4 4 +", "b 4 4", "c 4 4"}));
    EXPECT_EQ(tree.told, (Lines{inner, "key 113", base}));
    EXPECT_NE(
        SendMessageW(tree.View(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED) &
            TVIS_EXPANDED,
        0);
    EXPECT_EQ(tree.ExpandNode(nullptr, "b", &result), nullptr);
    EXPECT_EQ(result.hItem, nullptr);

    // What is gone when it is opened has nothing in it; a root keeps its button.
    fs::remove_all(folder.File("a"));
    tree.Open(tree.Children(item)[0]);
    EXPECT_EQ(tree.LinesOf(item), (Lines{"a 4 4", "b 4 4", "c 4 4"}));
    const HTREEITEM root = tree.Children(TVI_ROOT)[0];
    {
        const ImportPatch nothing(
            GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "FindFirstFileW",
            reinterpret_cast<void*>(
                +[](const wchar_t*, WIN32_FIND_DATAW*) -> HANDLE { return INVALID_HANDLE_VALUE; }));
        tree.ExpandNode(root, nullptr, nullptr);
    }
    ASSERT_EQ(tree.Children(root).size(), 1U);
    EXPECT_EQ(tree.LineOf(tree.Children(root)[0]), " 25 25");
    tree.Choose(tree.Children(root)[0]);
    EXPECT_EQ(tree.told.back(), "");

    tree.Load();
    EXPECT_EQ(tree.CurrentSelection(), base);
    SetWindowPos(tree.hWnd(), nullptr, 5, 5, 120, 90, SWP_NOZORDER);
    RECT client{};
    GetClientRect(tree.hWnd(), &client);
    const RECT view = ScreenRect(tree.View());
    EXPECT_TRUE(view.right - view.left == 120 && view.bottom - view.top == 90);
    EXPECT_EQ(SendMessageW(tree.hWnd(), WM_NOTIFYFORMAT, 0, 0), 1);
    EXPECT_EQ(ImageList_GetImageCount(reinterpret_cast<HIMAGELIST>(
                  SendMessageW(tree.View(), TVM_GETIMAGELIST, TVSIL_NORMAL, 0))),
              25);
}

TEST(ExplorerTree, LetsTheHostEndItFromWithin) {
    const TestFolder folder;
    const std::string base = WithoutEnd(folder.Path());
    Make(Make(folder.File("a")) + "\\b");
    for (const char* from : {"selection", "key", "expansion", "walk", "call"}) {
        for (const char* action : {"destroy", "create", "load", "windows"}) {
            SCOPED_TRACE(std::string(action) + " in " + from);
            const TestWindow window;
            auto tree = std::make_unique<Tree>(window.Handle());
            ASSERT_TRUE(tree->Show(base));
            const HTREEITEM item = tree->Caret();
            const HWND view = tree->View();
            const auto act = [&, what = std::string(action)] {
                if (what == "destroy")
                    tree.reset();
                else if (what == "create")
                    EXPECT_TRUE(tree->Show(base));
                else if (what == "load")
                    tree->Load();
                else
                    DestroyWindow(window.Handle());
            };
            const std::string place = from;
            if (place == "selection" || place == "key")
                tree->onTold = act;
            else
                tree->onAsked = act;
            if (place == "selection") {
                tree->Choose(tree->Children(TVI_ROOT)[0]);
            } else if (place == "key") {
                SendMessageW(view, WM_KEYDOWN, VK_F2, 0);
            } else if (place == "expansion") {
                tree->Open(item);
            } else if (place == "walk") {
                EXPECT_EQ(tree->Show(base), std::string(action) == "load");
            } else {
                tree->ExpandNode(item, nullptr, nullptr);
            }
            PumpUntil("rest", [&] { return GetQueueStatus(QS_ALLINPUT) == 0; });
            if (tree == nullptr || std::string(action) == "windows") {
                EXPECT_EQ(GetWindow(window.Handle(), GW_CHILD), nullptr);
                EXPECT_FALSE(IsWindow(view));
            } else {
                EXPECT_TRUE(tree->Loaded());
                EXPECT_EQ(tree->CurrentSelection(), base);
                tree->Open(tree->Caret());
                EXPECT_EQ(tree->LinesOf(tree->Caret()), Lines{"a 4 4 +"});
                EXPECT_EQ(GetWindow(tree->hWnd(), GW_HWNDNEXT), nullptr) << "another holder";
            }
        }
    }
    WNDCLASSA found{};
    EXPECT_FALSE(GetClassInfoA(GetModuleHandleW(nullptr), "VtrTreeHolder", &found))
        << "a class outlives the library";
}

TEST(ExplorerTree, StaysUsableWhateverTheDiskHolds) {
    const TestFolder folder;
    const std::string base = WithoutEnd(folder.Path());
    CreateDirectoryW((fs::path(base).wstring() + L"\\\x43F\x430\x43F\x43A\x430").c_str(), nullptr);
    CreateDirectoryW((fs::path(base).wstring() + L"\\\x43F\x430\x43F\x43A\x430\\inner").c_str(),
                     nullptr);
    MakeShortcut(folder.File("itself.lnk"), folder.File("itself.lnk"));
    MakeShortcut(folder.File("one.lnk"), folder.File("two.lnk"));
    MakeShortcut(folder.File("two.lnk"), folder.File("one.lnk"));
    MakeShortcut(folder.File("drive.lnk"), "Q:\\folder");
    MakeShortcut(folder.File("long.lnk"), "C:\\" + std::string(256, 'n'));
    MakeShortcut(folder.File("back.lnk"), base);
    folder.Write("garbage.lnk", std::string(3000, '\x4C'));
    std::string longest = base;
    while (longest.size() + 60 < 255)
        Make(longest += "\\" + std::string(50, 'l'));
    Make(longest += "\\" + std::string(257 - longest.size(), 'm'));
    const TestWindow window;
    Tree tree(window.Handle());
    ASSERT_TRUE(tree.Show(base));
    const HTREEITEM item = tree.Caret();
    tree.Open(item);
    const std::string own = base.substr(base.rfind('\\') + 1);
    const std::string first = std::string(50, 'l');
    Lines lines = tree.LinesOf(item);
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(lines, (Lines{"????? 4 4 +", first + " 4 4 +", own + " 10 10 +"}));
    for (const HTREEITEM child : tree.Children(item)) {
        if (NameOf(tree.View(), child) != "?????")
            continue;
        tree.Choose(child);
        EXPECT_TRUE(IsValidDirectory(tree.CurrentSelection())) << tree.CurrentSelection();
        tree.Open(child);
        EXPECT_EQ(tree.LinesOf(child), Lines{"inner 4 4"});
        ASSERT_TRUE(tree.Show(tree.CurrentSelection()));
        EXPECT_EQ(NameOf(tree.View(), tree.Caret()), "?????");
        break;
    }
    ASSERT_TRUE(tree.Show(longest));
    EXPECT_EQ(tree.CurrentSelection(), longest);
}

TEST(ExplorerTree, FillsAFolderInLinearTime) {
    const TestFolder folder;
    for (int i = 0; i < 1000; ++i)
        Make(folder.File(std::to_string(i * 7919 % 1000)));
    const TestWindow window;
    Tree tree(window.Handle());
    ASSERT_TRUE(tree.Show(WithoutEnd(folder.Path())));
    tree.askedFor = 0;
    const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "lstrcmpiW",
                            reinterpret_cast<void*>(&CountedCompare));
    comparisons = 0;
    tree.Open(tree.Caret());
    EXPECT_EQ(tree.Children(tree.Caret()).size(), 1000U);
    EXPECT_EQ(tree.askedFor, 1000);
    EXPECT_LT(comparisons, 1000 * 12);
}
