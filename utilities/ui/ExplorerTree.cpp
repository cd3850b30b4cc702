#include "utilities/ui/ExplorerTree.h"

#include "common/Handles.h"
#include "utilities/base/StoreCut.h"
#include "utilities/base/Subclassing.h"
#include "utilities/ui/ExplorerTreeInternals.h"
#include "vtrfutls/Log.h"

#include <initializer_list>

namespace {

constexpr char className[] = "VtrTreeHolder";
constexpr int iconSize = 16;

using Internals = vtr::Internals<CExplorerTree>;
using Flags = TExplorerTreeProperties;

/// In pixels, both edges included.
int Extent(LONG from, LONG to) {
    return static_cast<int>(static_cast<DWORD>(to) - static_cast<DWORD>(from) + 1);
}

/// Fails while other trees have windows. A class left behind would call into a library that was
/// unloaded.
void UnregisterHolder(HINSTANCE instance) {
    UnregisterClassA(className, instance);
}

} // namespace

LRESULT CALLBACK Internals::ClassProcedure(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
        SetWindowLongPtrA(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(create->lpCreateParams));
        static_cast<CExplorerTree*>(create->lpCreateParams)->holder = window;
    }
    auto* tree = ObjectOf<CExplorerTree>(window);
    if (tree == nullptr)
        return message == WM_CLOSE ? CloseAbandoned(window)
                                   : DefWindowProcA(window, message, wParam, lParam);
    switch (message) {
    case WM_MOVE:
    case WM_SIZE:
        FitTree(*tree);
        return 1;
    case WM_NOTIFY:
        return Notify(*tree, window, wParam, reinterpret_cast<NMHDR*>(lParam));
    case WM_NOTIFYFORMAT:
        return NFR_ANSI;
    case loadMessage:
        tree->Load();
        return 0;
    case WM_NCDESTROY:
        SetWindowLongPtrA(window, GWLP_USERDATA, 0);
        Watch::LoseAll(*tree);
        tree->holder = nullptr;
        tree->tree = nullptr;
        tree->loaded = false;
        break;
    default:
        break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

LRESULT Internals::CloseAbandoned(HWND window) {
    const auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(window, GWLP_HINSTANCE));
    DestroyWindow(window);
    UnregisterHolder(instance);
    return 0;
}

LRESULT Internals::Notify(CExplorerTree& tree, HWND window, WPARAM wParam, NMHDR* header) {
    if (header->code == TVN_DELETEITEMA || header->code == TVN_DELETEITEMW) {
        const auto& gone = reinterpret_cast<const NMTREEVIEWA*>(header)->itemOld;
        auto* node = reinterpret_cast<TExplorerTreeNode*>(gone.lParam);
        if (node != nullptr)
            node->item = nullptr;
    }
    const Watch watch(tree, /*isNotification=*/true);
    const LRESULT result = tree.OnNotify(wParam, header);
    // The tree-view is still at work, and cannot be destroyed from within.
    if (watch.Lost() && watch.Outermost())
        PostMessageA(window, WM_CLOSE, 0, 0);
    return result;
}

/// Touches nothing after the handler, which may destroy the tree.
void Internals::TellSelection(CExplorerTree& tree, NMHDR* header) {
    const HTREEITEM item = reinterpret_cast<const NMTREEVIEWA*>(header)->itemNew.hItem;
    const TExplorerTreeNode* node = NodeOf(tree, item);
    StoreCut(node != nullptr ? node->path : "", tree.selection, sizeof tree.selection);
    if (tree.properties.selectionHandler != nullptr)
        tree.properties.selectionHandler(tree.selection, tree.properties.selectionContext, node,
                                         header);
}

bool Internals::InNotification(const CExplorerTree& tree) {
    return Watch::InNotification(static_cast<const Watch*>(tree.watches));
}

bool Internals::HasFlag(const CExplorerTree& tree, DWORD flag) {
    return (tree.properties.flags & flag) != 0;
}

void Internals::FitTree(const CExplorerTree& tree) {
    RECT client{};
    GetClientRect(tree.holder, &client);
    MoveWindow(tree.tree, 0, 0, client.right, client.bottom, /*bRepaint=*/TRUE);
}

