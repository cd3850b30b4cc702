#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"

namespace {

TEST(FilesPage, ShowsWhatBecomesOfANameByKeyboard) {
    const TestFolder folder;
    folder.Write("take [3].wav", "");
    GalleryProcess gallery(ID_FILES_NAME);
    gallery.Fill(Alt('N'), ID_FILES_NAME, L"take [3].wav");
    gallery.Fill(Alt('F'), ID_FILES_FOLDER, L"C:\\no such folder");
    gallery.WaitForText(ID_PAGE_STATE, L"no such folder");
    gallery.Fill(Alt('F'), ID_FILES_FOLDER, {folder.Path().begin(), folder.Path().end()});
    gallery.PressForFocus(VK_TAB, ID_FILES_NAMES);
    gallery.Walk(VK_END, VK_UP, ID_PAGE_MESSAGE,
                 {L"take [1].wav", L"take [3]_1.wav", L"take.wav", L"take [3].wav", L"TAKE__3_.WAV",
                  L"take [3].wav"});
    // The program's own folder stands above it.
    gallery.PressForFocus(Alt('S'), ID_FILES_PLACES);
    gallery.Press(VK_DOWN);
    gallery.PressForFocus(VK_RETURN, ID_FILES_NAME);
    gallery.WaitForText(ID_FILES_FOLDER, L"\\Desktop");
    EXPECT_EQ("take [3].wav", folder.Listing());
}

} // namespace
