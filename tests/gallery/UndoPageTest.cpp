#include "gallery/ControlIds.h"
#include "tests/gallery/GalleryProcess.h"

#include <gtest/gtest.h>

namespace {

void Add(GalleryProcess& gallery, const std::wstring& item) {
    gallery.Press('T', VK_MENU);
    gallery.WaitForFocus(ID_UNDO_ITEM);
    gallery.Type(item);
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_UNDO_MESSAGE, L"Added \"" + item + L"\".");
}

TEST(UndoPage, UndoesRedoesGroupsAndMarksWhatIsUnsaved) {
    static constexpr wchar_t clean[] = L"Item list - vtrutils gallery";
    static constexpr wchar_t dirty[] = L"*Item list - vtrutils gallery";
    GalleryProcess gallery("");
    gallery.WaitForTitle(L"media-settings.ini - vtrutils gallery");
    gallery.GiveKeyboard();
    gallery.ShowPage(ID_UNDO_LIST);
    gallery.WaitForTitle(clean);
    Add(gallery, L"one");
    gallery.WaitForTitle(dirty);
    gallery.WaitForText(ID_UNDO_UNDO, L"&Undo: add");
    gallery.Press('S', VK_CONTROL);
    gallery.WaitForTitle(clean);

    gallery.Press('G', VK_MENU);
    gallery.WaitForText(ID_UNDO_MESSAGE, L"All changes go into one set");
    Add(gallery, L"two");
    Add(gallery, L"three");
    gallery.Press('R', VK_MENU);
    gallery.WaitForText(ID_UNDO_COUNTS, L"Items: 2, newest change: remove");
    gallery.Press('G', VK_MENU);
    gallery.WaitForText(ID_UNDO_UNDO, L"&Undo: group");
    gallery.WaitForTitle(dirty);

    gallery.Press('U', VK_MENU);
    gallery.WaitForText(ID_UNDO_COUNTS, L"Items: 1, newest change: add");
    gallery.WaitForTitle(clean);
    gallery.WaitForText(ID_UNDO_REDO, L"Re&do: group");
    gallery.Press('L', VK_MENU);
    gallery.WaitForText(ID_UNDO_COUNTS, L"Items: 0");
    gallery.WaitForText(ID_UNDO_REDO, L"Re&do: add");
    gallery.Press('D', VK_MENU);
    gallery.WaitForText(ID_UNDO_COUNTS, L"Items: 1");
    gallery.Press('O', VK_MENU);
    gallery.WaitForText(ID_UNDO_COUNTS, L"Items: 2");
    gallery.WaitForTitle(dirty);
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());
}

} // namespace
