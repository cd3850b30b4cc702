#include "gallery/text/Text.h"
#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"
#include "tests/text/ini/IniDocuments.h"

namespace {

constexpr char small[] = "loose = 1\r\n; a remark\r\n[One]\r\nkey = value\r\n";
constexpr int saveElsewhere = 100;

/// Sets the value of the pair that is selected.
void SetValue(GalleryProcess& gallery, const std::wstring& value) {
    gallery.Fill(VK_F2, ID_DOCUMENT_VALUE_TEXT, value);
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Set \"");
}

void OpenPairs(GalleryProcess& gallery, const std::string& file) {
    gallery.WaitForDocument(gallery::NameOfFile(gallery::Widen(file.c_str())));
    gallery.Fill(Ctrl('F'), ID_DOCUMENT_FIND_TEXT, L"key");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Match 1 of 1: \"key\" in [One]");
}

TEST(IniDocumentPage, FindsEditsSortsSavesAndAsksByKeyboard) {
    const TestFolder folder;
    const std::string file =
        folder.Write("desk.ini", ReadBytes(gallery::ProgramFolder() + "media-settings.ini"));
    CIniFileReader expected;
    ASSERT_TRUE(expected.Init(file.c_str(), /*sort=*/false));

    GalleryProcess gallery("\"" + file + "\"");
    gallery.WaitForDocument(L"desk.ini");
    gallery.Fill(Ctrl('F'), ID_DOCUMENT_FIND_TEXT, L"PAN L");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Match 1 of 2: \"Pan law\" in [Mixer]");
    gallery.Fill(Ctrl('F'), ID_DOCUMENT_FIND_TEXT, L"-4.5 D");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Match 2 of 2: \"Pan law\"");
    gallery.Press(VK_F3, ID_PAGE_MESSAGE, L"Match 1 of 2: \"Pan law\" in [Mixer]");

    gallery.Fill(VK_F2, ID_DOCUMENT_VALUE_TEXT, L"one; two");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"cannot hold \";\"");
    gallery.PressForFocus(VK_ESCAPE, ID_INI_PAIRS);
    gallery.WaitForText(ID_DOCUMENT_VALUE_TEXT, L"-4.5 dB");

    gallery.Fill(VK_RETURN, ID_DOCUMENT_VALUE_TEXT, L"-3 dB, linear");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Set \"Pan law\" in [Mixer]");
    gallery.WaitForDocument(L"*desk.ini");

    gallery.Press(Alt('R'), ID_PAGE_STATE, L"sorted");
    gallery.Press(Ctrl('Z'), ID_PAGE_STATE, L"file order");
    gallery.Press(Ctrl('Z'), ID_DOCUMENT_VALUE_TEXT, L"-4.5 dB");
    gallery.WaitForDocument(L"desk.ini");
    gallery.Press(Ctrl('Y'), ID_DOCUMENT_VALUE_TEXT, L"-3 dB, linear");
    gallery.Press(Ctrl('Y'), ID_PAGE_STATE, L"sorted");
    gallery.Press(Ctrl('S'));
    EXPECT_EQ(IDNO, gallery.Question(L"pairs before the first section: 5"));
    gallery.Answer(IDYES);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Saved.");
    gallery.WaitForDocument(L"desk.ini");

    gallery.Fill(Ctrl('F'), ID_DOCUMENT_FIND_TEXT, L"pan law");
    gallery.Press(VK_RETURN, ID_DOCUMENT_VALUE_TEXT, L"-3 dB, linear");
    gallery.Fill(VK_F2, ID_DOCUMENT_VALUE_TEXT, L"dropped");
    gallery.WaitForText(ID_DOCUMENT_VALUE_TEXT, L"dropped");
    // Typed and not yet set: closing counts it as a change all the same.
    gallery.Close();
    gallery.Answer(IDCANCEL);
    gallery.WaitForDocument(L"*desk.ini");
    gallery.Close();
    gallery.Answer(IDNO);
    EXPECT_EQ(0, gallery.ExitCode());

    CIniFileReader after;
    ASSERT_TRUE(after.Init(file.c_str(), /*sort=*/false));
    expected.SetValue("Mixer", "Pan law", "-3 dB, linear");
    expected.Sort();
    const std::string text = Content(expected);
    EXPECT_EQ(text.substr(text.find("}{") + 1), Content(after)) << "but for the unnamed section";
}

