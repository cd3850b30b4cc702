#include "gallery/ControlIds.h"
#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"
#include "utilities/text/IniFileReader.h"

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

std::string ValueIn(CIniFileReader& document, const char* section, const char* key) {
    char value[256];
    document.GetString(section, key, "", value, sizeof value);
    return value;
}

std::string CopyOfShippedDocument(const TestFolder& folder) {
    return folder.Write("desk.ini", ReadBytes(ProgramFolder() + "media-settings.ini"));
}

/// Every pair of the named sections of `before` stands in `after`, except for the one that was set.
void ExpectSamePairs(CIniFileReader& before, CIniFileReader& after) {
    for (unsigned i = 0; i < before.NumSections(); ++i) {
        const CIniSection* section = before.GetSection(static_cast<int>(i));
        for (unsigned j = 0; section->Name()[0] != '\0' && j < section->NumValues(); ++j) {
            const char* key = section->GetValue(j)->Key();
            const bool changed =
                std::string(section->Name()) == "Mixer" && std::string(key) == "Pan law";
            const std::string expected =
                changed ? "-3 dB, linear" : ValueIn(before, section->Name(), key);
            EXPECT_EQ(expected, ValueIn(after, section->Name(), key))
                << "[" << section->Name() << "] " << key;
        }
    }
}

TEST(Gallery, FindsEditsSortsAndSavesByKeyboard) {
    const TestFolder folder;
    const std::string file = CopyOfShippedDocument(folder);
    CIniFileReader before;
    ASSERT_TRUE(before.Init(file.c_str(), /*sort=*/false));

    GalleryProcess gallery("\"" + file + "\"");
    gallery.WaitForTitle(L"desk.ini - vtrutils gallery");
    gallery.GiveKeyboard();
    gallery.Press('F', VK_CONTROL);
    gallery.WaitForFocus(ID_INI_FIND_TEXT);
    gallery.Type(L"PAN L");
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_INI_MESSAGE, L"Match 1 of 2: \"Pan law\" in [Mixer]");

    gallery.Press(VK_F2);
    gallery.WaitForFocus(ID_INI_VALUE_TEXT);
    gallery.Type(L"one; two");
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_INI_MESSAGE, L"cannot hold \";\"");
    gallery.Press(VK_ESCAPE);
    gallery.WaitForFocus(ID_INI_PAIRS);
    gallery.WaitForText(ID_INI_VALUE_TEXT, L"-4.5 dB");

    gallery.Press(VK_RETURN);
    gallery.WaitForFocus(ID_INI_VALUE_TEXT);
    gallery.Type(L"-3 dB, linear");
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_INI_MESSAGE, L"Set \"Pan law\" in [Mixer]");
    gallery.WaitForTitle(L"*desk.ini - vtrutils gallery");

    gallery.Press('R', VK_MENU);
    gallery.WaitForText(ID_INI_COUNTS, L"sorted");
    gallery.Press('S', VK_CONTROL);
    gallery.Answer(IDYES);
    gallery.WaitForText(ID_INI_MESSAGE, L"Saved.");
    gallery.WaitForTitle(L"desk.ini - vtrutils gallery");
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());

    CIniFileReader after;
    ASSERT_TRUE(after.Init(file.c_str(), /*sort=*/false));
    ExpectSamePairs(before, after);
    EXPECT_STREQ("Application", after.SectionName(0));
    EXPECT_STREQ("Autosave minutes", after.GetValue(0, 0)->Key());
}

TEST(Gallery, AsksBeforeItDropsChanges) {
    const TestFolder folder;
    const std::string file = folder.Write("small.ini", "[One]\r\nkey = value\r\n");
    GalleryProcess gallery("\"" + file + "\"");
    gallery.WaitForTitle(L"small.ini - vtrutils gallery");
    gallery.GiveKeyboard();
    gallery.Press(VK_F2);
    gallery.WaitForFocus(ID_INI_VALUE_TEXT);
    gallery.Type(L"other");
    gallery.WaitForText(ID_INI_VALUE_TEXT, L"other");
    // Typed and not yet set: closing counts it as a change all the same.
    gallery.Close();
    gallery.Answer(IDCANCEL);
    gallery.WaitForTitle(L"*small.ini - vtrutils gallery");
    gallery.Close();
    gallery.Answer(IDNO);
    EXPECT_EQ(0, gallery.ExitCode());
    EXPECT_EQ("[One]\r\nkey = value\r\n", ReadBytes(file));
}

TEST(Gallery, TellsThatADocumentIsMissing) {
    const TestFolder folder;
    GalleryProcess gallery("\"" + folder.File("missing.ini") + "\"");
    gallery.WaitForTitle(L"vtrutils gallery");
    gallery.WaitForText(ID_INI_MESSAGE, L"there is no such file");
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());
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
    const vtr::MemoryDc screen(CreateICW(L"DISPLAY", nullptr, nullptr, nullptr));
    const int dpi = GetDeviceCaps(screen.Get(), LOGPIXELSY);
    const int width = static_cast<int>(picture.GetWidth());
    const int height = static_cast<int>(picture.GetHeight());
    EXPECT_EQ(std::min(MulDiv(1100, dpi, 96), GetSystemMetrics(SM_CXFULLSCREEN)), width);
    EXPECT_EQ(std::min(MulDiv(700, dpi, 96), GetSystemMetrics(SM_CYSCREEN)), height);
    // List of pages, sections and pairs, each below what frames them.
    for (const int column : {1, 3, 7}) {
        const Gdiplus::Rect part(width * column / 16, height / 8, width / 8, height / 2);
        EXPECT_GE(Colours(picture, part, /*enough=*/4), column == 1 ? 2u : 4u) << column;
    }
}

TEST(Gallery, MakesAPictureOfEachPage) {
    SetProcessDPIAware();
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
