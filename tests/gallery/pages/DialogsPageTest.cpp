#include "tests/gallery/GalleryProcess.h"

namespace {

TEST(DialogsPage, TellsWhatWasAnsweredAndReadsFilesUnderAProgressWindow) {
    GalleryProcess gallery(ID_DIALOGS_SHOW);
    gallery.Press(Alt('H'));
    gallery.Answer(IDNO);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Answer: No (7).");
    gallery.Press(Alt('N'));
    gallery.Press(Alt('H'));
    gallery.Answer(IDCANCEL);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Answer: Cancel (2); it may be asked again.");
    const wchar_t fits[] = L"The window is whole on its monitor.";
    gallery.Press(Alt('C'), ID_PAGE_STATE, fits);
    gallery.Press(Alt('E'), ID_PAGE_MESSAGE, L"Read ");
    gallery.Press(Alt('C'), ID_PAGE_STATE, fits);
    gallery.Press(Alt('D'));
    gallery.Press(Alt('L'), ID_PAGE_MESSAGE, L"Read ");
}

} // namespace
