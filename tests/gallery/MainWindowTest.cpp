#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"

namespace {

/// All of the control's height, and its beginning, can be seen.
bool IsInSight(HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    for (HWND parent = GetParent(control); parent != nullptr; parent = GetParent(parent)) {
        RECT client{};
        GetClientRect(parent, &client);
        MapWindowPoints(parent, nullptr, reinterpret_cast<POINT*>(&client), 2);
        if (place.top < client.top || place.bottom > client.bottom || place.left < client.left)
            return false;
    }
    return true;
}

TEST(MainWindow, RemembersLanguagePlaceAndPage) {
    const TestKey key;
    {
        GalleryProcess gallery("", key.SubKey());
        gallery.WaitForDocument(L"media-settings.ini");
        gallery.ChooseLanguage(2);
        gallery.WaitForDocument(L"media-settings.ini", L"vtrutils-Galerie");
        gallery.WaitForText(ID_PAGE_HEADING, L"INI-Dokument: media-settings.ini");
        gallery.PressForFocus(Ctrl(VK_TAB), ID_XML_TREE);
        MoveWindow(gallery.Window(), 40, 30, 903, 507, /*bRepaint=*/TRUE);
        gallery.Close();
        EXPECT_EQ(0, gallery.ExitCode());
    }
    GalleryProcess again("", key.SubKey());
    again.WaitForDocument(L"web-reply.xml", L"vtrutils-Galerie");
    RECT place{};
    GetWindowRect(again.Window(), &place);
    EXPECT_EQ(40, place.left);
    EXPECT_EQ(30, place.top);
    EXPECT_EQ(903, place.right - place.left);
    EXPECT_EQ(507, place.bottom - place.top);
}

TEST(MainWindow, OpensTheFileOfAnyNameAndScrollsToWhatHasTheFocus) {
    const TestFolder folder;
    const std::wstring name = L"Дорога 道.ini";
    const std::string plain = folder.Write("plain.ini", "[One]\r\nkey = value\r\n");
    const std::wstring path = std::wstring(plain.begin(), plain.end() - 9) + name;
    ASSERT_TRUE(MoveFileW(std::wstring(plain.begin(), plain.end()).c_str(), path.c_str()));
    std::string utf8(path.size() * 4, '\0');
    WideCharToMultiByte(CP_UTF8, 0, path.c_str(), -1, utf8.data(), static_cast<int>(utf8.size()),
                        nullptr, nullptr);
    GalleryProcess gallery("\"" + std::string(utf8.c_str()) + "\" --language Japanese");
    gallery.WaitForDocument(name);
    gallery.WaitForText(ID_PAGE_HEADING, name);

    // As small as a window manager may make it.
    SetWindowPos(gallery.Window(), nullptr, 0, 0, 480, 320, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_FALSE(IsInSight(gallery.Control(ID_DOCUMENT_VALUE_TEXT)));
    gallery.PressForFocus(Alt('V'), ID_DOCUMENT_VALUE_TEXT);
    gallery.Wait("a field in sight",
                 [&] { return IsInSight(gallery.Control(ID_DOCUMENT_VALUE_TEXT)); });
    gallery.PressForFocus(Alt('F'), ID_DOCUMENT_FIND_TEXT);
    gallery.Wait("a field in sight",
                 [&] { return IsInSight(gallery.Control(ID_DOCUMENT_FIND_TEXT)); });
    DeleteFileW(path.c_str());
}

TEST(MainWindow, HelpsCopiesAndForgetsOldMessages) {
    GalleryProcess gallery(ID_REGIONS_CANVAS);
    gallery.Press(VK_F1);
    const std::wstring help = gallery.Answer(IDOK, ID_READER_TEXT);
    EXPECT_NE(std::wstring::npos, help.find(L"utilities/containers/RectangleList.h"))
        << help.c_str();
    EXPECT_NE(std::wstring::npos, help.find(L"Alt+C: Consolidate")) << help.c_str();

    gallery.ShowPage(ID_DIALOGS_SHOW);
    gallery.Press(Alt('H'));
    gallery.Answer(IDNO);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Answer: No (7).");
    gallery.Press(Alt('N'));
    gallery.Wait("the end of a message",
                 [&] { return GetWindowTextLengthW(gallery.Control(ID_PAGE_MESSAGE)) == 0; });

    gallery.ShowPage(ID_LANGUAGE_LIST);
    gallery.PressForFocus(Alt('L'), ID_LANGUAGE_LIST);
    gallery.Press(VK_HOME);
    gallery.Press(Ctrl('C'));
    gallery.Wait("a copy", [] { return IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE; });
    ASSERT_TRUE(OpenClipboard(nullptr));
    const auto* copied = static_cast<const wchar_t*>(GetClipboardData(CF_UNICODETEXT));
    EXPECT_EQ(0u, std::wstring(copied).find(L"English (in use)\t"));
    EmptyClipboard();
    CloseClipboard();
}

} // namespace
