#include "gallery/pages/xml/XmlTree.h"

#include "gallery/text/Language.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Drawing.h"

#include <algorithm>

namespace gallery {

namespace {

/// An item's data is the element, or this for a group that begins with the element.
LPARAM GroupOf(int element) {
    return -1 - LPARAM{element};
}

bool IsGroup(LPARAM data) {
    return data < 0;
}

int ElementOf(LPARAM data) {
    return static_cast<int>(IsGroup(data) ? -1 - data : data);
}

/// A long label has the tree scrolled to the right although its beginning is in the left half.
void ScrollBack(HWND tree, HTREEITEM item) {
    RECT label{};
    RECT area{};
    GetClientRect(tree, &area);
    int place = GetScrollPos(tree, SB_HORZ);
    if (!TreeView_GetItemRect(tree, item, &label, /*code=*/TRUE) ||
        label.left + place >= area.right / 2)
        return;
    for (int before = place + 1; place < before; place = GetScrollPos(tree, SB_HORZ)) {
        before = place;
        SendMessageW(tree, WM_HSCROLL, SB_PAGELEFT, 0);
    }
}

LPARAM DataOf(HWND tree, HTREEITEM item) {
    TVITEMW description{};
    description.mask = TVIF_PARAM;
    description.hItem = item;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&description));
    return description.lParam;
}

} // namespace

bool XmlTree::Create(HWND parent, const XmlModel& newModel, int id) {
    model = &newModel;
    tree = MakeControl(parent, WC_TREEVIEWW, L"",
                       WS_TABSTOP | WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT |
                           TVS_SHOWSELALWAYS,
                       id);
    return tree != nullptr;
}

void XmlTree::SetLook(const Look& look) {
    TreeView_SetItemHeight(tree, look.Line() + look.Pixels(6));
}

void XmlTree::Show(int selected) {
    quiet = true;
    SendMessageW(tree, WM_SETREDRAW, FALSE, 0);
    TreeView_DeleteAllItems(tree);
    if (model->Elements() > 0) {
        const HTREEITEM root =
            Insert(TVI_ROOT, 0, /*hasChildren=*/model->FirstChild(0) >= 0, LPSTR_TEXTCALLBACKW);
        // A declaration is the root and has little more than the top element.
        const HTREEITEM top = Child(root, 0);
        TreeView_Expand(tree, root, TVE_EXPAND);
        if (top != nullptr && TreeView_GetNextSibling(tree, top) == nullptr)
            TreeView_Expand(tree, top, TVE_EXPAND);
    }
    SendMessageW(tree, WM_SETREDRAW, TRUE, 0);
    quiet = false;
    Reveal(selected);
}

HTREEITEM XmlTree::Insert(HTREEITEM parent, LPARAM data, bool hasChildren, LPWSTR label) {
    TVINSERTSTRUCTW place{};
    place.hParent = parent;
    place.hInsertAfter = TVI_LAST;
    place.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN;
    place.item.pszText = label;
    place.item.cChildren = hasChildren ? 1 : 0;
    place.item.lParam = data;
    return TreeView_InsertItem(tree, &place);
}

void XmlTree::Fill(HTREEITEM item, LPARAM data) {
    if (TreeView_GetChild(tree, item) != nullptr)
        return;
    const bool ofGroup = IsGroup(data);
    std::vector<int> children;
    for (int child = ofGroup ? ElementOf(data) : model->FirstChild(ElementOf(data));
         child >= 0 && (!ofGroup || children.size() < groupSize); child = model->NextSibling(child))
        children.push_back(child);
    if (children.size() > groupSize)
        return InsertGroups(item, children);
    const bool opens = !children.empty() && model->Depth(children[0]) < deepest;
    for (const int child : children)
        Insert(item, child, opens && model->FirstChild(child) >= 0, LPSTR_TEXTCALLBACKW);
}

