#include "gallery/widgets/Drawing.h"

namespace gallery {

COLORREF Mix(COLORREF first, COLORREF second, int part) {
    const auto channel = [part](int a, int b) { return (a * part + b * (16 - part)) / 16; };
    return RGB(channel(GetRValue(first), GetRValue(second)),
               channel(GetGValue(first), GetGValue(second)),
               channel(GetBValue(first), GetBValue(second)));
}

void Fill(HDC dc, const RECT& area, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

} // namespace gallery
