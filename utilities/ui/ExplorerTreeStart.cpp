// The root of the tree, and the way from there to the start path.

#include "utilities/base/PathText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/ui/ExplorerTreeInternals.h"
#include "utilities/ui/FolderChildren.h"
#include "vtrfutls/Log.h"

#include <algorithm>
#include <cstring>

namespace {

using Internals = vtr::Internals<CExplorerTree>;

/// Room for a backslash after the longest path.
constexpr std::size_t closedSize = MAX_PATH + 1;

/// The path with a backslash at its end. False for "" and for one that is too long.
bool StoreClosed(const char* path, char (&closed)[closedSize]) {
    const std::size_t length = strnlen(path, MAX_PATH);
    if (length == 0 || length == MAX_PATH)
        return false;
    std::strcpy(closed, path);
    if (!vtr::EndsWithBackslash(closed))
        std::strcat(closed, "\\");
    return true;
}

/// Whether the path is that of the root or of something below it.
bool PathContainsRoot(const char* path, const char* root) {
    char closedPath[closedSize];
    char closedRoot[closedSize];
    if (!StoreClosed(path, closedPath) || !StoreClosed(root, closedRoot))
        return false;
    const std::size_t length = std::strlen(closedRoot);
    if (std::strlen(closedPath) < length)
        return false;
    closedPath[length] = '\0';
    return vtr::SamePath(closedPath, closedRoot);
}

/// Of the drive that the path begins with; "" if it begins with none.
void StoreDriveRoot(const char* path, char (&root)[MAX_PATH]) {
    const bool hasDrive = path[0] != '\0' && path[1] == ':';
    std::strcpy(root, hasDrive ? "?:\\" : "");
    if (hasDrive)
        root[0] = path[0];
}

void RemoveLastBackslash(char* path) {
    const std::size_t length = std::strlen(path);
    if (vtr::EndsWithBackslash(path) && !IsRootFolder(path))
        path[length - 1] = '\0';
}

/// What follows the root in the path; "" if nothing does.
const char* AfterRoot(const char* path, const char* root) {
    const std::size_t length = std::strlen(root);
    if (std::strlen(path) <= length)
        return "";
    const vtr::PathSteps steps(path);
    const char* rest = path + length;
    while (!vtr::EndsWithBackslash(root) && *rest != '\0' && *rest != '\\')
        rest += steps.Length(rest);
    while (*rest == '\\')
        ++rest;
    return rest;
}

/// Returns what follows the component and its backslashes.
const char* TakeComponent(const char* path, const vtr::PathSteps& steps,
                          char (&component)[MAX_PATH]) {
    const char* end = path;
    while (*end != '\0' && *end != '\\')
        end += steps.Length(end);
    const auto length = static_cast<std::size_t>(end - path);
    vtr::StoreCut(path, component, std::min<std::size_t>(length + 1, sizeof component));
    while (*end == '\\')
        ++end;
    return end;
}

} // namespace

/// Null when memory runs out.
HTREEITEM Internals::AddRoot(CExplorerTree& tree, const char* path, const char* name, int image) {
    FolderChild root;
    root.path = CopyText(path);
    root.name = CopyText(name);
    root.shown = ShownText(name);
    root.image = image;
    root.selectedImage = image;
    root.hasChildren = true;
    root.atRoot = true;
    return root.path != nullptr ? AddItem(tree, TVI_ROOT, TVI_LAST, root) : nullptr;
}

void Internals::AddSpecialFolders(CExplorerTree& tree, Start& start) {
    const TExplorerTreeProperties& properties = tree.properties;
    const struct {
        bool wanted;
        bool (*find)(char* out, int size, bool create);
        const char* label;
        int image;
    } folders[] = {
        {tree.ShowDesktopAtRoot(), &GetDesktopPath, properties.desktopLabel, imageDesktop},
        {tree.ShowMyDocumentsAtRoot(), &GetMyDocumentsPath, properties.myDocumentsLabel,
         imageMyDocuments},
        {tree.ShowMyPicturesAtRoot(), &GetMyPicturesPath, properties.myPicturesLabel,
         imageMyPictures}};
    for (const auto& folder : folders) {
        char path[MAX_PATH] = "";
        if (!folder.wanted)
            continue;
        folder.find(path, sizeof path, /*create=*/false);
        if (path[0] == '\0' || SamePath(path, "C:\\"))
            continue;
        RemoveLastBackslash(path);
        const HTREEITEM item = AddRoot(tree, path, folder.label, folder.image);
        if (item != nullptr && PathContainsRoot(properties.startPath, path)) {
            start.item = item;
            std::strcpy(start.root, path);
        }
    }
}

