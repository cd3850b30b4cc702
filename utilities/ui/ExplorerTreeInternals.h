#ifndef VTRUTILS_UI_EXPLORERTREEINTERNALS_H
#define VTRUTILS_UI_EXPLORERTREEINTERNALS_H

#include "utilities/base/Layout.h"
#include "utilities/ui/ExplorerTree.h"

/// Private to the library. One thread at a time.

namespace vtr {

struct FolderChild;

/// Posted to the holder: `Load`, which had to wait.
constexpr UINT loadMessage = WM_USER + 1;

/// Does not redraw a window while it lives.
class RedrawPause {
public:
    explicit RedrawPause(HWND paused) : window(paused) {
        SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    }
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;
    ~RedrawPause() {
        SendMessageW(window, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(window, /*lpRect=*/nullptr, /*bErase=*/TRUE);
    }

private:
    HWND window;
};

template <>
struct Internals<CExplorerTree> {
    /// Stands around what may call the host, which may destroy the tree or its windows meanwhile.
    /// Those of one tree nest.
    class Watch {
    public:
        explicit Watch(CExplorerTree& watched, bool isNotification = false)
            : tree(&watched), outer(static_cast<Watch*>(watched.watches)),
              notification(isNotification) {
            watched.watches = this;
        }
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;
        ~Watch() {
            if (tree != nullptr)
                tree->watches = outer;
        }

        /// The tree must not be touched any more: it, or the windows of that time, are gone.
        bool Lost() const { return tree == nullptr; }

        /// Of a notification that is not within another.
        bool Outermost() const { return !InNotification(outer); }

        static bool InNotification(const Watch* innermost) {
            for (; innermost != nullptr; innermost = innermost->outer) {
                if (innermost->notification)
                    return true;
            }
            return false;
        }

        static void LoseAll(CExplorerTree& tree) {
            for (auto* watch = static_cast<Watch*>(tree.watches); watch != nullptr;
                 watch = watch->outer)
                watch->tree = nullptr;
            tree.watches = nullptr;
        }

    private:
        CExplorerTree* tree;
        Watch* outer;
        bool notification;
    };

    // The windows.
    static LRESULT CALLBACK ClassProcedure(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) noexcept;
    static LRESULT CloseAbandoned(HWND window);
    static LRESULT Notify(CExplorerTree& tree, HWND window, WPARAM wParam, NMHDR* header);
    static void TellSelection(CExplorerTree& tree, NMHDR* header);
    static bool MakeWindows(CExplorerTree& tree, const Watch& watch);
    static void MakeImages(CExplorerTree& tree);
    static void RemoveWindows(CExplorerTree& tree);
    static void FitTree(const CExplorerTree& tree);
    static bool InNotification(const CExplorerTree& tree);
    static bool HasFlag(const CExplorerTree& tree, DWORD flag);

    // Records and items.
    static TExplorerTreeNode* NodeOf(const CExplorerTree& tree, HTREEITEM item);
    static void FreeNodes(CExplorerTree& tree, bool all);
    static HTREEITEM AddItem(CExplorerTree& tree, HTREEITEM parent, HTREEITEM after,
                             const FolderChild& child);
    static void AddPlaceholder(const CExplorerTree& tree, HTREEITEM parent);
    static bool RemoveChildren(CExplorerTree& tree, HTREEITEM item, const Watch& watch);
    static void Select(CExplorerTree& tree, HTREEITEM item, const Watch& watch);

    // The root.
    struct Start {
        HTREEITEM item;
        char root[MAX_PATH];
    };
    static HTREEITEM AddRoot(CExplorerTree& tree, const char* path, const char* name, int image);
    static void AddRoots(CExplorerTree& tree, Start& start);
    static void AddSpecialFolders(CExplorerTree& tree, Start& start);
    static void ExpandToStartPosition(CExplorerTree& tree, const Start& start, const Watch& watch);

    VTR_FIELD_AT(CExplorerTree, tree, 8, 4);
    VTR_FIELD_AT(CExplorerTree, holder, 16, 8);
    VTR_FIELD_AT(CExplorerTree, properties, 24, 12);
    VTR_FIELD_AT(CExplorerTree, images, 1248, 1204);
    VTR_FIELD_AT(CExplorerTree, nodes, 1256, 1208);
    VTR_FIELD_AT(CExplorerTree, selection, 1272, 1220);
    VTR_FIELD_AT(CExplorerTree, loaded, 1532, 1480);
    VTR_FIELD_AT(CExplorerTree, lock, 1536, 1484);
    VTR_FIELD_AT(CExplorerTree, shortcuts, 1576, 1508);
};

} // namespace vtr

#endif
