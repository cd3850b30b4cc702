#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"

namespace {

void Add(GalleryProcess& gallery, const std::wstring& item) {
    gallery.Fill(Alt('T'), ID_UNDO_ITEM, item);
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Added \"" + item + L"\".");
}

TEST(UndoPage, UndoesRedoesGroupsAndMarksWhatIsUnsaved) {
    static constexpr wchar_t clean[] = L"list.txt";
    static constexpr wchar_t dirty[] = L"*list.txt";
    const TestFolder folder;
    const std::string file = folder.File("list.txt");
    GalleryProcess gallery(ID_UNDO_LIST);
    gallery.WaitForDocument(L"Item list");
    gallery.WaitForText(ID_PAGE_STATE, L"Items: 2");
    Add(gallery, L"one");
    gallery.WaitForDocument(L"*Item list");
    gallery.WaitForText(ID_UNDO, L"&Undo: add (Ctrl+Z)");
    gallery.Press(Ctrl('S'));
    gallery.AnswerFile(file);
    gallery.WaitForDocument(clean);
    EXPECT_EQ("\xEF\xBB\xBFOverture\r\none\r\nAria\r\n", ReadBytes(file));

    gallery.Press(Alt('G'), ID_PAGE_MESSAGE, L"All changes go into one set");
    Add(gallery, L"two");
    Add(gallery, L"three");
    gallery.Press(Alt('R'), ID_PAGE_STATE, L"Items: 4, newest change: remove");
    gallery.Press(Alt('G'), ID_UNDO, L"&Undo: group");
    gallery.WaitForDocument(dirty);

    gallery.Press(Alt('U'), ID_PAGE_STATE, L"Items: 3, newest change: add");
    gallery.WaitForDocument(clean);
    gallery.WaitForText(ID_REDO, L"Re&do: group (Ctrl+Y)");
    gallery.Press(Alt('L'), ID_PAGE_STATE, L"Items: 2");
    gallery.Press(Alt('D'), ID_PAGE_STATE, L"Items: 3");
    gallery.Press(Alt('E'), ID_PAGE_STATE, L"Items: 4");
    gallery.WaitForDocument(dirty);

    // From the field that the item was typed in, and then not: it has typing of its own.
    Add(gallery, L"four");
    gallery.Press(Ctrl('Z'), ID_PAGE_STATE, L"Items: 4");
    gallery.Fill(Alt('T'), ID_UNDO_ITEM, L"draft");
    gallery.Press(Ctrl('Y'));
    gallery.Type(L"s");
    gallery.WaitForText(ID_UNDO_ITEM, L"drafts");
    gallery.Press(Ctrl('Z'), ID_UNDO_ITEM, L"two");
    gallery.WaitForText(ID_PAGE_STATE, L"Items: 4");
    // The typing is taken back once, then what was done before it.
    gallery.Press(Ctrl('Z'), ID_PAGE_STATE, L"Items: 3");
    gallery.PressForFocus(VK_ESCAPE, ID_UNDO_LIST);
    gallery.Press(Ctrl('Y'), ID_PAGE_STATE, L"Items: 4");
    gallery.Close();
    gallery.Answer(IDCANCEL);
    gallery.Close();
    gallery.Answer(IDYES);
    EXPECT_EQ(0, gallery.ExitCode());
    EXPECT_NE("\xEF\xBB\xBFOverture\r\none\r\nAria\r\n", ReadBytes(file));
}

} // namespace
