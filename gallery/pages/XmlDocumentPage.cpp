#include "gallery/ControlIds.h"
#include "gallery/Controls.h"
#include "gallery/DocumentPage.h"
#include "gallery/Language.h"
#include "gallery/ListView.h"
#include "gallery/Rows.h"
#include "gallery/Text.h"
#include "gallery/XmlModel.h"
#include "gallery/XmlTree.h"

#include <algorithm>
#include <memory>

namespace gallery {

namespace {

/// The elements of an XML document as a tree, with the attributes and texts of one: find by name,
/// decode references.
class XmlDocumentPage final : public DocumentPage {
public:
    XmlDocumentPage() : DocumentPage(model, wording) {}
    void Command(int id, int notification) override;
    void TakeFocus() override { SetFocus(tree.Handle()); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    void Retext() override;
    void Restyle() override;
    void Arrange(int width, int height) override;
    LRESULT Notify(const NMHDR& header) override;

    void Enter();
    void Escape();
    void FindNext();
    void Decode();

    std::wstring Cell(int row, int column) const;
    void ShowDocument() override;
    void ShowElement(int element);
    void ShowState();
    void Tell(const std::wstring& text) override { SetText(message, text); }

    static constexpr Wording wording = {{"XmlFiles", L"xml"}, "web-reply.xml", "NotOpenedXml"};

    XmlModel model;
    int selected = -1; ///< the element whose attributes and texts are shown

    HWND fileLabel = nullptr;
    HWND open = nullptr;
    HWND findLabel = nullptr;
    HWND findText = nullptr;
    HWND findNext = nullptr;
    HWND treeLabel = nullptr;
    XmlTree tree;
    HWND detailsLabel = nullptr;
    ListView details;
    HWND decode = nullptr;
    HWND message = nullptr;
    HWND counts = nullptr;
};

bool XmlDocumentPage::MakeControls() {
    const HWND page = Handle();
    fileLabel = MakeTextLine(page, SS_PATHELLIPSIS, ID_XML_FILE_LABEL);
    open = AddButton("Open", ID_OPEN);
    findLabel = AddLabel("FindElement", ID_XML_FIND_LABEL);
    findText = MakeEdit(page, ID_XML_FIND_TEXT);
    findNext = AddButton("FindNext", ID_FIND_NEXT);
    treeLabel = AddLabel("ElementsLabel", ID_XML_TREE_LABEL);
    if (!tree.Create(page, model, ID_XML_TREE))
        return false;
    detailsLabel = AddLabel("DetailsLabel", ID_XML_DETAILS_LABEL);
    const auto cell = [this](int row, int column) { return Cell(row, column); };
    if (!details.Create(page, "Details", ID_XML_DETAILS, ListView::Titles::shown, cell))
        return false;
    for (const char* title : {"DetailKind", "DetailName", "Value"})
        details.AddColumn(title, ListView::Align::left);
    decode = AddCaption(MakeCheckBox(page, ID_XML_DECODE), "DecodeReferences");
    message = MakeTextLine(page, SS_ENDELLIPSIS, ID_XML_MESSAGE);
    counts = MakeTextLine(page, SS_LEFT, ID_XML_COUNTS);
    ShowState();
    return counts != nullptr;
}

std::wstring XmlDocumentPage::Cell(int row, int column) const {
    const XmlModel::Detail detail = model.DetailOf(selected, row);
    switch (column) {
    case 0:
        return Text(detail.attribute ? "DetailAttribute" : "DetailText");
    case 1:
        return detail.name;
    default:
        return detail.value;
    }
}

void XmlDocumentPage::Retext() {
    // The document is read in the code page of the language.
    details.UpdateTexts();
    tree.Show(selected);
    Tell(L"");
    ShowState();
}

void XmlDocumentPage::Restyle() {
    tree.SetLook(Sizes());
    details.SetLook(Sizes());
}

void XmlDocumentPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/12);
    const int left = width / 2;
    const int right = left + page.Gap();
    page.Put(End::top, {nullptr, fileLabel, {open}});
    page.Put(End::top, {findLabel, findText, {findNext}});
    page.PutMessage(message, /*counts=*/nullptr);
    page.PutLine(counts);
    page.Put(End::bottom, {nullptr, decode, {}});
    const int label = Sizes().Line() + page.Gap() / 2;
    page.Places().Put(treeLabel, 0, page.Top(), left, label);
    page.Places().Put(detailsLabel, right, page.Top(), width - right, label);
    page.Places().Put(tree.Handle(), 0, page.Top() + label, left, page.Room() - label);
    page.Places().Put(details.Handle(), right, page.Top() + label, width - right,
                      page.Room() - label);
    const int padding = Sizes().Pixels(20);
    const int kind = padding + std::max({Sizes().TextWidth(Text("DetailKind")),
                                         Sizes().TextWidth(Text("DetailAttribute")),
                                         Sizes().TextWidth(Text("DetailText"))});
    const int room = ListView::RoomForColumns(width - right) - kind;
    details.SetColumnWidth(0, kind);
    details.SetColumnWidth(1, room * 2 / 5);
    details.SetColumnWidth(2, room - room * 2 / 5);
}

LRESULT XmlDocumentPage::Notify(const NMHDR& header) {
    LRESULT result = 0;
    if (details.Notified(header, result))
        return result;
    int element = -1;
    if (tree.UserSelected(header, element)) {
        ShowElement(element);
        Tell(L"");
    } else if (header.hwndFrom == details.Handle() && ListView::SelectionMoved(header)) {
        // In full, where the column is too narrow.
        Tell(model.DetailOf(selected, details.Selected()).value);
    }
    return 0;
}

void XmlDocumentPage::Command(int id, int) {
    switch (id) {
    case ID_OPEN:
        return AskAndOpen();
    case ID_FIND:
        return FocusAndSelect(findText);
    case ID_FIND_NEXT:
        return FindNext();
    case ID_XML_DECODE:
        return Decode();
    case IDOK:
        return Enter();
    case IDCANCEL:
        return Escape();
    default:
        return;
    }
}

void XmlDocumentPage::Enter() {
    if (GetFocus() == findText)
        FindNext();
    else if (GetFocus() == tree.Handle())
        SetFocus(details.Handle());
}

void XmlDocumentPage::Escape() {
    SetText(findText, L"");
    TakeFocus();
    Tell(L"");
}

void XmlDocumentPage::FindNext() {
    const std::wstring name = TextOf(findText);
    if (name.empty()) {
        Tell(Text("TypeElement"));
        return FocusAndSelect(findText);
    }
    const XmlModel::Match match = model.Find(name, selected);
    if (match.count == 0)
        return Warn(Text("NoElement", {name}));
    tree.Reveal(match.element);
    ShowElement(match.element);
    const int depth = model.Depth(match.element);
    Tell(Text(depth > XmlTree::deepest ? "DeepElementMatch" : "ElementMatch",
              {std::to_wstring(match.number), std::to_wstring(match.count),
               model.Name(match.element), std::to_wstring(depth)}));
}

void XmlDocumentPage::Decode() {
    const bool on = IsChecked(decode);
    if (!model.DecodeReferences(on)) {
        SendMessageW(decode, BM_SETCHECK, on ? BST_UNCHECKED : BST_CHECKED, 0);
        return Warn(Text("NotOpenedXml", {model.Path()}));
    }
    // The file may have lost elements since.
    const int element = selected < model.Elements() ? selected : 0;
    tree.Show(element);
    ShowElement(element);
    ShowState();
    Tell(Text(on ? "ReferencesDecoded" : "ReferencesKept"));
}

/// A search for a title with a reference, decoded.
bool XmlDocumentPage::ShowExample() {
    SendMessageW(decode, BM_CLICK, 0, 0);
    SetText(findText, L"title");
    FindNext();
    TakeFocus();
    return model.Loaded();
}

void XmlDocumentPage::ShowDocument() {
    tree.Show(0);
    ShowElement(0);
    SetText(fileLabel, model.Path());
    ShowState();
}

void XmlDocumentPage::ShowElement(int element) {
    selected = element;
    details.SetRows(model.Details(element));
}

void XmlDocumentPage::ShowState() {
    EnableWindow(findNext, model.Loaded());
    if (model.Loaded())
        SetText(counts,
                Text("XmlCounts",
                     {std::to_wstring(model.Elements()), std::to_wstring(model.Attributes()),
                      std::to_wstring(model.Texts()), Format(L"%.2f", model.LoadMilliseconds())}));
    Rearrange();
}

} // namespace

std::unique_ptr<Page> MakeXmlDocumentPage();

std::unique_ptr<Page> MakeXmlDocumentPage() {
    return std::make_unique<XmlDocumentPage>();
}

} // namespace gallery
