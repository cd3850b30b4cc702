#include "tests/gallery/GalleryProcess.h"

namespace {

TEST(TextPage, ShowsResultsWhileTyping) {
    GalleryProcess gallery(ID_TEXT);
    gallery.Fill(Alt('T'), ID_TEXT, L"What a jackass");
    gallery.WaitForText(ID_PAGE_STATE, L"Offensive words in the text: yes");
    // What was written as a link already may lead anywhere.
    gallery.Fill(Alt('T'), ID_TEXT, L"<a href=\"C:\\a.exe\">www.b.example</a>");
    gallery.WaitForText(ID_TEXT_ADDRESS_LINK, L"http://www.b.example");
    gallery.Fill(Alt('T'), ID_TEXT, L"a&amp;b\\nx@c.example");
    gallery.WaitForText(ID_PAGE_STATE, L"Offensive words in the text: no");
    gallery.WaitForText(ID_TEXT_ADDRESS_LINK, L"mailto:a&amp;b\\nx@c.example");
    gallery.Fill(Alt('L'), ID_TEXT_LENGTH, L"5025006");
    gallery.Fill(Alt('S'), ID_TEXT_SIZE, L"4294967296");
    gallery.WaitForText(ID_PAGE_STATE, L"a size of at most 4294967295 bytes");
    gallery.Fill(Alt('S'), ID_TEXT_SIZE, L"1025");
    gallery.PressForFocus(Alt('R'), ID_TEXT_RESULTS);
    gallery.Walk(VK_END, VK_UP, ID_TEXT_RESULT,
                 {L"1 KB", L"23:45:006", L"23:45", L"01:23:45:006", L"01:23:45",
                  L"a&amp;b\r\nx@c.example", L"\">a&amp;b\\nx@c.example</a>",
                  L"a&b\\nx@c.example"});
    // The field with lines lets the keyboard go on.
    gallery.PressForFocus(Alt('I'), ID_TEXT_RESULT);
    gallery.Press(VK_ESCAPE);
    gallery.Press(VK_TAB);
    gallery.PressForFocus(VK_TAB, ID_TEXT);
}

} // namespace
