// What stands in the tree: records, items, and the children of a folder.

#include "utilities/base/NameIndex.h"
#include "utilities/base/PtrArray.h"
#include "utilities/ui/ExplorerTreeInternals.h"
#include "utilities/ui/FolderChildren.h"
#include "vtrfutls/Log.h"

#include <cstring>

namespace {

using Internals = vtr::Internals<CExplorerTree>;

HTREEITEM Related(HWND tree, UINT relation, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

bool IsBelow(HWND tree, HTREEITEM item, HTREEITEM ancestor) {
    while (item != nullptr && item != ancestor)
        item = Related(tree, TVGN_PARENT, item);
    return item != nullptr;
}

bool IsExpanded(HWND tree, HTREEITEM item) {
    return (SendMessageW(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED) &
            TVIS_EXPANDED) != 0;
}

/// One block, the texts after the record. Null when memory runs out.
TExplorerTreeNode* MakeNode(const vtr::FolderChild& child) {
    const std::size_t pathSize = std::strlen(child.path.get()) + 1;
    const std::size_t nameSize = child.name != nullptr ? std::strlen(child.name.get()) + 1 : 0;
    auto* node = static_cast<TExplorerTreeNode*>(
        std::malloc(sizeof(TExplorerTreeNode) + pathSize + nameSize));
    if (node == nullptr)
        return nullptr;
    char* texts = reinterpret_cast<char*>(node + 1);
    std::memcpy(texts, child.path.get(), pathSize);
    if (nameSize > 0)
        std::memcpy(texts + pathSize, child.name.get(), nameSize);
    *node = {child.hasChildren, child.atRoot, texts, nameSize > 0 ? texts + pathSize : nullptr,
             /*item=*/nullptr,  child.image};
    return node;
}

/// Whether there is something to expand, asked once for each folder that several shortcuts lead to:
/// they may lead to the folder that they are in.
class SubDirectories {
public:
    explicit SubDirectories(CExplorerTree& asked) : tree(asked) {}

    bool Has(const vtr::FolderChild& child) {
        if (!child.isShortcut)
            return tree.HasSubDirectories(child.path.get());
        const unsigned known = answers.Find(child.path.get());
        if (known != vtr::NameIndex::none)
            return known != 0;
        const bool has = tree.HasSubDirectories(child.path.get());
        answers.Number(child.path.get(), has ? 1 : 0);
        return has;
    }

private:
    CExplorerTree& tree;
    vtr::NameIndex answers;
};

} // namespace

TExplorerTreeNode* Internals::NodeOf(const CExplorerTree& tree, HTREEITEM item) {
    if (item == nullptr)
        return nullptr;
    TVITEMW asked{};
    asked.mask = TVIF_HANDLE | TVIF_PARAM;
    asked.hItem = item;
    if (SendMessageW(tree.tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&asked)) == FALSE)
        return nullptr;
    return reinterpret_cast<TExplorerTreeNode*>(asked.lParam);
}

/// All, or those without an item.
void Internals::FreeNodes(CExplorerTree& tree, bool all) {
    ++tree.readings;
    Pointers<TExplorerTreeNode> nodes(tree.nodes);
    if (all)
        nodes.Clear(std::free);
    else
        nodes.RemoveIf([](const TExplorerTreeNode* node) { return node->item == nullptr; },
                       std::free);
}

