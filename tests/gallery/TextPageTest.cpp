#include "gallery/ControlIds.h"
#include "tests/gallery/GalleryProcess.h"

#include <gtest/gtest.h>

namespace {

TEST(TextPage, ShowsResultsWhileTyping) {
    GalleryProcess gallery("");
    gallery.WaitForTitle(L"media-settings.ini - vtrutils gallery");
    gallery.GiveKeyboard();
    gallery.ShowPage(ID_TEXT);
    const auto fill = [&](WORD mnemonic, int id, const std::wstring& text) {
        gallery.Press(mnemonic, VK_MENU);
        gallery.WaitForFocus(id);
        gallery.Type(text);
    };
    fill('T', ID_TEXT, L"What a jackass");
    gallery.WaitForText(ID_TEXT_MESSAGE, L"Offensive words in the text: yes");
    fill('T', ID_TEXT, L"a&amp;b\\nx@c.example");
    gallery.WaitForText(ID_TEXT_MESSAGE, L"Offensive words in the text: no");
    fill('L', ID_TEXT_LENGTH, L"5025006");
    fill('S', ID_TEXT_SIZE, L"4294967296");
    gallery.WaitForText(ID_TEXT_MESSAGE, L"a size of at most 4294967295 bytes");
    fill('S', ID_TEXT_SIZE, L"1025");
    gallery.Press(VK_TAB);
    WORD key = VK_END;
    for (const wchar_t* result :
         {L"1 KB", L"23:45:006", L"23:45", L"01:23:45:006", L"01:23:45", L"a&amp;b\rx@c.example",
          L"\">a&amp;b\\nx@c.example</a>", L"a&b\\nx@c.example"}) {
        gallery.Press(key);
        gallery.WaitForText(ID_TEXT_RESULT, result);
        key = VK_UP;
    }
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());
}

} // namespace
