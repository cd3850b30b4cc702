#include "tests/gallery/GalleryProcess.h"

namespace {

void Add(GalleryProcess& gallery, const std::wstring& item) {
    gallery.Fill(Alt('T'), ID_UNDO_ITEM, item);
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Added \"" + item + L"\".");
}

TEST(UndoPage, UndoesRedoesGroupsAndMarksWhatIsUnsaved) {
    static constexpr wchar_t clean[] = L"Item list";
    static constexpr wchar_t dirty[] = L"*Item list";
    GalleryProcess gallery(ID_UNDO_LIST);
    gallery.WaitForDocument(clean);
    Add(gallery, L"one");
    gallery.WaitForDocument(dirty);
    gallery.WaitForText(ID_UNDO, L"&Undo: add (Ctrl+Z)");
    gallery.Press(Ctrl('S'));
    gallery.WaitForDocument(clean);

    gallery.Press(Alt('G'), ID_PAGE_MESSAGE, L"All changes go into one set");
    Add(gallery, L"two");
    Add(gallery, L"three");
    gallery.Press(Alt('R'), ID_PAGE_STATE, L"Items: 2, newest change: remove");
    gallery.Press(Alt('G'), ID_UNDO, L"&Undo: group");
    gallery.WaitForDocument(dirty);

    gallery.Press(Alt('U'), ID_PAGE_STATE, L"Items: 1, newest change: add");
    gallery.WaitForDocument(clean);
    gallery.WaitForText(ID_REDO, L"Re&do: group (Ctrl+Y)");
    gallery.Press(Alt('L'), ID_PAGE_STATE, L"Items: 0");
    gallery.Press(Alt('D'), ID_PAGE_STATE, L"Items: 1");
    gallery.Press(Alt('O'), ID_PAGE_STATE, L"Items: 2");
    gallery.WaitForDocument(dirty);

    // From the field that the item was typed in, and then not: it has typing of its own.
    Add(gallery, L"four");
    gallery.Press(Ctrl('Z'), ID_PAGE_STATE, L"Items: 2");
    gallery.Fill(Alt('T'), ID_UNDO_ITEM, L"draft");
    gallery.Press(Ctrl('Y'));
    gallery.Type(L"s");
    gallery.WaitForText(ID_UNDO_ITEM, L"drafts");
    gallery.Press(Ctrl('Z'), ID_UNDO_ITEM, L"two");
    gallery.WaitForText(ID_PAGE_STATE, L"Items: 2");
    gallery.PressForFocus(VK_ESCAPE, ID_UNDO_LIST);
    gallery.Press(Ctrl('Y'), ID_PAGE_STATE, L"Items: 3");
    gallery.Press(Ctrl('Z'), ID_PAGE_STATE, L"Items: 2");
}

} // namespace
