#include "gallery/text/Text.h"
#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"
#include "utilities/containers/MRUList.h"

namespace {

TEST(RecentFilesPage, RemembersFilesAndOpensThemOnTheirPages) {
    const TestFolder folder;
    const TestKey key;
    const std::string table = folder.Write("table.csv", "A,B\r\n1,2\r\n");
    const std::string document = folder.Write("document.ini", "[One]\r\nkey = value\r\n");
    // As an earlier run would have left it; two windows, one after the other, would contend for the
    // keyboard.
    char name[] = "Recent";
    CMRUList earlier(name);
    earlier.Init(HKEY_CURRENT_USER, key.SubKey());
    earlier.AddFile(table.c_str(), /*length=*/10);

    GalleryProcess gallery("\"" + document + "\"", key.SubKey());
    gallery.WaitForDocument(L"document.ini");
    gallery.ShowPage(ID_RECENT_FILES);
    gallery.WaitForText(ID_PAGE_STATE, L"Files: 2, folders: 1");
    gallery.PressForFocus(Alt('F'), ID_RECENT_FILES);
    const std::wstring shown(table.begin(), table.end());
    gallery.Press(VK_DOWN, ID_PAGE_MESSAGE, shown);
    gallery.Press(VK_RETURN);
    gallery.WaitForDocument(L"table.csv");
    gallery.WaitForFocus(ID_TABLE_LIST);

    gallery.ShowPage(ID_RECENT_FILES);
    gallery.PressForFocus(Alt('F'), ID_RECENT_FILES);
    gallery.Press(VK_DELETE, ID_PAGE_MESSAGE, L"Removed from the list: " + shown);
    EXPECT_EQ(document, key.Texts()["Recent.1"]);
    EXPECT_EQ("", key.Texts()["Recent.2"]);
    gallery.Press(Alt('C'));
    gallery.Answer(IDYES);
    gallery.WaitForText(ID_PAGE_STATE, L"Files: 0, folders: 0");
    EXPECT_EQ("", key.Texts()["Recent.1"]);
}

/// The library's list is that of a code page; English has none with these letters.
TEST(RecentFilesPage, ShowsFilesOfOtherLanguages) {
    const TestFolder folder;
    const TestKey key;
    const std::string plain = folder.Write("plain.ini", "[One]\r\nkey = value\r\n");
    const std::wstring path = gallery::Widen((folder.Path()).c_str()) + L"Дорога.ini";
    ASSERT_TRUE(CopyFileW(gallery::Widen(plain.c_str()).c_str(), path.c_str(), FALSE));
    // As a run in Russian would have left it.
    std::string narrow;
    ASSERT_TRUE(gallery::Narrow(path, narrow, /*codePage=*/1251));
    key.SetText("Recent-1251.1", narrow);
    GalleryProcess gallery("\"" + plain + "\"", key.SubKey());
    gallery.WaitForDocument(L"plain.ini");
    gallery.ShowPage(ID_RECENT_FILES);
    gallery.WaitForText(ID_PAGE_STATE, L"Files: 2, folders: 1");
    EXPECT_EQ(narrow, key.Texts()["Recent-1251.1"]);
    gallery.PressForFocus(Alt('F'), ID_RECENT_FILES);
    gallery.Press(VK_END, ID_PAGE_MESSAGE, path);
    gallery.Press(VK_DELETE, ID_PAGE_MESSAGE, L"Removed from the list: " + path);
    EXPECT_EQ("", key.Texts()["Recent-1251.1"]);
    DeleteFileW(path.c_str());
}

} // namespace
