#include "tests/gallery/GalleryProcess.h"

namespace {

/// In place of what the field holds.
void Write(GalleryProcess& gallery, const std::wstring& script) {
    gallery.PressForFocus(VK_F2, ID_PROMO_SCRIPT);
    gallery.Press(Ctrl('A'));
    gallery.Press(VK_DELETE);
    gallery.Type(script);
}

TEST(PromoPage, PlaysWhatIsTypedAndTriesEffectsOnIt) {
    GalleryProcess gallery(ID_PROMO_SCRIPT);
    gallery.WaitForText(ID_PAGE_STATE, L"Scripts: 4, steps: 32");
    gallery.WaitForText(ID_PAGE_MESSAGE, L"On stage: main, step 1, text 1.");
    Write(gallery, L"[a.1]\rtext.1=One\rwait.1=notify\r[a.2]\rtext.1=Two\rtext.2=!\r"
                   L"wait.1=notify\rwait.2=notify\r");
    gallery.Press(VK_F5, ID_PAGE_MESSAGE, L"On stage: a, step 1, text 1, until F6 is pressed.");
    gallery.WaitForText(ID_PAGE_STATE, L"Scripts: 1, steps: 2");
    gallery.Press(VK_ESCAPE, ID_PAGE_MESSAGE, L"Stopped: a, step 1.");
    gallery.Press(VK_F6, ID_PAGE_MESSAGE, L"On stage: a, step 2, text 1");
    gallery.Press(VK_F6, ID_PAGE_MESSAGE, L"On stage: a, step 2, text 2");
    gallery.PressForFocus({VK_TAB, VK_SHIFT}, ID_PROMO_STEPS);

    gallery.PressForFocus(Alt('E'), ID_PROMO_EFFECT);
    gallery.Press(VK_DOWN, ID_PAGE_MESSAGE, L"The effect \"frames crossfade\" in 800 ms.");
    gallery.PressForFocus(Alt('M'), ID_PROMO_TIME);
    gallery.Press(VK_RIGHT, ID_PROMO_TIME_LABEL, L"850 ms");
    gallery.Press(VK_F7, ID_PAGE_MESSAGE, L"in 850 ms");
    gallery.Press(VK_F6, ID_PAGE_MESSAGE, L"On stage: a, step 2, text 1");
    gallery.PressForFocus(Alt('Z'), ID_PROMO_SIZE);
    gallery.Press(VK_DOWN, ID_PAGE_MESSAGE, L"The stage is ");
    gallery.Press(VK_F6, ID_PAGE_MESSAGE, L"On stage: a, step 2, text 2");
    gallery.Press(VK_ESCAPE, ID_PAGE_MESSAGE, L"Stopped: a, step 2.");
    gallery.Press(VK_F6, ID_PAGE_MESSAGE, L"On stage: a, step 1, text 1");

    // Left while it plays, a text that waits is still there.
    gallery.ShowPage(ID_DIALOGS_SHOW);
    gallery.ShowPage(ID_PROMO_SCRIPT);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"On stage: a, step 1, text 1");
    gallery.Press(VK_F6, ID_PAGE_MESSAGE, L"On stage: a, step 2, text 1");
}

TEST(PromoPage, TellsWhatKeepsAScriptFromPlaying) {
    GalleryProcess gallery(ID_PROMO_SCRIPT);
    const struct {
        std::wstring script;
        const wchar_t* told;
    } rows[] = {
        {L"", L"The script is empty"},
        {L"text.1=One", L"This has no steps"},
        {L"[a.2]\rtext.1=One", L"The script \"a\" cannot begin"},
        {L"[a.1]\rbold=1\r[a.2]\rtext.1=One", L"The script \"a\" cannot begin"},
        {L"[a.1]\rgoto.script=b\r[b.1]\rtext.1=One", L"The script \"a\" cannot begin"},
        {L"[a.1]\rtext.1=\u30ab", L"lacks a character of the script"},
        {L"[a.1]\rtext.1=One\rwait.1=notify\r[", L"On stage: a, step 1, text 1"},
    };
    for (const auto& row : rows) {
        Write(gallery, row.script);
        gallery.Press(VK_F5, ID_PAGE_MESSAGE, row.told);
        if (row.told[0] != L'O')
            gallery.Press(VK_F7, ID_PAGE_MESSAGE, L"There is no text on the stage yet");
    }
    gallery.Press(VK_F7, ID_PAGE_MESSAGE, L"The effect \"color fade\" in 800 ms.");
    // A jump to a script that is not there ends it; what was shown can still be tried.
    Write(gallery, L"[a.1]\rtext.1=One\rwait.1=notify\r[a.2]\rgoto.script=b");
    gallery.Press(VK_F5, ID_PAGE_MESSAGE, L"On stage: a, step 1, text 1");
    gallery.Press(VK_F6, ID_PAGE_MESSAGE, L"The script has ended: \"b\"");
    gallery.Press(VK_F7, ID_PAGE_MESSAGE, L"The effect \"color fade\" in 800 ms.");
}

TEST(PromoPage, BeginsAnewInTheLanguageThatIsChosenMeanwhile) {
    GalleryProcess gallery(ID_PROMO_SCRIPT);
    gallery.WaitForText(ID_PAGE_STATE, L"Scripts: 4, steps: 32");
    const auto choose = [&](int key, const wchar_t* told) {
        gallery.ShowPage(ID_LANGUAGE_LIST);
        gallery.PressForFocus(Alt('L'), ID_LANGUAGE_LIST);
        gallery.Press(key);
        gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, told);
        gallery.ShowPage(ID_PROMO_SCRIPT);
    };
    choose(VK_END, L"932");
    gallery.WaitForText(ID_PAGE_STATE, L"\u30b9\u30c6\u30c3\u30d7: 32");
    gallery.WaitForText(ID_PROMO_SCRIPT, L"\u5b58\u5728\u3057\u306a\u3044");
    Write(gallery, L"[a.1]\rtext.1=\u8868\rwait.1=notify\r");
    gallery.Press(VK_F5, ID_PAGE_STATE, L": 1");
    choose(VK_HOME, L"English");
    gallery.WaitForText(ID_PROMO_SCRIPT, L"\u8868");
    gallery.WaitForText(ID_PAGE_MESSAGE, L"lacks a character of the script");
}

} // namespace
