#include "utilities/ui/ExplorerTree.h"

#include "tests/support/ImportPatch.h"
#include "tests/support/Rounds.h"
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
    void Open(HTREEITEM item) const {
        SendMessageW(View(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
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
        return node != nullptr ? node->path : "";
    }
    /// Of each child, in order: its name, its image, that when it is selected if it is another, and
    /// "+" if it has a button.
    Lines LinesOf(HTREEITEM item) const {
        Lines lines;
        for (const HTREEITEM child : Children(item)) {
            const TVITEMW asked = ItemOf(child);
            lines.push_back(LineOf(NameOf(View(), child), asked.iImage,
                                   asked.iSelectedImage - asked.iImage,
                                   Next(View(), TVGN_CHILD, child) != nullptr));
        }
        return lines;
    }
    static std::string LineOf(const std::string& name, int image, int open, bool hasButton) {
        return name + " " + std::to_string(image) + (open != 0 ? " " + std::to_string(open) : "") +
               (hasButton ? " +" : "");
    }

    bool HasSubDirectories(const char* path) override {
        if (onAsked == nullptr)
            return CExplorerTree::HasSubDirectories(path);
        std::exchange(onAsked, nullptr)();
        return true;
    }

    TExplorerTreeProperties wanted{};
    Lines told;
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
    static void Key(WORD key, void* self, WPARAM, NMHDR*) {
        Tell(self, "key " + std::to_string(key));
    }
};

/// Without the order, where that of the disk does not matter.
Lines Sorted(Lines lines) {
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// Folders, files and shortcuts at random, and beside them what a tree must show.
class Model {
public:
    Model(const std::string& root, Dice& random) : dice(random), folders{root} {
        for (int i = 0; i < 60; ++i)
            Add();
    }

    void Check(const Tree& tree, HTREEITEM item, const std::string& folder, int depth) {
        SCOPED_TRACE(folder);
        tree.Open(item);
        Lines lines;
        for (const Child& child : shown[folder])
            lines.push_back(Tree::LineOf(child.name, child.image, tree.UseOpenFolderIcon() ? 1 : 0,
                                         !shown[child.path].empty()));
        const Lines shownLines = tree.LinesOf(item);
        ASSERT_EQ(Sorted(shownLines), Sorted(lines));
        SendMessageW(tree.View(), TVM_SORTCHILDREN, FALSE, reinterpret_cast<LPARAM>(item));
        EXPECT_EQ(shownLines, tree.LinesOf(item)) << "as the tree-view sorts";
        for (const HTREEITEM child : tree.Children(item)) {
            if (depth > 0)
                Check(tree, child, tree.PathOf(child), depth - 1);
        }
    }

private:
    struct Child {
        std::string name;
        std::string path;
        int image;
    };

    std::string AnyFolder() {
        return folders[static_cast<std::size_t>(dice.Below(static_cast<int>(folders.size())))];
    }

    void Add() {
        static constexpr const char* stems[] = {"a",   "B",   "b-c", "\xE9t\xE9",
                                                "Zoo", "x 1", "_",   "10"};
        const std::string folder = AnyFolder(), target = AnyFolder();
        const std::string name = stems[dice.Below(8)] + std::to_string(dice.Below(100));
        const std::string path = folder + "\\" + name;
        const std::string shortcut = path + (dice.Below(2) == 0 ? ".lnk" : ".Lnk");
        const int kind = dice.Below(6);
        if (fs::exists(shortcut))
            return;
        if (kind < 2 && CreateDirectoryA(path.c_str(), nullptr) != FALSE) {
            folders.push_back(path);
            shown[folder].push_back({name, path, 4});
        } else if (kind == 2) {
            MakeShortcut(path + ".txt", target);
        } else if (kind == 3) {
            CreateDirectoryA(shortcut.c_str(), nullptr);
            shown[folder].push_back({name + shortcut.substr(path.size()), shortcut, 4});
        } else if (kind == 4) {
            MakeShortcut(shortcut, target + "\\nothing");
        } else if (kind == 5) {
            MakeShortcut(shortcut, target);
            shown[folder].push_back({target.substr(target.rfind('\\') + 1), target, 10});
        }
    }

    Dice& dice;
    std::vector<std::string> folders;
    std::map<std::string, std::vector<Child>> shown; ///< by the folder's path
};

std::string Make(const std::string& path) {
    fs::create_directory(path);
    return path;
}

/// As the tree writes it, without a backslash at the end.
std::string PathOf(const TestFolder& folder) {
    return folder.Path().substr(0, folder.Path().size() - 1);
}

/// Replaces the drives of the system for the library.
std::map<std::string, UINT> drives;

UINT WINAPI TypeOfDrive(const char* root) {
    return drives.count(root) != 0 ? drives[root] : DRIVE_NO_ROOT_DIR;
}
DWORD WINAPI ListDrives(DWORD, char* out) {
    std::string list;
    for (const auto& drive : drives)
        list += drive.first + '\0';
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
    EachRound(1, 3, [](Dice& dice, int round) {
        const TestFolder folder;
        const std::string root = Make(folder.File("root"));
        Model model(root, dice);
        const TestWindow window;
        Tree tree(window);
        ASSERT_TRUE(tree.Show(root, static_cast<DWORD>(round % 2) * Flags::openFolderIcon));
        ASSERT_EQ(tree.PathOf(tree.Caret()), root);
        model.Check(tree, tree.Caret(), root, 2);
        EXPECT_TRUE(tree.told.empty());
    });
}

TEST(ExplorerTree, WalksToTheStartPath) {
    const TestFolder folder;
    const std::string base = PathOf(folder);
    const std::string deep = Make(Make(folder.File("one")) + "\\Two");
    MakeShortcut(folder.File("way.lnk"), base + "\\one");
    const TestWindow window;
    Tree tree(window);
    EXPECT_STREQ(tree.CurrentSelection(), "");
    // A start path and what is reached; "" for no selection.
    for (const auto& [start, reached] : {std::pair<std::string, std::string>("", ""),
                                         {deep, deep},
                                         {deep + "\\\\", deep},
                                         {base + "\\ONE\\tWO", deep},
                                         {deep + "\\x\\y", deep},
                                         {"c:\\", "C:\\"},
                                         {"C:", "C:\\"},
                                         {"C:\\windows", "C:\\windows"},
                                         {"C:\\no such folder", "C:\\"},
                                         {"Q:\\x", ""},
                                         {"\\\\server\\share\\x", ""},
                                         {"windows", ""},
                                         {base + "\\way", base},
                                         {base + "\\" + std::string(300, 'x'), base}}) {
        SCOPED_TRACE(start);
        ASSERT_TRUE(tree.Show(start));
        EXPECT_TRUE(tree.Loaded() && tree.told.empty());
        EXPECT_EQ(tree.PathOf(tree.Caret()), reached);
        EXPECT_EQ(tree.CurrentSelection(), reached);
        EXPECT_EQ(GetFocus() == tree.View(), !reached.empty());
    }
    tree.wanted.parent = nullptr;
    EXPECT_FALSE(tree.Show(base));
    EXPECT_TRUE(tree.hWnd() == nullptr && !tree.Loaded());
}

TEST(ExplorerTree, ShowsTheDrivesAskedForAndShortcutsToThem) {
    const HMODULE library = GetModuleHandleA("vtrutils.dll");
    const ImportPatch types(library, "KERNEL32.dll", "GetDriveTypeA",
                            reinterpret_cast<void*>(&TypeOfDrive));
    const ImportPatch list(library, "KERNEL32.dll", "GetLogicalDriveStringsA",
                           reinterpret_cast<void*>(&ListDrives));
    const struct {
        const char* root;
        UINT type;
        DWORD flag; ///< without which it is not shown
        int image;  ///< -1: never shown
        int shortcut;
    } rows[] = {{"C:\\", DRIVE_FIXED, 0, 0, 12},       {"D:\\", DRIVE_CDROM, 4, 1, 13},
                {"E:\\", DRIVE_REMOVABLE, 2, 3, 15},   {"F:\\", DRIVE_REMOTE, 1, 6, 16},
                {"G:\\", DRIVE_UNKNOWN, 0, 0, 12},     {"H:\\", DRIVE_RAMDISK, 0, -1, -1},
                {"I:\\", DRIVE_NO_ROOT_DIR, 0, -1, -1}};
    const TestFolder folder;
    for (const auto& row : rows) {
        drives[row.root] = row.type;
        MakeShortcut(folder.File(std::string(1, row.root[0]) + ".lnk"), row.root);
    }
    const TestWindow window;
    Tree tree(window);
    for (DWORD flags = 0; flags < 8; ++flags) {
        SCOPED_TRACE(flags);
        Lines roots, shortcuts;
        for (const auto& row : rows) {
            if (row.image < 0 || (flags & row.flag) != row.flag)
                continue;
            roots.push_back(Tree::LineOf(row.root, row.image, 0, true));
            shortcuts.push_back(Tree::LineOf(row.root, row.shortcut, 0, fs::exists(row.root)));
        }
        ASSERT_TRUE(tree.Show(PathOf(folder), flags));
        tree.Open(tree.Caret());
        EXPECT_EQ(tree.LinesOf(TVI_ROOT), roots);
        EXPECT_EQ(tree.LinesOf(tree.Caret()), shortcuts);
    }
    EXPECT_EQ(tree.PathOf(tree.Children(tree.Children(TVI_ROOT)[1])[0]), "") << "a placeholder";
}

TEST(ExplorerTree, ShowsSpecialFoldersAtTheRootAndByShortcuts) {
    char path[MAX_PATH];
    ASSERT_TRUE(GetMyPicturesPath(path, MAX_PATH, true));
    const std::string inner = Make(path + std::string("\\vtrutils-test"));
    MakeShortcut(inner + "\\pictures.lnk", path);
    const TestWindow window;
    Tree tree(window);
    strcpy(tree.wanted.desktopLabel, "Top");
    strcpy(tree.wanted.myDocumentsLabel, "Texts");
    strcpy(tree.wanted.myPicturesLabel, "Pictures");
    ASSERT_TRUE(tree.Show(inner, 0xE0));
    Lines lines = tree.LinesOf(TVI_ROOT);
    lines.resize(3);
    EXPECT_EQ(lines, (Lines{"Top 9 +", "Texts 7 +", "Pictures 8 +"}));
    EXPECT_EQ(NameOf(tree.View(), Next(tree.View(), TVGN_PARENT, tree.Caret())), "Pictures");
    tree.Open(tree.Caret());
    EXPECT_EQ(tree.LinesOf(tree.Caret()),
              Lines{Tree::LineOf(fs::path(path).filename().string(), 18, 0, true)});
    fs::remove_all(inner);
}

TEST(ExplorerTree, ReadsFoldersAgainAndTellsTheHost) {
    const TestFolder folder;
    const std::string inner = Make(Make(folder.File("a")) + "\\inner");
    Make(folder.File("b"));
    const TestWindow window;
    Tree tree(window);
    ASSERT_TRUE(tree.Show(PathOf(folder)));
    const HTREEITEM item = tree.Caret();
    tree.Open(item);
    EXPECT_EQ(tree.LinesOf(item), (Lines{"a 4 +", "b 4"}));
    tree.Open(tree.Children(item)[0]);
    tree.Choose(tree.Children(tree.Children(item)[0])[0]);
    SendMessageW(tree.View(), WM_KEYDOWN, VK_F2, 0);
    EXPECT_EQ(tree.told, (Lines{inner, "key 113"}));
    // Read anew while it is open, with the selection inside.
    TVITEMA result{};
    Make(folder.File("c"));
    const HTREEITEM match = tree.ExpandNode(item, "B", &result);
    EXPECT_TRUE(match == result.hItem && match == tree.Children(item)[1]);
    EXPECT_STREQ(reinterpret_cast<TExplorerTreeNode*>(result.lParam)->name, "b");
    EXPECT_EQ(tree.LinesOf(item), (Lines{"a 4 +", "b 4", "c 4"}));
    EXPECT_EQ(tree.told.back(), PathOf(folder));
    EXPECT_EQ(tree.ExpandNode(nullptr, "b", &result), nullptr);
    EXPECT_EQ(result.hItem, nullptr);

    // What is gone when it is opened has nothing in it.
    fs::remove_all(folder.File("a"));
    tree.Open(tree.Children(item)[0]);
    EXPECT_EQ(tree.LinesOf(item), (Lines{"a 4", "b 4", "c 4"}));

    tree.Load();
    EXPECT_EQ(tree.CurrentSelection(), PathOf(folder));
    SetWindowPos(tree.hWnd(), nullptr, 5, 5, 120, 90, SWP_NOZORDER);
    EXPECT_EQ(ScreenRect(tree.View()), ScreenRect(tree.hWnd()));
}

TEST(ExplorerTree, LetsTheHostEndItFromWithin) {
    const TestFolder folder;
    const std::string base = PathOf(folder);
    Make(Make(folder.File("a")) + "\\b");
    for (const std::string from : {"selection", "key", "expansion", "walk", "call"}) {
        for (const std::string action : {"destroy", "create", "load", "windows"}) {
            SCOPED_TRACE(action + " in " + from);
            const TestWindow window;
            auto tree = std::make_unique<Tree>(window);
            ASSERT_TRUE(tree->Show(base));
            const HWND view = tree->View();
            const bool isTold = from == "selection" || from == "key";
            (isTold ? tree->onTold : tree->onAsked) = [&] {
                if (action == "destroy")
                    tree.reset();
                else if (action == "create")
                    EXPECT_TRUE(tree->Show(base));
                else if (action == "load")
                    tree->Load();
                else
                    DestroyWindow(window);
            };
            if (from == "selection")
                tree->Choose(tree->Children(TVI_ROOT)[0]);
            else if (from == "key")
                SendMessageW(view, WM_KEYDOWN, VK_F2, 0);
            else if (from == "expansion")
                tree->Open(tree->Caret());
            else if (from == "walk")
                EXPECT_EQ(tree->Show(base), action == "load");
            else
                tree->ExpandNode(tree->Caret(), nullptr, nullptr);
            PumpUntil("rest", [&] { return GetQueueStatus(QS_ALLINPUT) == 0; });
            if (action == "destroy" || action == "windows") {
                EXPECT_EQ(GetWindow(window, GW_CHILD), nullptr);
                EXPECT_FALSE(IsWindow(view));
                continue;
            }
            EXPECT_TRUE(tree->Loaded());
            EXPECT_EQ(tree->CurrentSelection(), base);
            tree->Open(tree->Caret());
            EXPECT_EQ(tree->LinesOf(tree->Caret()), Lines{"a 4 +"});
            EXPECT_EQ(GetWindow(tree->hWnd(), GW_HWNDNEXT), nullptr) << "another holder";
        }
    }
    WNDCLASSA found{};
    EXPECT_FALSE(GetClassInfoA(GetModuleHandleW(nullptr), "VtrTreeHolder", &found))
        << "a class outlives the library";
}

TEST(ExplorerTree, StaysUsableWhateverTheDiskHolds) {
    const TestFolder folder;
    const std::string base = PathOf(folder);
    fs::create_directories(fs::path(base) / L"\x43F\x430\x43F\x43A\x430" / "inner");
    const std::pair<const char*, std::string> shortcuts[] = {
        {"itself", folder.File("itself.lnk")},    {"one", folder.File("two.lnk")},
        {"two", folder.File("one.lnk")},          {"drive", "Q:\\folder"},
        {"long", "C:\\" + std::string(256, 'n')}, {"back", base}};
    for (const auto& [name, target] : shortcuts)
        MakeShortcut(folder.File(name) + ".lnk", target);
    folder.Write("garbage.lnk", std::string(3000, '\x4C'));
    const std::string first(50, 'l');
    std::string longest = base;
    while (longest.size() + 60 < 255)
        Make(longest += "\\" + first);
    Make(longest += "\\" + std::string(257 - longest.size(), 'm'));
    const TestWindow window;
    Tree tree(window);
    ASSERT_TRUE(tree.Show(base));
    tree.Open(tree.Caret());
    const std::string own = base.substr(base.rfind('\\') + 1);
    EXPECT_EQ(Sorted(tree.LinesOf(tree.Caret())),
              (Lines{"????? 4 +", first + " 4 +", own + " 10 +"}));
    // The folder with a name outside the code page.
    const HTREEITEM foreign = tree.Children(tree.Caret())[0];
    tree.Choose(foreign);
    EXPECT_TRUE(IsValidDirectory(tree.CurrentSelection())) << tree.CurrentSelection();
    tree.Open(foreign);
    EXPECT_EQ(tree.LinesOf(foreign), Lines{"inner 4"});
    ASSERT_TRUE(tree.Show(tree.CurrentSelection()));
    EXPECT_EQ(NameOf(tree.View(), tree.Caret()), "?????");
    ASSERT_TRUE(tree.Show(longest));
    EXPECT_EQ(tree.CurrentSelection(), longest);
}

TEST(ExplorerTree, FillsAFolderInLinearTime) {
    const TestFolder folder;
    for (int i = 0; i < 1000; ++i)
        Make(folder.File(std::to_string(i * 7919 % 1000)));
    const TestWindow window;
    Tree tree(window);
    ASSERT_TRUE(tree.Show(PathOf(folder)));
    const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "lstrcmpiW",
                            reinterpret_cast<void*>(&CountedCompare));
    comparisons = 0;
    tree.Open(tree.Caret());
    EXPECT_EQ(tree.Children(tree.Caret()).size(), 1000U);
    EXPECT_LT(comparisons, 1000 * 12);
}