TEST(IniDocumentPage, KeepsWhatASaveWouldLoseUntilTheUserAgrees) {
    const TestFolder folder;
    const std::string file = folder.Write("small.ini", small);
    const std::string other = folder.Write("other.ini", "replaced");
    GalleryProcess gallery("\"" + file + "\"");
    gallery.WaitForDocument(L"small.ini");
    gallery.Fill(VK_F2, ID_DOCUMENT_VALUE_TEXT, L"2");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"they cannot be changed here");
    gallery.PressForFocus(VK_ESCAPE, ID_INI_PAIRS);
    gallery.Press(Ctrl('S'));
    OpenPairs(gallery, file);
    SetValue(gallery, L"new");
    gallery.Press(Ctrl('S'));
    EXPECT_EQ(IDNO, gallery.Question(L"comments: 1, pairs before the first section: 1"));
    gallery.Answer(IDNO);
    gallery.WaitForDocument(L"*small.ini");
    EXPECT_EQ(small, ReadBytes(file));

    gallery.Press(Ctrl('S'));
    gallery.Answer(saveElsewhere);
    gallery.AnswerFile(other, /*replaces=*/true);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"The new file is without: comments: 1");
    EXPECT_EQ(small, ReadBytes(file));
    // No click is needed to go on typing.
    SetValue(gallery, L"newer");
    gallery.Press(Ctrl('S'), ID_PAGE_MESSAGE, L"Saved.");
    EXPECT_NE(std::string::npos, ReadBytes(other).find("newer"));

    folder.Write("other.ini", "[One]\r\nkey = from elsewhere\r\n");
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Another program has changed this file");
    gallery.Press(Ctrl('R'), ID_DOCUMENT_VALUE_TEXT, L"from elsewhere");
}

TEST(IniDocumentPage, AsksBeforeATypedValueThatCannotBeSetIsLost) {
    const TestFolder folder;
    const std::string file = folder.Write("small.ini", small);
    GalleryProcess gallery("\"" + file + "\"");
    OpenPairs(gallery, file);
    gallery.Fill(VK_F2, ID_DOCUMENT_VALUE_TEXT, L"a;b");
    gallery.WaitForText(ID_DOCUMENT_VALUE_TEXT, L"a;b");
    gallery.Close();
    EXPECT_EQ(IDCANCEL, gallery.Question(L"a comment begins there"));
    gallery.Answer(IDCANCEL);
    gallery.WaitForText(ID_DOCUMENT_VALUE_TEXT, L"a;b");
    gallery.Close();
    gallery.Answer(IDYES);
    EXPECT_EQ(0, gallery.ExitCode());
}

TEST(IniDocumentPage, AddsAndDeletesSectionsAndKeys) {
    const TestFolder folder;
    const std::string file = folder.Write("small.ini", "[One]\r\nkey = value\r\n");
    GalleryProcess gallery("\"" + file + "\"");
    OpenPairs(gallery, file);
    gallery.Press(Alt('C'));
    gallery.AnswerText(L"Two");
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Added [Two].");
    gallery.Press(Alt('K'));
    gallery.AnswerText(L"fresh");
    gallery.WaitForFocus(ID_DOCUMENT_VALUE_TEXT);
    gallery.Type(L"1");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Set \"fresh\" in [Two].");
    gallery.WaitForFocus(ID_INI_PAIRS);
    gallery.Press(VK_DELETE, ID_PAGE_MESSAGE, L"Deleted \"fresh\".");
    gallery.Press(Ctrl('Z'), ID_DOCUMENT_VALUE_TEXT, L"1");
    gallery.Press(Alt('D'), ID_PAGE_STATE, L"Sections: 1, pairs: 1,");
    gallery.Press(Ctrl('Z'), ID_PAGE_STATE, L"Sections: 2, pairs: 2,");
    gallery.Press(Ctrl('S'), ID_PAGE_MESSAGE, L"Saved.");

    CIniFileReader expected;
    expected.SetValue("One", "key", "value");
    expected.SetValue("Two", "fresh", "1");
    CIniFileReader after;
    ASSERT_TRUE(after.Init(file.c_str(), /*sort=*/false));
    EXPECT_EQ(Content(expected), Content(after));
}

} // namespace