/// Null when memory runs out.
HTREEITEM Internals::AddItem(CExplorerTree& tree, HTREEITEM parent, HTREEITEM after,
                             const FolderChild& child) {
    Pointers<TExplorerTreeNode> nodes(tree.nodes);
    TExplorerTreeNode* node = MakeNode(child);
    if (node == nullptr || !nodes.Append(node)) {
        std::free(node);
        return nullptr;
    }
    wchar_t empty[] = L"";
    TVINSERTSTRUCTW item{};
    item.hParent = parent;
    item.hInsertAfter = after;
    item.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
    item.item.pszText = child.shown != nullptr ? child.shown.get() : empty;
    item.item.iImage = child.image;
    item.item.iSelectedImage = child.selectedImage;
    item.item.lParam = reinterpret_cast<LPARAM>(node);
    node->item = reinterpret_cast<HTREEITEM>(
        SendMessageW(tree.tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    if (node->item == nullptr)
        std::free(nodes.Remove(nodes.Count() - 1));
    else if (child.hasChildren)
        AddPlaceholder(tree, node->item);
    return node->item;
}

/// Gives the item its button.
void Internals::AddPlaceholder(const CExplorerTree& tree, HTREEITEM parent) {
    wchar_t text[] = L"";
    TVINSERTSTRUCTW item{};
    item.hParent = parent;
    item.hInsertAfter = TVI_FIRST;
    item.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
    item.item.pszText = text;
    item.item.iImage = imagePlaceholder;
    item.item.iSelectedImage = imagePlaceholder;
    SendMessageW(tree.tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

/// False when the host destroyed the tree meanwhile, or had it read a folder.
bool Internals::RemoveChildren(CExplorerTree& tree, HTREEITEM item, const Watch& watch) {
    const unsigned reading = tree.readings;
    // Otherwise the selection would go from one child that is removed to the next.
    const HTREEITEM selected = Related(tree.tree, TVGN_CARET, nullptr);
    if (selected != item && IsBelow(tree.tree, selected, item))
        SendMessageW(tree.tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
    if (watch.Lost() || tree.readings != reading)
        return false;
    // Each child of an expanded item moves all items below it when it comes or goes.
    if (IsExpanded(tree.tree, item))
        SendMessageW(tree.tree, TVM_EXPAND, TVE_COLLAPSE, reinterpret_cast<LPARAM>(item));
    while (!watch.Lost() && tree.readings == reading) {
        const HTREEITEM child = Related(tree.tree, TVGN_CHILD, item);
        if (child == nullptr ||
            SendMessageW(tree.tree, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(child)) == FALSE)
            break;
    }
    if (watch.Lost() || tree.readings != reading)
        return false;
    FreeNodes(tree, /*all=*/false);
    return true;
}

HTREEITEM CExplorerTree::ExpandNode(HTREEITEM item, const char* wanted, TVITEMA* result) {
    Log("CExplorerTree::ExpandNode: entering");
    if (result != nullptr)
        *result = {};
    const TExplorerTreeNode* node = Internals::NodeOf(*this, item);
    if (node == nullptr)
        return nullptr;
    const bool atRoot = node->atRoot;
    const vtr::OwnedText path = vtr::CopyText(node->path);
    if (path == nullptr)
        return nullptr;
    const Internals::Watch watch(*this);
    const HWND window = tree;
    const bool wasExpanded = IsExpanded(window, item);
    const vtr::RedrawPause pause(window);
    if (!Internals::RemoveChildren(*this, item, watch))
        return nullptr;
    Log("CExplorerTree::ExpandNode: deleted children");

    const unsigned reading = readings;
    vtr::FolderChildren found(path.get(), shortcuts);
    found.List(properties.flags, wanted);
    SubDirectories subDirectories(*this);
    for (vtr::FolderChild* child : found.children) {
        child->hasChildren = subDirectories.Has(*child);
        if (watch.Lost() || readings != reading)
            return nullptr;
        if (LoggingNow())
            LogFmtA("CExplorerTree::ExpandNode: looping, findStr = <%s>",
                    wanted != nullptr ? wanted : "");
    }
    found.Sort();
    // From the last one on, because a tree-view may walk over all children to find their end.
    const vtr::FolderChild* first = nullptr;
    HTREEITEM match = nullptr;
    for (unsigned i = found.children.Count(); i-- > 0;) {
        const vtr::FolderChild* child = found.children[i];
        const HTREEITEM added = Internals::AddItem(*this, item, TVI_FIRST, *child);
        if (added != nullptr && child->isWanted &&
            (first == nullptr || child->order < first->order)) {
            first = child;
            match = added;
        }
    }
    Log("CExplorerTree::ExpandNode: added subdirectories");
    if (Related(window, TVGN_CHILD, item) == nullptr && atRoot)
        Internals::AddPlaceholder(*this, item);
    if (match != nullptr && result != nullptr) {
        result->mask = TVIF_HANDLE | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
        result->hItem = match;
        result->lParam = reinterpret_cast<LPARAM>(Internals::NodeOf(*this, match));
        result->iImage = first->image;
        result->iSelectedImage = first->selectedImage;
    }
    if (wasExpanded)
        SendMessageW(window, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
    Log("CExplorerTree::ExpandNode: exiting");
    return match;
}

bool CExplorerTree::HasSubDirectories(const char* path) {
    return path != nullptr && vtr::FolderChildren(path, shortcuts).HasAny();
}
