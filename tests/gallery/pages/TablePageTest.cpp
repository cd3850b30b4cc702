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
    gallery.PressForFocus(Alt('W'), ID_TABLE_WHOLE);
    gallery.Press(VK_F3, ID_PAGE_MESSAGE, L"Row 1 has this value in \"Name\": found by scanning");
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
    gallery.Press(Ctrl('Z'), ID_DOCUMENT_VALUE_TEXT, L"calm");
    gallery.Press(Ctrl('Y'), ID_DOCUMENT_VALUE_TEXT, L"quiet");

    gallery.Fill(VK_INSERT, ID_DOCUMENT_VALUE_TEXT, L"new");
    gallery.WaitForText(ID_PAGE_STATE, L"Rows: 4");
    gallery.PressForFocus(VK_RETURN, ID_TABLE_LIST);
    gallery.Press(VK_END);
    gallery.Press(VK_DELETE, ID_PAGE_MESSAGE, L"Deleted row 4.");
    gallery.Press(Ctrl('Z'), ID_PAGE_STATE, L"Rows: 4");
    gallery.Press(Ctrl('Y'), ID_PAGE_STATE, L"Rows: 3");
    gallery.Press(Ctrl('S'), ID_PAGE_MESSAGE, L"Saved.");
    gallery.WaitForDocument(L"songs.csv");
    EXPECT_EQ("\"Name\",\"Mood\"\r\n"
              "\"Aardvark\",\"quiet\"\r\n"
              "\"Alpha\",\r\n"
              "\"beta\",\"quiet\"\r\n",
              ReadBytes(file));
}

TEST(TablePage, FollowsTheMouseAndTellsWhatASaveLeavesOut) {
    const TestFolder folder;
    const std::string ragged = "A\tB\r\nx1\t10\r\nshort\r\nx2\t9\r\na\tb\tc\r\nx3\t10\r\n";
    const std::string file = folder.Write("ragged.csv", ragged);
    GalleryProcess gallery("\"" + file + "\"");
    gallery.WaitForDocument(L"ragged.csv");
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Lines that were left out");
    gallery.Click(ID_TABLE_LIST, 1, /*title=*/false);
    gallery.WaitForText(ID_DOCUMENT_VALUE_TEXT, L"10");
    gallery.PressForFocus(Alt('W'), ID_TABLE_WHOLE);
    gallery.Fill(Ctrl('F'), ID_DOCUMENT_FIND_TEXT, L"10");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Row 3 has this value in \"B\"");
    gallery.Press(VK_F3, ID_PAGE_MESSAGE, L"Row 1 has this value in \"B\"");
    gallery.PressForFocus(Alt('W'), ID_TABLE_WHOLE);
    gallery.Fill(Ctrl('F'), ID_DOCUMENT_FIND_TEXT, L"2");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Row 2 holds this text in \"A\"");
    gallery.Click(ID_TABLE_LIST, 1, /*title=*/true);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Sorted by \"B\".");
    gallery.WaitForText(ID_DOCUMENT_VALUE_TEXT, L"x2");
    gallery.Press(Ctrl('Z'), ID_DOCUMENT_VALUE_TEXT, L"x1");
    gallery.WaitForDocument(L"ragged.csv");
    gallery.Press(Ctrl('Y'), ID_DOCUMENT_VALUE_TEXT, L"x2");
    gallery.Press(Ctrl('S'));
    EXPECT_EQ(IDNO, gallery.Question(L"lines that were left out: 2"));
    gallery.Answer(IDNO);
    EXPECT_EQ(ragged, ReadBytes(file));
    gallery.Press(Ctrl('S'));
    gallery.Answer(IDYES);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Saved.");
    EXPECT_EQ("\"A\"\t\"B\"\r\n\"x2\"\t\"9\"\r\n\"x1\"\t\"10\"\r\n\"x3\"\t\"10\"\r\n",
              ReadBytes(file));
}

} // namespace
