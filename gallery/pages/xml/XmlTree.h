#ifndef VTRUTILS_GALLERY_PAGES_XML_XMLTREE_H
#define VTRUTILS_GALLERY_PAGES_XML_XMLTREE_H

#include "gallery/pages/xml/XmlModel.h"
#include "gallery/widgets/Look.h"

#include <commctrl.h>
#include <string>
#include <vector>

namespace gallery {

/// The tree of a document's elements. An item gets its children when it is opened, many children in
/// groups, and what lies deeper than `deepest` is not shown, so that a document of any size costs
/// little. One thread at a time.
class XmlTree {
public:
    static constexpr int deepest = 200;

    /// The model outlives the tree. False, with `GetLastError`, when it cannot be made.
    bool Create(HWND parent, const XmlModel& newModel, int id);
    HWND Handle() const { return tree; }
    void SetLook(const Look& look);

    /// Shows the model's elements anew and selects one, or none for -1, without a notification.
    void Show(int selected);

    /// Selects the element, or the deepest one above it that is shown, without a notification.
    void Reveal(int element);

    /// Answers the tree's questions. True, with the element or -1 for a group in `element`, when
    /// the user selected another item.
    bool UserSelected(const NMHDR& header, int& element);

    /// "" for a group and for none.
    std::wstring SelectedLabel() const;

    /// The answer to NM_CUSTOMDRAW: the selected element is seen while the focus is elsewhere.
    LRESULT Draw(NMTVCUSTOMDRAW& draw) const;

private:
    /// A group stands for `groupSize` children from one on.
    static constexpr int groupSize = 1000;

    HTREEITEM Insert(HTREEITEM parent, LPARAM data, bool hasChildren, LPWSTR label);
    void Fill(HTREEITEM item, LPARAM data);
    void InsertGroups(HTREEITEM item, const std::vector<int>& children);
    HTREEITEM Child(HTREEITEM item, int place);
    void Label(NMTVDISPINFOW& question);
    int Ordinal(int element) const;

    const XmlModel* model = nullptr;
    HWND tree = nullptr;
    bool quiet = false;
    std::wstring shown; ///< the text handed out last
};

} // namespace gallery

#endif