void XmlTree::InsertGroups(HTREEITEM item, const std::vector<int>& children) {
    for (std::size_t i = 0; i < children.size(); i += groupSize) {
        const std::size_t end = std::min(i + groupSize, children.size());
        std::wstring label = Text("ElementGroup", {std::to_wstring(i + 1), std::to_wstring(end)});
        Insert(item, GroupOf(children[i]), /*hasChildren=*/true, label.data());
    }
}

/// The item's child at that place, or null.
HTREEITEM XmlTree::Child(HTREEITEM item, int place) {
    if (item == nullptr)
        return nullptr;
    Fill(item, DataOf(tree, item));
    HTREEITEM child = TreeView_GetChild(tree, item);
    for (; child != nullptr && place > 0; --place)
        child = TreeView_GetNextSibling(tree, child);
    return child;
}

void XmlTree::Reveal(int element) {
    if (element < 0 || element >= model->Elements())
        return;
    quiet = true;
    std::vector<int> path; // from the innermost one, without the root
    for (int step = element; model->Parent(step) >= 0; step = model->Parent(step))
        path.push_back(step);
    if (path.size() > deepest)
        path.erase(path.begin(), path.end() - deepest);
    HTREEITEM item = TreeView_GetRoot(tree);
    while (item != nullptr && !path.empty()) {
        const int place = Ordinal(path.back());
        const HTREEITEM first = Child(item, 0);
        if (first != nullptr && IsGroup(DataOf(tree, first)))
            item = Child(Child(item, place / groupSize), place % groupSize);
        else
            item = Child(item, place);
        path.pop_back();
    }
    // Items above it are opened from the innermost one, which costs less than the other way round.
    TreeView_EnsureVisible(tree, item);
    TreeView_SelectItem(tree, item);
    ScrollBack(tree, item);
    quiet = false;
}

/// The place among the parent's children.
int XmlTree::Ordinal(int element) const {
    const int parent = model->Parent(element);
    int place = 0;
    for (int child = parent < 0 ? element : model->FirstChild(parent); child != element;
         child = model->NextSibling(child))
        ++place;
    return place;
}

bool XmlTree::UserSelected(const NMHDR& header, int& element) {
    if (header.hwndFrom != tree)
        return false;
    const auto& news = reinterpret_cast<const NMTREEVIEWW&>(header);
    if (header.code == TVN_GETDISPINFOW) {
        Label(reinterpret_cast<NMTVDISPINFOW&>(const_cast<NMHDR&>(header)));
    } else if (header.code == TVN_ITEMEXPANDINGW && news.action == TVE_EXPAND) {
        Fill(news.itemNew.hItem, news.itemNew.lParam);
    } else if (header.code == TVN_SELCHANGEDW && !quiet && news.itemNew.hItem != nullptr) {
        element = IsGroup(news.itemNew.lParam) ? -1 : ElementOf(news.itemNew.lParam);
        return true;
    }
    return false;
}

LRESULT XmlTree::Draw(NMTVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYITEMDRAW;
    const auto item = reinterpret_cast<HTREEITEM>(draw.nmcd.dwItemSpec);
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || GetFocus() == tree ||
        item != TreeView_GetSelection(tree))
        return CDRF_DODEFAULT;
    draw.clrTextBk = QuietSelection();
    draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
    return CDRF_NEWFONT;
}

std::wstring XmlTree::SelectedLabel() const {
    const HTREEITEM item = TreeView_GetSelection(tree);
    if (item == nullptr)
        return {};
    const LPARAM data = DataOf(tree, item);
    return IsGroup(data) ? std::wstring() : model->Summary(ElementOf(data));
}

void XmlTree::Label(NMTVDISPINFOW& question) {
    if ((question.item.mask & TVIF_TEXT) == 0)
        return;
    // Items of a longer document may ask once more before they go.
    const int element = ElementOf(question.item.lParam);
    shown = element < model->Elements() ? model->Summary(element) : L"";
    if (shown.empty())
        shown = Text("UnnamedElement");
    question.item.pszText = shown.data();
}

} // namespace gallery
