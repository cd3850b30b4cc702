#include "gallery/ControlIds.h"
#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

namespace {

TEST(FilesPage, ShowsWhatBecomesOfANameByKeyboard) {
    const TestFolder folder;
    folder.Write("take [3].wav", "");
    GalleryProcess gallery("");
    gallery.WaitForTitle(L"media-settings.ini - vtrutils gallery");
    gallery.GiveKeyboard();
    gallery.ShowPage(L"Files");
    const auto fill = [&](WORD mnemonic, int id, const std::wstring& text) {
        gallery.Press(mnemonic, VK_MENU);
        gallery.WaitForFocus(id);
        gallery.Press(VK_HOME);
        gallery.Press(VK_END, VK_SHIFT);
        gallery.Type(text);
    };
    fill('N', ID_FILES_NAME, L"take [3].wav");
    fill('F', ID_FILES_FOLDER, L"C:\\no such folder");
    gallery.WaitForText(ID_FILES_MESSAGE, L"no such folder");
    fill('F', ID_FILES_FOLDER, {folder.Path().begin(), folder.Path().end()});
    gallery.Press(VK_TAB);
    gallery.WaitForFocus(ID_FILES_NAMES);
    WORD key = VK_END;
    for (const wchar_t* name : {L"take [1].wav", L"take [3]_1.wav", L"take.wav", L"take [3].wav",
                                L"TAKE__3_.WAV", L"take [3].wav"}) {
        gallery.Press(key);
        gallery.WaitForText(ID_FILES_MESSAGE, name);
        key = VK_UP;
    }
    // The program's own folder stands above it.
    gallery.Press('S', VK_MENU);
    gallery.WaitForFocus(ID_FILES_PLACES);
    gallery.Press(VK_DOWN);
    gallery.Press(VK_RETURN);
    gallery.WaitForFocus(ID_FILES_NAME);
    gallery.WaitForText(ID_FILES_FOLDER, L"\\Desktop");
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());
    EXPECT_EQ("take [3].wav", folder.Listing());
}

} // namespace