void Internals::AddRoots(CExplorerTree& tree, Start& start) {
    StoreDriveRoot(tree.properties.startPath, start.root);
    AddSpecialFolders(tree, start);
    char drives[520] = "";
    if (GetLogicalDriveStringsA(sizeof drives, drives) >= sizeof drives)
        return;
    for (const char* drive = drives; *drive != '\0'; drive += std::strlen(drive) + 1) {
        const int image = DriveImage(drive, tree.properties.flags);
        if (image == imageNone)
            continue;
        const HTREEITEM item = AddRoot(tree, drive, drive, image);
        if (start.item == nullptr && SamePath(drive, start.root))
            start.item = item;
    }
}

/// The handler is not called: the host has chosen the start path itself.
void Internals::Select(CExplorerTree& tree, HTREEITEM item, const Watch& watch) {
    const HWND window = tree.tree;
    const unsigned load = tree.loads;
    SetFocus(window);
    if (!watch.Lost() && tree.loads == load)
        SendMessageW(window, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    if (watch.Lost() || tree.loads != load)
        return;
    const TExplorerTreeNode* node = NodeOf(tree, item);
    StoreCut(node != nullptr ? node->path : "", tree.selection, sizeof tree.selection);
}

void Internals::ExpandToStartPosition(CExplorerTree& tree, const Start& start, const Watch& watch) {
    const unsigned load = tree.loads;
    const char* path = tree.properties.startPath;
    if (SamePath(start.root, path)) {
        Select(tree, start.item, watch);
        return;
    }
    Log("CExplorerTree::ExpandToStartPosition: entered");
    if (NodeOf(tree, start.item) == nullptr) {
        Select(tree, start.item, watch);
        Log("CExplorerTree::ExpandToStartPosition: exiting, can't get root item");
        return;
    }
    const char* rest = AfterRoot(path, start.root);
    if (*rest == '\0') {
        Select(tree, start.item, watch);
        Log("CExplorerTree::ExpandToStartPosition: exiting, no string to find");
        return;
    }
    const PathSteps steps(path);
    HTREEITEM current = start.item;
    while (*rest != '\0') {
        char component[MAX_PATH];
        rest = TakeComponent(rest, steps, component);
        const HTREEITEM match = tree.ExpandNode(current, component, /*result=*/nullptr);
        if (watch.Lost() || tree.loads != load)
            return;
        if (match == nullptr)
            break;
        SendMessageW(tree.tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(current));
        if (watch.Lost() || tree.loads != load)
            return;
        current = match;
    }
    Select(tree, current, watch);
    Log("CExplorerTree::ExpandToStartPosition: exiting");
}

void CExplorerTree::Load() noexcept {
    if (Internals::InNotification(*this)) {
        PostMessageA(holder, vtr::loadMessage, 0, 0);
        return;
    }
    Log("CExplorerTree::Load: entering");
    const Internals::Watch watch(*this);
    const unsigned load = ++loads;
    loaded = false;
    selection[0] = '\0';
    if (tree != nullptr) {
        SendMessageW(tree, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
        if (watch.Lost() || loads != load)
            return;
        Internals::FreeNodes(*this, /*all=*/true);
        Internals::Start start{};
        Internals::AddRoots(*this, start);
        if (start.item != nullptr)
            Internals::ExpandToStartPosition(*this, start, watch);
        if (watch.Lost() || loads != load)
            return;
        loaded = true;
    }
    Log("CExplorerTree::Load: exiting");
}
