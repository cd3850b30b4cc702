#include "gallery/ControlIds.h"
#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

namespace {

TEST(TablePage, FindsEditsSortsAndSavesByKeyboard) {
    const TestFolder folder;
    const std::string file = folder.Write("songs.csv", "Name,Mood\r\n"
                                                       "\"Delta, live\",calm\r\n"
                                                       "beta,calm\r\n"
                                                       "Alpha,\r\n");
    GalleryProcess gallery("\"" + file + "\"");
    gallery.WaitForTitle(L"songs.csv - vtrutils gallery");
    gallery.GiveKeyboard();
    gallery.Press('F', VK_CONTROL);
    gallery.WaitForFocus(ID_TABLE_FIND_TEXT);
    gallery.Type(L"DELTA, LIVE");
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_TABLE_MESSAGE, L"Row 1 has this value in \"Name\": found by scanning");
    gallery.Press('K', VK_MENU);
    gallery.WaitForText(ID_TABLE_COUNTS, L"Rows: 3, columns: 2, sorted");
    gallery.WaitForTitle(L"*songs.csv - vtrutils gallery");
    gallery.Press(VK_F3);
    gallery.WaitForText(ID_TABLE_MESSAGE, L"Row 3 has this value in \"Name\": found by bisection");

    gallery.Press(VK_F2);
    gallery.WaitForFocus(ID_TABLE_FIELD_TEXT);
    gallery.Type(L"a \"quote\"");
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_TABLE_MESSAGE, L"cannot hold a double quote");
    gallery.Press(VK_ESCAPE);
    gallery.WaitForFocus(ID_TABLE_LIST);
    gallery.WaitForText(ID_TABLE_FIELD_TEXT, L"Delta, live");
    gallery.Press(VK_RETURN);
    gallery.WaitForFocus(ID_TABLE_FIELD_TEXT);
    gallery.Type(L"Aardvark");
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_TABLE_MESSAGE, L"Set \"Name\" in row 1.");
    // The row was followed to where sorting took it.
    gallery.Press('C', VK_MENU);
    gallery.WaitForFocus(ID_TABLE_COLUMN);
    gallery.Press(VK_DOWN);
    gallery.WaitForText(ID_TABLE_FIELD_TEXT, L"calm");

    gallery.Press('R', VK_MENU);
    gallery.WaitForFocus(ID_TABLE_REPLACE_TEXT);
    gallery.Type(L"calm");
    gallery.Press(VK_RETURN);
    gallery.WaitForFocus(ID_TABLE_BY_TEXT);
    gallery.Type(L"quiet");
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_TABLE_MESSAGE, L"Replaced \"calm\" by \"quiet\", fields: 2.");

    gallery.Press(VK_ESCAPE);
    gallery.WaitForFocus(ID_TABLE_LIST);
    gallery.Press(VK_INSERT);
    gallery.WaitForText(ID_TABLE_COUNTS, L"Rows: 4");
    gallery.WaitForFocus(ID_TABLE_FIELD_TEXT);
    gallery.Type(L"new");
    gallery.Press(VK_RETURN);
    gallery.WaitForFocus(ID_TABLE_LIST);
    gallery.Press(VK_END);
    gallery.Press(VK_DELETE);
    gallery.WaitForText(ID_TABLE_MESSAGE, L"Deleted row 4.");
    gallery.Press('S', VK_CONTROL);
    gallery.Answer(IDYES);
    gallery.WaitForText(ID_TABLE_MESSAGE, L"Saved.");
    gallery.WaitForTitle(L"songs.csv - vtrutils gallery");
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());
    EXPECT_EQ("\"Name\",\"Mood\"\r\n"
              ",\"new\"\r\n"
              "\"Aardvark\",\"quiet\"\r\n"
              "\"Alpha\",\r\n",
              ReadBytes(file));
}

} // namespace
