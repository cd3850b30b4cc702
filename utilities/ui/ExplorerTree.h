#ifndef VTRUTILS_UI_EXPLORERTREE_H
#define VTRUTILS_UI_EXPLORERTREE_H

#include "utilities/Export.h"
#include "utilities/Fields.h"
#include "utilities/system/locks/Lock.h"
#include "utilities/ui/ShortcutReader.h"

#include <cstddef>
#include <windows.h>

#include <commctrl.h>

/// A drive, a folder or a shortcut to one of them, as the tree shows it. The tree owns it until the
/// folder above is read again; the placeholders that give a node its button have none.
struct TExplorerTreeNode {
    bool hasChildren; ///< shown with a button
    bool atRoot;      ///< of the tree
    const char* path; ///< where a shortcut leads
    const char* name; ///< as shown; null counts as ""
    HTREEITEM item;   ///< of the tree-view
    int image;        ///< an index into `TExplorerTreeProperties::icons`
};
static_assert(sizeof(TExplorerTreeNode) == vtr::ByPointer(40, 20) &&
              offsetof(TExplorerTreeNode, path) == vtr::ByPointer(8, 4) &&
              offsetof(TExplorerTreeNode, item) == vtr::ByPointer(24, 12) &&
              offsetof(TExplorerTreeNode, image) == vtr::ByPointer(32, 16));

/// The path is the tree's; it is "", and the node null, if what is selected is not a folder.
using ExplorerTreeSelectionHandler = void (*)(const char* path, void* context,
                                              const TExplorerTreeNode* node, NMHDR* header);

/// Called with the virtual-key code and the first parameter of the message.
using ExplorerTreeKeyHandler = void (*)(WORD key, void* context, WPARAM wParam, NMHDR* header);

/// What a host wants of a tree. Paths are as FileFunctions.h says; all texts are in the code page
/// of the language.
struct TExplorerTreeProperties {
    /// What is shown: drives, the icon of an open folder, special folders at the root.
    enum Flag : DWORD {
        networkDrives = 1,
        removableDrives = 2,
        cdDrives = 4,
        openFolderIcon = 8,
        myDocumentsAtRoot = 32,
        myPicturesAtRoot = 64,
        desktopAtRoot = 128
    };

    HWND parent;             ///< of the holder
    DWORD controlId;         ///< of the holder in the parent, and of the tree-view in the holder
    HINSTANCE instance;      ///< has the window class and the icons
    DWORD flags;             ///< of `Flag`, joined
    DWORD treeExtendedStyle; ///< window style of the tree-view
    RECT place;              ///< in the parent; the right and bottom edges belong to it
    ExplorerTreeSelectionHandler selectionHandler; ///< may be null
    void* selectionContext;                        ///< handed to the handler
    char startPath[MAX_PATH];                      ///< selected at first; "": nothing is
    /// Resource ids. 0 fixed drive, 1 CD-ROM drive, 3 removable drive, 4 and 5 folder and open
    /// folder, 6 network drive, 7 My Documents, 8 My Pictures, 9 Desktop; 10 and 11 shortcut to a
    /// folder, 12, 13, 15, 16 to a fixed, CD-ROM, removable, network drive, 17 to My Documents, 18
    /// to My Pictures, 19 to the Desktop. The others are not shown. A missing one is left blank.
    int icons[25];
    char myDocumentsLabel[MAX_PATH];   ///< as shown
    char myPicturesLabel[MAX_PATH];    ///< as shown
    char desktopLabel[MAX_PATH];       ///< as shown
    ExplorerTreeKeyHandler keyHandler; ///< may be null
    void* keyContext;                  ///< handed to the handler
};
static_assert(sizeof(TExplorerTreeProperties) == vtr::ByPointer(1224, 1192) &&
              offsetof(TExplorerTreeProperties, place) == vtr::ByPointer(32, 20) &&
              offsetof(TExplorerTreeProperties, startPath) == vtr::ByPointer(64, 44) &&
              offsetof(TExplorerTreeProperties, icons) == vtr::ByPointer(324, 304) &&
              offsetof(TExplorerTreeProperties, myDocumentsLabel) == vtr::ByPointer(424, 404) &&
              offsetof(TExplorerTreeProperties, keyHandler) == vtr::ByPointer(1208, 1184));

