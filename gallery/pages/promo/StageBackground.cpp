#include "gallery/pages/promo/StageBackground.h"

#include "common/Handles.h"
#include "gallery/widgets/Drawing.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace gallery {

namespace {

/// Near to the background, and lighter or darker than it.
COLORREF Faint(HDC dc, const RECT& area, int part) {
    const COLORREF paper = GetPixel(dc, area.left, area.top);
    const int light = GetRValue(paper) + GetGValue(paper) + GetBValue(paper);
    return Mix(light < 384 ? RGB(255, 255, 255) : RGB(0, 0, 0), paper, part);
}

/// Each channel swings by itself, and its lamps are lit from below.
void DrawMeters(HDC dc, const RECT& area, double seconds) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    constexpr int channels = 24;
    constexpr int lamps = 16;
    const COLORREF colours[] = {Faint(dc, area, 2), Faint(dc, area, 4)};
    for (int channel = 0; channel < channels; ++channel) {
        const double swing = std::sin(seconds * (1.7 + 0.31 * (channel % 7)) + channel * 2.4) *
                             std::sin(seconds * 0.9 + channel * 0.8);
        const int lit = static_cast<int>(lamps * (0.2 + 0.7 * std::abs(swing)));
        const int left = area.left + width * channel / channels + 1;
        const int right = area.left + width * (channel + 1) / channels - 1;
        for (int lamp = 0; lamp < lit; ++lamp) {
            const int bottom = area.bottom - height * lamp / lamps;
            Fill(dc, {left, area.bottom - height * (lamp + 1) / lamps + 1, right, bottom},
                 colours[lamp == lit - 1 ? 1 : 0]);
        }
    }
}

void DrawWaves(HDC dc, const RECT& area, double seconds) {
    constexpr int waves = 3;
    constexpr int points = 128;
    for (int wave = 0; wave < waves; ++wave) {
        const vtr::Owner<vtr::GdiObjectKind<HPEN>> pen(
            CreatePen(PS_SOLID, /*cWidth=*/3, Faint(dc, area, 2 + wave)));
        const vtr::SelectedObject selected(dc, pen.Get());
        for (int i = 0; i <= points; ++i) {
            const double part = static_cast<double>(i) / points;
            const double swing = std::sin(part * (9 + 4 * wave) + seconds * (2.1 - 0.6 * wave)) *
                                 std::sin(part * 3.14159);
            const int x = area.left + (area.right - area.left) * i / points;
            const int y =
                static_cast<int>((area.top + area.bottom) / 2.0 + area.bottom * 0.4 * swing);
            if (i == 0)
                MoveToEx(dc, x, y, /*lppt=*/nullptr);
            else
                LineTo(dc, x, y);
        }
    }
}

} // namespace

void DrawStageBackground(HDC dc, const RECT& area, const char* name, unsigned milliseconds) {
    const double seconds = milliseconds / 1000.0;
    if (std::strcmp(name, "meters") == 0)
        DrawMeters(dc, area, seconds);
    else if (std::strcmp(name, "waves") == 0)
        DrawWaves(dc, area, seconds);
}

} // namespace gallery
