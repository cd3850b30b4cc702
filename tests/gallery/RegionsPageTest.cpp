#include "gallery/ControlIds.h"
#include "tests/gallery/GalleryProcess.h"

#include <gtest/gtest.h>

namespace {

void ShowRegions(GalleryProcess& gallery) {
    gallery.WaitForTitle(L"media-settings.ini - vtrutils gallery");
    gallery.GiveKeyboard();
    gallery.ShowPage(L"Regions");
    gallery.WaitForTitle(L"vtrutils gallery");
    gallery.Press(VK_TAB);
    gallery.WaitForFocus(ID_REGIONS_CANVAS);
}

TEST(RegionsPage, AddsAndSubtractsByKeyboard) {
    GalleryProcess gallery("");
    ShowRegions(gallery);
    gallery.Press(VK_INSERT);
    gallery.WaitForText(ID_REGIONS_COUNTS, L"Rectangles: 1, cells: 60, bounds: 10 x 6 at 4, 4");
    gallery.Press(VK_RIGHT);
    gallery.Press(VK_DOWN);
    gallery.Press(VK_LEFT, VK_SHIFT);
    gallery.Press(VK_LEFT, VK_SHIFT);
    gallery.Press(VK_UP, VK_SHIFT);
    gallery.Press(VK_UP, VK_SHIFT);
    gallery.Press(VK_DELETE);
    gallery.WaitForText(ID_REGIONS_MESSAGE, L"Subtracted 8 x 4 at 5, 5.");
    gallery.WaitForText(ID_REGIONS_COUNTS, L"Rectangles: 4, cells: 28");
    // Not beyond the edge.
    for (int i = 0; i < 7; ++i)
        gallery.Press(VK_LEFT);
    gallery.Press(VK_RETURN);
    gallery.WaitForText(ID_REGIONS_MESSAGE, L"Added 8 x 4 at 0, 5.");
    gallery.Press('C', VK_MENU);
    gallery.WaitForText(ID_REGIONS_MESSAGE, L"1 now.");
    gallery.WaitForText(ID_REGIONS_COUNTS, L"Rectangles: 1, cells: 84, bounds: 14 x 6 at 0, 4");
    gallery.Press('L', VK_MENU);
    gallery.WaitForText(ID_REGIONS_COUNTS, L"Rectangles: 0");
    gallery.WaitForFocus(ID_REGIONS_CANVAS);
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());
}

TEST(RegionsPage, AddsAndSubtractsByMouse) {
    GalleryProcess gallery("");
    ShowRegions(gallery);
    gallery.Drag(ID_REGIONS_CANVAS, {150, 150}, {30, 30}, GalleryProcess::Button::left);
    gallery.WaitForText(ID_REGIONS_COUNTS, L"Rectangles: 1");
    gallery.Drag(ID_REGIONS_CANVAS, {80, 80}, {85, 85}, GalleryProcess::Button::right);
    gallery.WaitForText(ID_REGIONS_MESSAGE, L"Subtracted");
    gallery.WaitForText(ID_REGIONS_COUNTS, L"Rectangles: 4");
    gallery.Close();
    EXPECT_EQ(0, gallery.ExitCode());
}

} // namespace
