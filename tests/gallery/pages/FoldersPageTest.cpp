#include "tests/gallery/GalleryProcess.h"

namespace {

TEST(FoldersPage, ShowsKeysAndFilesAndReadsTheTreeAnewByKeyboard) {
    GalleryProcess gallery(ID_FOLDERS_FILES);
    gallery.WaitForText(ID_FOLDERS_FOLDER, L":\\windows");
    gallery.Press(Alt('F'));
    gallery.Press(VK_HOME, ID_PAGE_MESSAGE, L"(36)");
    gallery.WaitForText(ID_FOLDERS_FOLDER, L"\\Desktop");
    gallery.PressForFocus(VK_TAB, ID_FOLDERS_FILES);
    // Without it the first one is another; what was selected stays so as far as it is there.
    gallery.Press(Alt('D'));
    gallery.Press(Alt('F'));
    gallery.Press(VK_HOME, ID_FOLDERS_FOLDER, L"\\Documents");
    gallery.Press(VK_END, ID_PAGE_MESSAGE, L"(35)");
    gallery.WaitForText(ID_FOLDERS_FOLDER, L":\\");
}

} // namespace
