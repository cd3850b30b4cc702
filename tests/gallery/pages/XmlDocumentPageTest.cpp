#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"

namespace {

void Find(GalleryProcess& gallery, const std::wstring& name, const std::wstring& message) {
    gallery.Fill(Ctrl('F'), ID_DOCUMENT_FIND_TEXT, name);
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, message);
}

/// The last attribute or text of the element that is shown, which has more than one.
void ExpectLastDetail(GalleryProcess& gallery, const std::wstring& value) {
    gallery.Press(Alt('A'));
    gallery.Press(VK_END, ID_PAGE_MESSAGE, value);
}

TEST(XmlDocumentPage, FindsShowsAndDecodesByKeyboard) {
    const TestFolder folder;
    std::string many = "<wanted><inside a=\"1\" b=\"in the third group\"/></wanted>";
    for (int i = 0; i < 2345; ++i)
        many.insert(0, "<one/>");
    std::string deep = "<bottom a=\"1\" b=\"at the bottom\"/>";
    for (int i = 0; i < 300; ++i)
        deep.insert(0, "<deep>");
    const std::string file =
        folder.Write("reply.xml", "<reply><title lang=\"en\">Ink &amp; Rope</title><title/><many>" +
                                      many + "</many>" + deep);
    GalleryProcess gallery("\"" + file + "\"");
    gallery.WaitForDocument(L"reply.xml");
    gallery.WaitForText(ID_PAGE_STATE, L"Elements: 2652, attributes: 5, texts: 1,");
    Find(gallery, L"TITLE", L"Match 1 of 2: \"title\", depth 1.");
    // What was found is seen although the focus is in the field.
    const COLORREF strong = GetSysColor(COLOR_HIGHLIGHT), paper = GetSysColor(COLOR_WINDOW);
    const auto quarter = [](int a, int b) { return (a * 4 + b * 12) / 16; };
    gallery.WaitForColour(ID_XML_TREE, RGB(quarter(GetRValue(strong), GetRValue(paper)),
                                           quarter(GetGValue(strong), GetGValue(paper)),
                                           quarter(GetBValue(strong), GetBValue(paper))));
    ExpectLastDetail(gallery, L"Ink &amp; Rope");
    gallery.Press(Alt('D'), ID_PAGE_MESSAGE, L"Loaded again: references are decoded.");
    ExpectLastDetail(gallery, L"Ink & Rope");
    gallery.Press(VK_F3, ID_PAGE_MESSAGE, L"Match 2 of 2");
    gallery.Press(VK_F3, ID_PAGE_MESSAGE, L"Match 1 of 2");

    Find(gallery, L"wanted", L"Match 1 of 1: \"wanted\", depth 2.");
    gallery.PressForFocus(Alt('E'), ID_XML_TREE);
    gallery.Press(VK_RIGHT);
    gallery.Press(VK_DOWN);
    ExpectLastDetail(gallery, L"in the third group");
    Find(gallery, L"the bottom", L"depth 301, deeper than the tree shows.");
    ExpectLastDetail(gallery, L"at the bottom");
    Find(gallery, L"third gr", L"Match 1 of 1: \"inside\", depth 3.");
    Find(gallery, L"nothing", L"No name, value or text contains \"nothing\".");
}

} // namespace
