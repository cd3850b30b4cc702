#include "gallery/widgets/Drawing.h"

#include <algorithm>

namespace gallery {

COLORREF Mix(COLORREF first, COLORREF second, int part) {
    const auto channel = [part](int a, int b) { return (a * part + b * (16 - part)) / 16; };
    return RGB(channel(GetRValue(first), GetRValue(second)),
               channel(GetGValue(first), GetGValue(second)),
               channel(GetBValue(first), GetBValue(second)));
}

COLORREF QuietSelection() {
    return Mix(GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_WINDOW), 4);
}

void Fill(HDC dc, const RECT& area, COLORREF colour) {
    SetDCBrushColor(dc, colour);
    FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void DrawWrapped(const DRAWITEMSTRUCT& item, const Look& look, const std::wstring& text,
                 COLORREF ground) {
    Fill(item.hDC, item.rcItem, ground);
    const vtr::SelectedObject font(item.hDC, look.Font());
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetSysColor(COLOR_BTNTEXT));
    RECT area = item.rcItem;
    InflateRect(&area, -look.Pixels(2), 0);
    const int height = look.WrappedHeight(text, area.right - area.left);
    const int spare = std::max<int>(0, area.bottom - area.top - height);
    area.top += spare / 2;
    DrawTextW(item.hDC, text.data(), static_cast<int>(text.size()), &area,
              wrappedTextFormat | DT_END_ELLIPSIS);
}

} // namespace gallery
