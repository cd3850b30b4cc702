#include "gallery/ControlIds.h"
#include "tests/gallery/GalleryProcess.h"

#include <gtest/gtest.h>
#include <initializer_list>

namespace {

/// Goes from the first line of the log to the last, each of which the page shows in full.
void ExpectLog(GalleryProcess& gallery, std::initializer_list<const wchar_t*> lines) {
    gallery.Press('L', VK_MENU);
    gallery.WaitForFocus(ID_OBSERVERS_LOG);
    WORD key = VK_HOME;
    for (const wchar_t* line : lines) {
        gallery.Press(key);
        gallery.WaitForText(ID_OBSERVERS_MESSAGE, line);
        key = VK_DOWN;
    }
}

TEST(ObserversPage, ShowsWhoReceivesWhatByKeyboard) {
    GalleryProcess gallery("");
    gallery.WaitForTitle(L"media-settings.ini - vtrutils gallery");
    gallery.GiveKeyboard();
    gallery.ShowPage(L"Observers");
    gallery.WaitForTitle(L"vtrutils gallery");
    gallery.Press('C', VK_MENU);
    gallery.Press('2', VK_MENU);
    gallery.WaitForText(ID_OBSERVERS_COUNTS, L"Attached: 4 of 5, deliveries: 2");
    // The hint is out of the nested delivery already; the playlist is not out of anything.
    ExpectLog(gallery, {L"1. SendNotification(2", L"2. Meter: stop", L"3. Hint: stop - removes",
                        L"4. Repeat: stop - sends play", L"5. SendNotification(1",
                        L"6. Meter: play", L"7. Playlist: play - removes itself and comes back",
                        L"8. Clock: play", L"9. Clock: stop"});
    gallery.Press('1', VK_MENU);
    gallery.WaitForText(ID_OBSERVERS_MESSAGE, L"\"play\" was received, observers: 3.");
    gallery.Press('M', VK_MENU);
    gallery.Press('O', VK_MENU);
    gallery.WaitForFocus(ID_OBSERVERS_LIST);
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_OBSERVERS_COUNTS, L"Attached: 1 of 5");
    gallery.Press('1', VK_MENU);
    gallery.WaitForText(ID_OBSERVERS_MESSAGE, L"\"play\" was received, observers: 1.");
    gallery.Press('R', VK_MENU);
    gallery.Press('1', VK_MENU);
    gallery.WaitForText(ID_OBSERVERS_MESSAGE, L"Nobody is registered for \"play\".");
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());
}

} // namespace
