#include "gallery/ControlIds.h"
#include "tests/gallery/GalleryProcess.h"

#include <gtest/gtest.h>

namespace {

void Use(GalleryProcess& gallery, WORD key, const wchar_t* told) {
    gallery.Press('L', VK_MENU);
    gallery.WaitForFocus(ID_LANGUAGE_LIST);
    gallery.Press(key);
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_LANGUAGE_MESSAGE, told);
}

TEST(LanguagePage, ChangesEveryTextOnTheScreen) {
    GalleryProcess gallery("");
    gallery.WaitForTitle(L"media-settings.ini - vtrutils gallery");
    gallery.GiveKeyboard();
    gallery.ShowPage(ID_OBSERVERS_LIST);
    gallery.Press('2', VK_MENU);
    gallery.WaitForText(ID_OBSERVERS_COUNTS, L"Attached: 4 of 5");
    gallery.ShowPage(ID_LANGUAGE_LIST);
    gallery.Press('K', VK_MENU);
    gallery.WaitForFocus(ID_LANGUAGE_KEY);
    gallery.Type(L"open");
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_LANGUAGE_MESSAGE, L"&Open...");

    Use(gallery, VK_END, L"932");
    gallery.WaitForText(ID_LANGUAGE_USE, L"使用");
    gallery.WaitForText(ID_LANGUAGE_NOTE, L"保持される");
    gallery.Press('K', VK_MENU);
    gallery.Type(L"open");
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_LANGUAGE_MESSAGE, L"開く(&O)...");
    // What happened before is told in the new language too.
    gallery.ShowPage(ID_OBSERVERS_LIST);
    gallery.WaitForText(ID_OBSERVERS_COUNTS, L"接続: 4/5");
    gallery.WaitForText(ID_OBSERVERS_SEND + 1, L"再生");
    gallery.Press('L', VK_MENU);
    gallery.Press(VK_HOME);
    gallery.WaitForText(ID_OBSERVERS_MESSAGE, L"AddObserver(メーター)");

    gallery.ShowPage(ID_LANGUAGE_LIST);
    Use(gallery, VK_HOME, L"The language is English");
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());
}

} // namespace
