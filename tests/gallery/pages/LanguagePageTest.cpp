#include "tests/gallery/GalleryProcess.h"

namespace {

void Use(GalleryProcess& gallery, int key, const wchar_t* told) {
    gallery.PressForFocus(Alt('L'), ID_LANGUAGE_LIST);
    gallery.Press(key);
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, told);
}

TEST(LanguagePage, ChangesEveryTextOnTheScreen) {
    GalleryProcess gallery(ID_OBSERVERS_LIST);
    gallery.Press(Alt('2'), ID_PAGE_STATE, L"Attached: 4 of 5");
    gallery.ShowPage(ID_LANGUAGE_LIST);
    gallery.Fill(Alt('K'), ID_LANGUAGE_KEY, L"open");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"&Open...");

    Use(gallery, VK_END, L"932");
    gallery.WaitForText(ID_LANGUAGE_USE, L"使用");
    gallery.WaitForText(ID_LANGUAGE_NOTE, L"保持される");
    gallery.Fill(Alt('K'), ID_LANGUAGE_KEY, L"open");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"開く(&O)...");
    // What happened before is told in the new language too.
    gallery.ShowPage(ID_OBSERVERS_LIST);
    gallery.WaitForText(ID_PAGE_STATE, L"接続: 4/5");
    gallery.WaitForText(ID_OBSERVERS_SEND + 1, L"再生");
    gallery.Press(Alt('L'));
    gallery.Press(VK_HOME, ID_PAGE_MESSAGE, L"AddObserver(メーター)");

    gallery.ShowPage(ID_LANGUAGE_LIST);
    Use(gallery, VK_HOME, L"The language is English");
}

} // namespace
