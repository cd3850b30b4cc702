#include "gallery/text/Text.h"
#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"

namespace {

TEST(DocumentPage, TellsThatADocumentIsMissing) {
    const TestFolder folder;
    GalleryProcess gallery("\"" + folder.File("missing.ini") + "\"");
    gallery.WaitForDocument(L"");
    gallery.WaitForText(ID_PAGE_MESSAGE, L"there is no such file");
}

TEST(DocumentPage, OpensAFileOnThePageForItsContents) {
    const TestFolder folder;
    const std::string document = folder.Write("first.ini", "[One]\r\nkey = value\r\n");
    const std::string table = "Name;Mood\r\n\"Delta, live\";calm\r\nbeta;calm\r\n";
    const std::string file = folder.Write("songs.txt", table);
    const std::string picture = folder.Write("picture.ini", std::string("[a]\0\1=\2", 8));
    GalleryProcess gallery("\"" + document + "\"");
    gallery.WaitForDocument(L"first.ini");
    gallery.Press(Ctrl('O'));
    gallery.AnswerFile(picture);
    EXPECT_EQ(IDNO, gallery.Question(L"This file is not text"));
    gallery.Answer(IDNO);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Not opened: ");
    gallery.WaitForDocument(L"first.ini");

    gallery.Press(Ctrl('O'));
    gallery.AnswerFile(file);
    gallery.WaitForDocument(L"songs.txt");
    gallery.WaitForFocus(ID_TABLE_LIST);
    gallery.WaitForText(ID_PAGE_STATE, L"Rows: 2, columns: 2,");
    gallery.Press(Ctrl('S'));
    gallery.PressForFocus(VK_F2, ID_DOCUMENT_VALUE_TEXT);
    EXPECT_EQ(table, ReadBytes(file));
}

TEST(DocumentPage, SaysHowBytesWereRead) {
    const TestFolder folder;
    const std::string document =
        folder.Write("wide.ini", "[One]\r\nkey = \xC3\xA4\xE2\x82\xAC\r\n");
    GalleryProcess gallery("\"" + document + "\"");
    gallery.WaitForDocument(L"wide.ini");
    gallery.WaitForText(ID_PAGE_MESSAGE, L"This file is UTF-8");
    gallery.WaitForText(ID_PAGE_STATE, L"UTF-8 read as code page ");
}

TEST(DocumentPage, LeavesTheExampleAsItIs) {
    const TestFolder folder;
    const std::string example = gallery::ProgramFolder() + "media-settings.ini";
    const std::string before = ReadBytes(example);
    const std::string own = folder.File("own.ini");
    GalleryProcess gallery("");
    gallery.WaitForDocument(L"media-settings.ini");
    gallery.WaitForText(ID_PAGE_MESSAGE, L"This is a copy of an example");
    gallery.Fill(Ctrl('F'), ID_DOCUMENT_FIND_TEXT, L"Pan law");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Match 1 of 2");
    gallery.Fill(VK_F2, ID_DOCUMENT_VALUE_TEXT, L"0 dB");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Set \"Pan law\"");
    gallery.Press(Ctrl('S'));
    gallery.AnswerFile(example, /*replaces=*/true);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"stays as it is");
    gallery.Press(Ctrl('S'));
    gallery.AnswerFile(own);
    gallery.WaitForDocument(L"own.ini");
    EXPECT_NE(std::string::npos, ReadBytes(own).find("0 dB"));
    EXPECT_EQ(before, ReadBytes(example));
    gallery.Press(Ctrl('E'), ID_PAGE_MESSAGE, L"This is a copy of an example");
    gallery.WaitForDocument(L"media-settings.ini");
}

} // namespace
