#include "gallery/pages/xml/XmlDocumentPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/app/DocumentPage.h"
#include "gallery/pages/xml/XmlModel.h"
#include "gallery/pages/xml/XmlTree.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>

namespace gallery {

namespace {

class XmlDocumentPage final : public DocumentPage {
public:
    XmlDocumentPage() : DocumentPage(model, wording) {}
    void Command(int id, int notification) override;
    void TakeFocus() override { SetFocus(tree.Handle()); }
    bool ShowExample() override;

private:
    bool MakeControls() override;
    void Retext() override;
    void Restyle() override { tree.SetLook(Sizes()); }
    void Arrange(int width, int height) override;
    void Noticed(const NMHDR& header) override;
    LRESULT OnMessage(UINT kind, WPARAM wParam, LPARAM lParam) override;

    std::wstring TextToCopy() const override {
        return GetFocus() == tree.Handle() ? tree.SelectedLabel() : DocumentPage::TextToCopy();
    }
    void Enter(HWND focus) override;
    void Find(const std::wstring& name) override;
    void Decode();

    std::wstring Cell(int row, int column) const;
    void ShowDocument() override;
    void ShowElement(int element);
    std::wstring Counts() const override;

    static constexpr Wording wording = {.files = {.nameKey = "XmlFiles", .extension = L"xml"},
                                        .contents = Contents::xml,
                                        .shipped = "web-reply.xml",
                                        .notOpened = "NotOpenedXml",
                                        .findLabel = "FindNameOrText",
                                        .find = "FindNext",
                                        .typeText = "TypeElement"};

    XmlModel model;
    int selected = -1; ///< the element whose attributes and texts are shown

    HWND treeLabel = nullptr;
    XmlTree tree;
    HWND detailsLabel = nullptr;
    ListView details;
    HWND decode = nullptr;
};

bool XmlDocumentPage::MakeControls() {
    MakeFileRow();
    MakeFindRow();
    treeLabel = AddLabel("ElementsLabel", ID_XML_TREE_LABEL);
    if (!tree.Create(Handle(), model, ID_XML_TREE))
        return false;
    detailsLabel = AddLabel("DetailsLabel", ID_XML_DETAILS_LABEL);
    const auto cell = [this](int row, int column) { return Cell(row, column); };
    if (!AddList(details, "Details", ID_XML_DETAILS, ListView::Titles::shown, cell))
        return false;
    for (const char* title : {"DetailKind", "DetailName", "Value"})
        details.AddColumn(title);
    decode = AddCaption(MakeCheckBox(Handle(), ID_XML_DECODE), "DecodeReferences");
    ShowState();
    return decode != nullptr;
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
    tree.Show(selected);
    DocumentPage::Retext();
}

void XmlDocumentPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/12);
    const int left = width / 2;
    const int right = left + page.Gap();
    page.AlignButtons({open, find});
    page.Put(End::top, {.field = fileLabel, .buttons = {open}});
    page.Put(End::top, {.label = findLabel, .field = findText, .buttons = {find}});
    page.Put(End::bottom, {.field = decode});
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

void XmlDocumentPage::Noticed(const NMHDR& header) {
    int element = -1;
    if (tree.UserSelected(header, element)) {
        ShowElement(element);
        Tell(L"");
    } else if (header.hwndFrom == details.Handle() && ListView::SelectionMoved(header)) {
        // In full, where the column is too narrow.
        Tell(model.DetailOf(selected, details.Selected()).value);
    }
}

LRESULT XmlDocumentPage::OnMessage(UINT kind, WPARAM wParam, LPARAM lParam) {
    if (kind == WM_NOTIFY) {
        NMHDR& header = *reinterpret_cast<NMHDR*>(lParam);
        if (header.hwndFrom == tree.Handle() && header.code == static_cast<UINT>(NM_CUSTOMDRAW))
            return tree.Draw(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
    }
    return DocumentPage::OnMessage(kind, wParam, lParam);
}

void XmlDocumentPage::Command(int id, int notification) {
    if (id == ID_XML_DECODE)
        Decode();
    else
        DocumentPage::Command(id, notification);
}

void XmlDocumentPage::Enter(HWND focus) {
    if (focus == tree.Handle())
        SetFocus(details.Handle());
}

void XmlDocumentPage::Find(const std::wstring& name) {
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
    ShowState();
}

void XmlDocumentPage::ShowElement(int element) {
    selected = element;
    details.SetRows(model.Details(element));
}

std::wstring XmlDocumentPage::Counts() const {
    return Text("XmlCounts",
                {std::to_wstring(model.Elements()), std::to_wstring(model.Attributes()),
                 std::to_wstring(model.Texts()), Format(L"%.2f", model.LoadMilliseconds())});
}

} // namespace

std::unique_ptr<Page> MakeXmlDocumentPage() {
    return std::make_unique<XmlDocumentPage>();
}

} // namespace gallery
