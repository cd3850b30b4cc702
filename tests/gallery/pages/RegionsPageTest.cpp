#include "tests/gallery/GalleryProcess.h"

namespace {

TEST(RegionsPage, AddsAndSubtractsByKeyboardAndMouse) {
    GalleryProcess gallery(ID_REGIONS_CANVAS);
    gallery.PressForFocus(VK_TAB, ID_REGIONS_CANVAS);
    gallery.Press(VK_INSERT, ID_PAGE_STATE, L"Rectangles: 1, cells: 60, bounds: 10 x 6 at 4, 4");
    const Key moves[] = {
        VK_RIGHT,          VK_DOWN,          {VK_LEFT, VK_SHIFT}, {VK_LEFT, VK_SHIFT},
        {VK_UP, VK_SHIFT}, {VK_UP, VK_SHIFT}};
    for (const Key move : moves)
        gallery.Press(move);
    gallery.Press(VK_DELETE, ID_PAGE_MESSAGE, L"Subtracted 8 x 4 at 5, 5.");
    gallery.WaitForText(ID_PAGE_STATE, L"Rectangles: 4, cells: 28");
    // Not beyond the edge.
    for (int i = 0; i < 7; ++i)
        gallery.Press(VK_LEFT);
    gallery.Press(VK_RETURN, ID_PAGE_MESSAGE, L"Added 8 x 4 at 0, 5.");
    gallery.Press(Alt('C'), ID_PAGE_MESSAGE, L"1 now.");
    gallery.WaitForText(ID_PAGE_STATE, L"Rectangles: 1, cells: 84, bounds: 14 x 6 at 0, 4");
    gallery.Press(Alt('L'), ID_PAGE_STATE, L"Rectangles: 0");
    gallery.WaitForFocus(ID_REGIONS_CANVAS);

    gallery.Drag(ID_REGIONS_CANVAS, {150, 150}, {30, 30}, /*left=*/true);
    gallery.WaitForText(ID_PAGE_STATE, L"Rectangles: 1");
    gallery.Drag(ID_REGIONS_CANVAS, {80, 80}, {85, 85}, /*left=*/false);
    gallery.WaitForText(ID_PAGE_MESSAGE, L"Subtracted");
    gallery.WaitForText(ID_PAGE_STATE, L"Rectangles: 4");
}

} // namespace
