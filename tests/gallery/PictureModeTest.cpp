#include "gallery/text/Text.h"
#include "tests/gallery/GalleryProcess.h"
#include "tests/support/TestFolder.h"

#include <algorithm>
#include <objidl.h>
#include <set>
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#include <gdiplus.h>

namespace {

TEST(PictureMode, RefusesCommandLinesThatItCannotFollow) {
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

/// The list of pages, and what a page shows in its left and right half.
void ExpectPicture(const std::wstring& file) {
    Gdiplus::Bitmap picture(file.c_str());
    ASSERT_EQ(Gdiplus::Ok, picture.GetLastStatus());
    const int width = static_cast<int>(picture.GetWidth());
    const int height = static_cast<int>(picture.GetHeight());
    for (const int column : {1, 3, 7}) {
        const Gdiplus::Rect part(width * column / 16, height / 8, width / 8, height / 2);
        EXPECT_GE(Colours(picture, part, /*enough=*/3), column == 1 ? 2u : 3u) << column;
    }
}

/// The new message has taken 45 percent of the stage's width from the left, whatever the clock.
void ExpectWipe(const std::wstring& file) {
    Gdiplus::Bitmap picture(file.c_str());
    const Gdiplus::Color paper(250, 240, 214);
    const Gdiplus::Color night(20, 34, 64);
    std::set<int> newColumns, oldColumns;
    for (int y = 0; y < static_cast<int>(picture.GetHeight()); ++y) {
        for (int x = 0; x < static_cast<int>(picture.GetWidth()); ++x) {
            Gdiplus::Color colour;
            picture.GetPixel(x, y, &colour);
            if (colour.GetValue() == paper.GetValue())
                newColumns.insert(x);
            else if (colour.GetValue() == night.GetValue())
                oldColumns.insert(x);
        }
    }
    ASSERT_FALSE(newColumns.empty());
    ASSERT_FALSE(oldColumns.empty());
    const int left = *newColumns.begin();
    EXPECT_EQ(*newColumns.rbegin() + 1, *oldColumns.begin());
    EXPECT_EQ(*oldColumns.begin() - left, (*oldColumns.rbegin() + 1 - left) * 45 / 100);
}

TEST(PictureMode, MakesAPictureOfEachPage) {
    const TestFolder folder;
    const std::string document = ReadBytes(gallery::ProgramFolder() + "media-settings.ini");
    const std::string file = folder.Write("desk.ini", document), pictures = folder.File("pictures");
    EXPECT_EQ(0, GalleryProcess("\"" + file + "\" --pictures " + pictures).ExitCode());
    EXPECT_EQ(document, ReadBytes(file));

    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    ASSERT_EQ(Gdiplus::Ok, Gdiplus::GdiplusStartup(&token, &input, /*output=*/nullptr));
    for (const char* page :
         {"ini-document", "xml-document", "table", "language", "recent-files", "files", "folders",
          "text", "observers", "regions", "promo", "system", "undo"}) {
        SCOPED_TRACE(page);
        ExpectPicture(gallery::Widen((pictures + "\\" + page + ".png").c_str()));
    }
    ExpectWipe(gallery::Widen((pictures + "\\promo.png").c_str()));
    Gdiplus::GdiplusShutdown(token);
}

} // namespace
