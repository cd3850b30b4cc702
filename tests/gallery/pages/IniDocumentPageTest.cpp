#include "gallery/text/Text.h"
#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"
#include "tests/text/ini/IniDocuments.h"

namespace {

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

    gallery.Fill(VK_F2, ID_DOCUMENT_VALUE_TEXT, L"one; two");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"cannot hold \";\"");
    gallery.PressForFocus(VK_ESCAPE, ID_INI_PAIRS);
    gallery.WaitForText(ID_DOCUMENT_VALUE_TEXT, L"-4.5 dB");

    gallery.Fill(VK_RETURN, ID_DOCUMENT_VALUE_TEXT, L"-3 dB, linear");
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Set \"Pan law\" in [Mixer]");
    gallery.WaitForDocument(L"*desk.ini");

    gallery.Press(Alt('R'), ID_PAGE_STATE, L"sorted");
    gallery.Press(Ctrl('S'));
    gallery.Answer(IDYES);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Saved.");
    gallery.WaitForDocument(L"desk.ini");

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

TEST(IniDocumentPage, TellsThatADocumentIsMissing) {
    const TestFolder folder;
    GalleryProcess gallery("\"" + folder.File("missing.ini") + "\"");
    gallery.WaitForDocument(L"");
    gallery.WaitForText(ID_PAGE_MESSAGE, L"there is no such file");
}

} // namespace