/// The host may be told of each window and destroy it at once.
bool Internals::MakeWindows(CExplorerTree& tree, const Watch& watch) {
    const TExplorerTreeProperties& wanted = tree.properties;
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TREEVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    WNDCLASSA kind{};
    kind.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    kind.lpfnWndProc = &ClassProcedure;
    kind.hInstance = wanted.instance;
    kind.hCursor = LoadCursorA(/*hInstance=*/nullptr, IDC_ARROW);
    kind.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    kind.lpszClassName = className;
    const int width = Extent(wanted.place.left, wanted.place.right);
    const int height = Extent(wanted.place.top, wanted.place.bottom);
    const auto id = reinterpret_cast<HMENU>(static_cast<UINT_PTR>(wanted.controlId));
    HWND holder = nullptr;
    // Another tree that ends on another thread may take the class away in between.
    for (int attempt = 0; attempt < 8 && holder == nullptr; ++attempt) {
        if (RegisterClassA(&kind) == 0 && GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
            return false;
        holder = CreateWindowExA(/*dwExStyle=*/0, className, "", WS_CHILD | WS_VISIBLE,
                                 wanted.place.left, wanted.place.top, width, height, wanted.parent,
                                 id, wanted.instance, &tree);
        if (watch.Lost() || (holder == nullptr && GetLastError() != ERROR_CANNOT_FIND_WND_CLASS))
            return false;
    }
    if (holder == nullptr)
        return false;
    const HWND view =
        CreateWindowExW(wanted.treeExtendedStyle, WC_TREEVIEWW, L"",
                        WS_CHILD | WS_VISIBLE | WS_BORDER | TVS_HASBUTTONS | TVS_LINESATROOT, 0, 0,
                        width, height, holder, id, wanted.instance, /*lpParam=*/nullptr);
    if (watch.Lost() || view == nullptr)
        return false;
    tree.tree = view;
    FitTree(tree);
    return true;
}

void Internals::MakeImages(CExplorerTree& tree) {
    tree.images = ImageList_Create(iconSize, iconSize, ILC_COLOR8, /*cInitial=*/1, /*cGrow=*/1);
    int count = 0;
    for (const int id : tree.properties.icons) {
        const IconHandle icon(
            static_cast<HICON>(LoadImageA(tree.properties.instance, MAKEINTRESOURCEA(id),
                                          IMAGE_ICON, iconSize, iconSize, LR_DEFAULTCOLOR)));
        ++count;
        if (!icon || ImageList_ReplaceIcon(tree.images, -1, icon.Get()) < 0)
            ImageList_SetImageCount(tree.images, static_cast<UINT>(count));
    }
    SendMessageW(tree.tree, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(tree.images));
}

void Internals::RemoveWindows(CExplorerTree& tree) {
    const HWND window = tree.holder;
    const HWND view = tree.tree;
    const bool isInUse = InNotification(tree);
    const HINSTANCE instance = tree.properties.instance;
    Watch::LoseAll(tree);
    tree.holder = nullptr;
    tree.tree = nullptr;
    tree.loaded = false;
    tree.selection[0] = '\0';
    ImageList images(tree.images);
    tree.images = nullptr;
    FreeNodes(tree, /*all=*/true);
    if (IsWindow(window) == FALSE) {
        UnregisterHolder(instance);
        return;
    }
    SetWindowLongPtrA(window, GWLP_USERDATA, 0);
    if (!isInUse) {
        CloseAbandoned(window);
        return;
    }
    SendMessageW(view, TVM_SETIMAGELIST, TVSIL_NORMAL, 0);
    SetWindowLongPtrA(window, GWLP_ID, 0);
    ShowWindow(window, SW_HIDE);
}

CExplorerTree::CExplorerTree() noexcept
    : tree(nullptr), holder(nullptr), properties(), images(nullptr), selection(), loaded(false),
      watches(nullptr), readings(0), loads(0) {}

CExplorerTree::~CExplorerTree() {
    Internals::RemoveWindows(*this);
}

bool CExplorerTree::Create(const TExplorerTreeProperties& newProperties) noexcept {
    Internals::RemoveWindows(*this);
    properties = newProperties;
    for (char* text : {properties.startPath, properties.myDocumentsLabel,
                       properties.myPicturesLabel, properties.desktopLabel})
        text[MAX_PATH - 1] = '\0';
    Log("CExplorerTree::Create: entered");
    const Internals::Watch watch(*this);
    if (!Internals::MakeWindows(*this, watch)) {
        if (!watch.Lost())
            Internals::RemoveWindows(*this);
        Log("CExplorerTree::Create: exiting, m_hWnd NULL");
        return false;
    }
    Internals::MakeImages(*this);
    Load();
    if (watch.Lost())
        return false;
    Log("CExplorerTree::Create: exited");
    return true;
}

const char* CExplorerTree::CurrentSelection() noexcept {
    return selection;
}

bool CExplorerTree::Loaded() const noexcept {
    return loaded;
}

HWND CExplorerTree::hWnd() const noexcept {
    return holder;
}

bool CExplorerTree::ShowNetworkDrives() const noexcept {
    return Internals::HasFlag(*this, Flags::networkDrives);
}

bool CExplorerTree::ShowRemovableDrives() const noexcept {
    return Internals::HasFlag(*this, Flags::removableDrives);
}

bool CExplorerTree::ShowCDDrives() const noexcept {
    return Internals::HasFlag(*this, Flags::cdDrives);
}

bool CExplorerTree::UseOpenFolderIcon() const noexcept {
    return Internals::HasFlag(*this, Flags::openFolderIcon);
}

bool CExplorerTree::ShowMyDocumentsAtRoot() const noexcept {
    return Internals::HasFlag(*this, Flags::myDocumentsAtRoot);
}

bool CExplorerTree::ShowMyPicturesAtRoot() const noexcept {
    return Internals::HasFlag(*this, Flags::myPicturesAtRoot);
}

bool CExplorerTree::ShowDesktopAtRoot() const noexcept {
    return Internals::HasFlag(*this, Flags::desktopAtRoot);
}

void CExplorerTree::Lock() noexcept {
    lock.Lock();
}

void CExplorerTree::Unlock() noexcept {
    lock.Unlock();
}

LRESULT CExplorerTree::OnNotify(WPARAM wParam, NMHDR* header) {
    if (!loaded || header == nullptr)
        return 0;
    switch (header->code) {
    case TVN_ITEMEXPANDINGA:
    case TVN_ITEMEXPANDINGW: {
        const auto* expanding = reinterpret_cast<const NMTREEVIEWA*>(header);
        if (expanding->action != TVE_COLLAPSE)
            ExpandNode(expanding->itemNew.hItem, /*wanted=*/nullptr, /*result=*/nullptr);
        break;
    }
    case TVN_SELCHANGEDA:
    case TVN_SELCHANGEDW:
        Internals::TellSelection(*this, header);
        break;
    case TVN_KEYDOWN:
        if (properties.keyHandler != nullptr)
            properties.keyHandler(reinterpret_cast<const NMTVKEYDOWN*>(header)->wVKey,
                                  properties.keyContext, wParam, header);
        break;
    default:
        break;
    }
    return 0;
}
