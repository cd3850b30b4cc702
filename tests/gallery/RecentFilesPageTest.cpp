#include "gallery/ControlIds.h"
#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

namespace {

/// A key below HKEY_CURRENT_USER, removed with its values.
struct TestKey {
    const std::string name =
        "Software\\vtrutils recent test " + std::to_string(GetCurrentProcessId());
    TestKey() = default;
    TestKey(const TestKey&) = delete;
    TestKey& operator=(const TestKey&) = delete;
    ~TestKey() { RegDeleteKeyA(HKEY_CURRENT_USER, name.c_str()); }

    std::string Value(const char* value) const {
        char text[512] = "";
        DWORD size = sizeof text - 1;
        RegGetValueA(HKEY_CURRENT_USER, name.c_str(), value, RRF_RT_REG_SZ, /*pdwType=*/nullptr,
                     text, &size);
        return text;
    }
};

TEST(RecentFilesPage, RemembersFilesAndOpensThemOnTheirPages) {
    const TestFolder folder;
    const TestKey key;
    const std::string table = folder.Write("table.csv", "A,B\r\n1,2\r\n");
    const std::string document = folder.Write("document.ini", "[One]\r\nkey = value\r\n");
    {
        GalleryProcess gallery("\"" + table + "\"", key.name);
        gallery.WaitForTitle(L"table.csv - vtrutils gallery");
        gallery.Close();
        EXPECT_EQ(0, gallery.ExitCode());
    }
    EXPECT_EQ(table, key.Value("Recent.1"));
    EXPECT_EQ("10", key.Value("Recent-last-length.1"));

    GalleryProcess gallery("\"" + document + "\"", key.name);
    gallery.WaitForTitle(L"document.ini - vtrutils gallery");
    gallery.GiveKeyboard();
    gallery.ShowPage(L"Recent");
    gallery.WaitForText(ID_RECENT_COUNTS, L"Files: 2, folders: 1");
    gallery.Press('F', VK_MENU);
    gallery.WaitForFocus(ID_RECENT_FILES);
    gallery.Press(VK_DOWN);
    const std::wstring shown(table.begin(), table.end());
    gallery.WaitForText(ID_RECENT_MESSAGE, shown);
    gallery.Press(VK_RETURN);
    gallery.WaitForTitle(L"table.csv - vtrutils gallery");
    gallery.WaitForFocus(ID_TABLE_LIST);

    gallery.Press(VK_TAB, VK_CONTROL);
    gallery.WaitForFocus(ID_LANGUAGE_LIST);
    gallery.Press(VK_TAB, VK_CONTROL);
    gallery.WaitForFocus(ID_RECENT_FILES);
    gallery.Press(VK_DELETE);
    gallery.WaitForText(ID_RECENT_MESSAGE, L"Removed from the list: " + shown);
    EXPECT_EQ(document, key.Value("Recent.1"));
    EXPECT_EQ("", key.Value("Recent.2"));
    gallery.Press('C', VK_MENU);
    gallery.WaitForText(ID_RECENT_COUNTS, L"Files: 0, folders: 0");
    EXPECT_EQ("", key.Value("Recent.1"));
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());
}

} // namespace
