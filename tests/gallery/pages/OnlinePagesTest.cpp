#include "gallery/pages/online/RecordedServices.h"
#include "tests/gallery/GalleryProcess.h"

namespace {

using gallery::RecordedServices;

TEST(SoundsPage, SearchesPagesAndSaysHowASearchFailed) {
    ASSERT_NE(L"", RecordedServices());
    GalleryProcess gallery(ID_SOUNDS_QUESTION);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"press Enter");
    gallery.Fill(Alt('E'), ID_SOUNDS_HOST, L"no server");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"not the name of a server");
    gallery.Fill(Alt('E'), ID_SOUNDS_HOST, RecordedServices());
    gallery.Press(VK_RETURN, ID_SOUNDS_RANGE, L"1 to 10 of 20");
    gallery.WaitForText(ID_SOUNDS_DETAILS, L"Tempo: 60 beats per minute\r\nKey: A minor");
    gallery.Press(Alt('N'), ID_SOUNDS_RANGE, L"11 to 20 of 20");
    gallery.Press(Alt('R'), ID_SOUNDS_RANGE, L"1 to 10 of 20");
    gallery.Fill(Alt('A'), ID_SOUNDS_QUESTION, L"fault-garbage");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"something else than results");
    gallery.Fill(Alt('A'), ID_SOUNDS_QUESTION, L"fault-hold");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Waiting");
    gallery.Press(VK_ESCAPE, ID_PAGE_MESSAGE, L"Cancelled.");
    gallery.Fill(Alt('A'), ID_SOUNDS_QUESTION, L" ");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Type what to search for");
}

TEST(MusicPage, GoesFromArtistsToSongsAndBack) {
    GalleryProcess gallery(ID_MUSIC_ARTIST);
    gallery.Fill(Alt('E'), ID_MUSIC_HOST, RecordedServices());
    gallery.Press(VK_RETURN, ID_MUSIC_RANGE, L"1 to 6 of 8");
    gallery.PressForFocus(VK_TAB, ID_MUSIC_SEARCH);
    gallery.Press(Alt('O'), ID_MUSIC_PATH, L"Albums of Foo (UK band)");
    gallery.WaitForText(ID_MUSIC_RANGE, L"1 to 98 of 130");
    gallery.Press(Alt('N'), ID_MUSIC_RANGE, L"101 to 130 of 130");
    gallery.Press(Alt('O'), ID_MUSIC_PATH, L"Songs of ");
    gallery.Press(Alt('K'), ID_MUSIC_RANGE, L"101 to 130 of 130");
    gallery.Press(Alt('K'), ID_MUSIC_PATH, L"Artists");
    gallery.Fill(Alt('A'), ID_MUSIC_ARTIST, L"fault-garbage");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"something else than results");
    gallery.WaitForText(ID_MUSIC_PATH, L"Artists");
    gallery.Fill(Alt('A'), ID_MUSIC_ARTIST, L"fault-hold");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Waiting");
    gallery.Press(Alt('C'), ID_PAGE_MESSAGE, L"Cancelled.");
}

} // namespace
