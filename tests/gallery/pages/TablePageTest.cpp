#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"

namespace {

TEST(TablePage, FindsEditsSortsAndSavesByKeyboard) {
    const TestFolder folder;
    const std::string file = folder.Write("songs.csv", "Name,Mood\r\n"
                                                       "\"Delta, live\",calm\r\n"
                                                       "beta,calm\r\n"
                                                       "Alpha,\r\n");
    GalleryProcess gallery("\"" + file + "\"");
    gallery.WaitForDocument(L"songs.csv");
    gallery.Fill(Ctrl('F'), ID_DOCUMENT_FIND_TEXT, L"DELTA, LIVE");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE,
                  L"Row 1 has this value in \"Name\": found by scanning");
    gallery.Press(Alt('K'), ID_PAGE_STATE, L"Rows: 3, columns: 2, sorted");
    gallery.WaitForDocument(L"*songs.csv");
    gallery.Press(VK_F3, ID_PAGE_MESSAGE, L"Row 3 has this value in \"Name\": found by bisection");

    gallery.Fill(VK_F2, ID_DOCUMENT_VALUE_TEXT, L"a \"quote\"");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"cannot hold a double quote");
    gallery.Fill(VK_F2, ID_DOCUMENT_VALUE_TEXT, L"Aardvark");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Set \"Name\" in row 1.");
    // The row was followed to where sorting took it.
    gallery.PressForFocus(Alt('C'), ID_TABLE_COLUMN);
    gallery.Press(VK_DOWN, ID_DOCUMENT_VALUE_TEXT, L"calm");

    gallery.Fill(Alt('R'), ID_TABLE_REPLACE_TEXT, L"calm");
    gallery.Fill(VK_RETURN, ID_TABLE_BY_TEXT, L"quiet");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Replaced \"calm\" by \"quiet\", fields: 2.");

    gallery.PressForFocus(VK_ESCAPE, ID_TABLE_LIST);
    gallery.Fill(VK_INSERT, ID_DOCUMENT_VALUE_TEXT, L"new");
    gallery.WaitForText(ID_PAGE_STATE, L"Rows: 4");
    gallery.PressForFocus(VK_RETURN, ID_TABLE_LIST);
    gallery.Press(VK_END);
    gallery.Press(VK_DELETE, ID_PAGE_MESSAGE, L"Deleted row 4.");
    gallery.Press(Ctrl('S'));
    gallery.Answer(IDYES);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Saved.");
    gallery.WaitForDocument(L"songs.csv");
    EXPECT_EQ("\"Name\",\"Mood\"\r\n"
              ",\"new\"\r\n"
              "\"Aardvark\",\"quiet\"\r\n"
              "\"Alpha\",\r\n",
              ReadBytes(file));
}

} // namespace
