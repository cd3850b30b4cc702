#include "tests/gallery/GalleryProcess.h"

namespace {

TEST(DialogsPage, TellsWhatWasAnsweredAndReadsFilesUnderAProgressWindow) {
    GalleryProcess gallery(ID_DIALOGS_SHOW);
    gallery.Press(Alt('H'));
    gallery.Answer(IDNO);
    gallery.WaitForText(ID_DIALOGS_TELL, L"Answer: No (7).");
    gallery.Press(Alt('N'));
    gallery.Press(Alt('H'));
    gallery.Answer(IDCANCEL);
    gallery.WaitForText(ID_DIALOGS_TELL, L"Answer: Cancel (2); it may be asked again.");
    const wchar_t fits[] = L"The window is whole on its monitor.";
    gallery.Press(Alt('C'), ID_DIALOGS_TELL, fits);
    gallery.Press(Alt('E'), ID_DIALOGS_TELL, L"Read ");
    gallery.Press(Alt('C'), ID_DIALOGS_TELL, fits);
    gallery.Press(Alt('D'));
    gallery.Press(Alt('L'), ID_DIALOGS_TELL, L"Read ");
}

} // namespace