/// A tree-view of folders. At its root are the Desktop, My Documents and My Pictures, if wanted,
/// and the drives; a folder is read each time that it is expanded. Shortcuts to folders and drives
/// are shown as such, and read as `CShortcutReader` says: one that does not resolve in time is left
/// out, and the others of its folder until the shell has come back.
///
/// A folder with a name that is not in the code page is shown with something else in place of the
/// letters that it lacks; its path is the short name, if it has one. A folder with a path of more
/// than 259 bytes, and what there is no memory for, is left out.
///
/// Handlers, and operations that hosts override, may destroy the tree or call `Create` or `Load`.
/// From within a notification the old window is then hidden, and destroyed when the thread
/// dispatches messages next. If the host destroys the windows first, the object has none any more,
/// and does nothing.
/// Thread-safety: one thread at a time: the one that created the windows. `Lock` and `Unlock` are
/// for the host alone.
class VTRUTILS_API CExplorerTree {
public:
    CExplorerTree() noexcept;
    CExplorerTree(const CExplorerTree&) = delete;
    CExplorerTree& operator=(const CExplorerTree&) = delete;

    /// Makes the holder, a child of the parent, with the tree-view inside, and loads it. Earlier
    /// windows are destroyed before, also if this fails. False, with no windows, when they cannot
    /// be made, and when the host destroyed them or the tree meanwhile. Texts of the properties are
    /// cut to 259 bytes.
    bool Create(const TExplorerTreeProperties& newProperties) noexcept;

    /// Reads the root anew and selects the start path, or how much of it is there, without calling
    /// a handler; nothing is selected if it is at none of the roots. The focus goes to the tree
    /// then. Waits for the end of a notification. Does nothing without windows.
    void Load() noexcept;

    /// Of the selected node; "" before there is one. Never null.
    const char* CurrentSelection() noexcept;

    /// True after `Load`, while there are windows.
    bool Loaded() const noexcept;

    /// The holder; null without windows.
    HWND hWnd() const noexcept;

    /// The flags of the properties.
    bool ShowNetworkDrives() const noexcept;
    bool ShowRemovableDrives() const noexcept;
    bool ShowCDDrives() const noexcept;
    bool UseOpenFolderIcon() const noexcept;
    bool ShowMyDocumentsAtRoot() const noexcept;
    bool ShowMyPicturesAtRoot() const noexcept;
    bool ShowDesktopAtRoot() const noexcept;

    /// The tree itself takes this lock nowhere.
    void Lock() noexcept;
    void Unlock() noexcept;

    /// Gets what the tree-view tells its parent, in ANSI form. Returns 0. Does nothing until the
    /// tree is loaded.
    virtual LRESULT OnNotify(WPARAM wParam, NMHDR* header);

    /// Reads the children of an item anew, in the order in which the tree-view sorts. Returns the
    /// first one found whose name is `wanted`, without regard to case, and writes handle, record
    /// and images to `result`; null, with zeros, if there is none. Both may be null. Does nothing
    /// for an item without a record.
    virtual HTREEITEM ExpandNode(HTREEITEM item, const char* wanted, TVITEMA* result);

    /// Whether there is a folder, or a shortcut to a folder or to a drive, in the folder; stops at
    /// the first one.
    virtual bool HasSubDirectories(const char* path);

    /// Destroys the windows. Stands here because hosts rely on the place of the virtual operations
    /// above.
    virtual ~CExplorerTree();

private:
    friend struct vtr::Internals<CExplorerTree>;

    HWND tree;
    HWND holder; ///< null, as the tree: not created, or gone
    TExplorerTreeProperties properties;
    HIMAGELIST images;
    vtr::PointerFields<TExplorerTreeNode> nodes;
    char selection[MAX_PATH];
    bool loaded;
    CLock lock;
    CShortcutReader shortcuts;

    void* watches;     ///< the innermost of what has to know when the windows go
    unsigned readings; ///< of folders and of the root: records were freed
    unsigned loads;
};

#endif
