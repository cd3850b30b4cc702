#include "tests/gallery/GalleryProcess.h"

namespace {

TEST(ObserversPage, ShowsWhoReceivesWhatByKeyboard) {
    GalleryProcess gallery(ID_OBSERVERS_LIST);
    gallery.WaitForDocument(L"");
    gallery.Press(Alt('C'));
    gallery.Press(Alt('2'), ID_PAGE_STATE, L"Attached: 4 of 5, deliveries: 2");
    gallery.PressForFocus(Alt('L'), ID_OBSERVERS_LOG);
    // The hint is out of the nested delivery already; the playlist is not out of anything.
    gallery.Walk(VK_HOME, VK_DOWN, ID_PAGE_MESSAGE,
                 {L"1. SendNotification(2", L"2. Meter: stop", L"3. Hint: stop - removes",
                  L"4. Repeat: stop - sends play", L"5. SendNotification(1", L"6. Meter: play",
                  L"7. Playlist: play - removes itself and comes back", L"8. Clock: play",
                  L"9. Clock: stop"});
    gallery.Press(Alt('1'), ID_PAGE_MESSAGE, L"\"play\" was received, observers: 3.");
    gallery.Press(Alt('M'));
    gallery.PressForFocus(Alt('O'), ID_OBSERVERS_LIST);
    gallery.Press(VK_RETURN, ID_PAGE_STATE, L"Attached: 1 of 5");
    gallery.Press(Alt('1'), ID_PAGE_MESSAGE, L"\"play\" was received, observers: 1.");
    gallery.Press(Alt('R'));
    gallery.Press(Alt('1'), ID_PAGE_MESSAGE, L"Nobody is registered for \"play\".");
}

} // namespace
