#include "gallery/app/ControlIds.h"
#include "gallery/text/Text.h"
#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"
#include "tests/text/ini/IniDocuments.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <objidl.h>
#include <set>
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#include <gdiplus.h>

namespace {

std::string CopyOfShippedDocument(const TestFolder& folder) {
    return folder.Write("desk.ini", ReadBytes(gallery::ProgramFolder() + "media-settings.ini"));
}

TEST(Gallery, FindsEditsSortsSavesAndAsksByKeyboard) {
    const TestFolder folder;
    const std::string file = CopyOfShippedDocument(folder);
    CIniFileReader expected;
    ASSERT_TRUE(expected.Init(file.c_str(), /*sort=*/false));

    GalleryProcess gallery("\"" + file + "\"");
    gallery.WaitForDocument(L"desk.ini");
    gallery.Fill(Ctrl('F'), ID_DOCUMENT_FIND_TEXT, L"PAN L");
    gallery.Press(VK_RETURN, ID_DOCUMENT_MESSAGE, L"Match 1 of 2: \"Pan law\" in [Mixer]");

    gallery.Fill(VK_F2, ID_DOCUMENT_VALUE_TEXT, L"one; two");
    gallery.Press(VK_RETURN, ID_DOCUMENT_MESSAGE, L"cannot hold \";\"");
    gallery.PressForFocus(VK_ESCAPE, ID_INI_PAIRS);
    gallery.WaitForText(ID_DOCUMENT_VALUE_TEXT, L"-4.5 dB");

    gallery.Fill(VK_RETURN, ID_DOCUMENT_VALUE_TEXT, L"-3 dB, linear");
    gallery.Press(VK_RETURN, ID_DOCUMENT_MESSAGE, L"Set \"Pan law\" in [Mixer]");
    gallery.WaitForDocument(L"*desk.ini");

    gallery.Press(Alt('R'), ID_DOCUMENT_COUNTS, L"sorted");
    gallery.Press(Ctrl('S'));
    gallery.Answer(IDYES);
    gallery.WaitForText(ID_DOCUMENT_MESSAGE, L"Saved.");
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

TEST(Gallery, TellsThatADocumentIsMissing) {
    const TestFolder folder;
    GalleryProcess gallery("\"" + folder.File("missing.ini") + "\"");
    gallery.WaitForDocument(L"");
    gallery.WaitForText(ID_DOCUMENT_MESSAGE, L"there is no such file");
    gallery.End();
}

TEST(Gallery, RefusesCommandLinesThatItCannotFollow) {
    const TestFolder folder;
    const std::string good = folder.Write("good.ini", "[One]\r\nkey = value\r\n");
    const std::string pictures = " --pictures \"" + folder.File("pictures") + "\"";
    const struct {
        const char* name;
        std::string arguments;
    } rows[] = {
        {"missing document", "\"" + folder.File("missing.ini") + "\"" + pictures},
        {"folder as document", "\"" + folder.Path() + ".\"" + pictures},
        {"two documents", "\"" + good + "\" \"" + good + "\"" + pictures},
        {"no folder", "\"" + good + "\" --pictures"},
        {"folder below a missing one",
         "\"" + good + "\" --pictures \"" + folder.File("missing\\pictures") + "\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(1, GalleryProcess(row.arguments).ExitCode());
        EXPECT_EQ("good.ini", folder.Listing());
    }
}

/// How many colours one part of a picture has; more than `enough` are not told apart.
std::size_t Colours(Gdiplus::Bitmap& picture, Gdiplus::Rect part, std::size_t enough) {
    std::set<DWORD> colours;
    for (int y = part.Y; y < part.Y + part.Height && colours.size() < enough; ++y) {
        for (int x = part.X; x < part.X + part.Width; ++x) {
            Gdiplus::Color colour;
            picture.GetPixel(x, y, &colour);
            colours.insert(colour.GetValue());
        }
    }
    return colours.size();
}

void ExpectPicture(const std::string& file) {
    const std::wstring wide(file.begin(), file.end());
    Gdiplus::Bitmap picture(wide.c_str());
    ASSERT_EQ(Gdiplus::Ok, picture.GetLastStatus()) << file;
    const int width = static_cast<int>(picture.GetWidth());
    const int height = static_cast<int>(picture.GetHeight());
    // List of pages, sections and pairs, each below what frames them.
    for (const int column : {1, 3, 7}) {
        const Gdiplus::Rect part(width * column / 16, height / 8, width / 8, height / 2);
        EXPECT_GE(Colours(picture, part, /*enough=*/4), column == 1 ? 2u : 4u) << column;
    }
}

TEST(Gallery, MakesAPictureOfEachPage) {
    const TestFolder folder;
    const std::string file = CopyOfShippedDocument(folder);
    const std::string bytes = ReadBytes(file);
    EXPECT_EQ(0,
              GalleryProcess("\"" + file + "\" --pictures " + folder.File("pictures")).ExitCode());
    EXPECT_EQ(bytes, ReadBytes(file));

    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    ASSERT_EQ(Gdiplus::Ok, Gdiplus::GdiplusStartup(&token, &input, /*output=*/nullptr));
    ExpectPicture(folder.File("pictures\\ini-document.png"));
    Gdiplus::GdiplusShutdown(token);
}

} // namespace
