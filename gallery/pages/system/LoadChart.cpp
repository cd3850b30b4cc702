#include "gallery/pages/system/LoadChart.h"

#include "gallery/text/Language.h"
#include "gallery/widgets/BufferedPaint.h"
#include "gallery/widgets/Drawing.h"

#include <algorithm>
#include <cmath>

namespace gallery {

namespace {

constexpr int margin = 8; ///< in 1/96 inch
constexpr int timeStep = 10'000;

/// The system's colours, so that the chart follows the user's contrast.
COLORREF ColourOf(LoadChart::CurveIndex index) {
    return GetSysColor(index == LoadChart::machine ? COLOR_HIGHLIGHT : COLOR_WINDOWTEXT);
}

COLORREF GridColour() {
    return Mix(GetSysColor(COLOR_WINDOWTEXT), GetSysColor(COLOR_WINDOW), 3);
}

/// Curves differ in their width too, for those who cannot tell their colours.
int WidthOf(LoadChart::CurveIndex index) {
    return index == LoadChart::machine ? 3 : 1;
}

} // namespace

bool LoadChart::Create(HWND parent, int id) {
    if (!CreateAs(L"VtrGalleryChart", L"", WS_EX_CLIENTEDGE, WS_CHILD | WS_VISIBLE, SIZE{0, 0},
                  parent))
        return false;
    SetWindowLongPtrW(Handle(), GWLP_ID, id);
    return true;
}

void LoadChart::SetLook(const Look& newLook) {
    look = &newLook;
    Redraw();
}

void LoadChart::Clear() {
    for (Curve& curve : curves)
        curve.history.Clear();
    Redraw();
}

void LoadChart::SetNote(const std::wstring& newNote) {
    note = newNote;
    Redraw();
}

void LoadChart::Show(long long newNow) {
    now = newNow;
    Redraw();
}

LRESULT LoadChart::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}

void LoadChart::Paint() const {
    const BufferedPaint paint(Handle());
    const HDC dc = paint.Dc();
    Fill(dc, paint.Area(), GetSysColor(COLOR_WINDOW));
    if (look == nullptr)
        return;
    const vtr::SelectedObject font(dc, look->Font());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    RECT plot = Plot(paint.Area());
    PaintPercents(dc, plot);
    PaintTimes(dc, plot);
    if (!note.empty()) {
        SetBkMode(dc, OPAQUE);
        SetBkColor(dc, GetSysColor(COLOR_WINDOW));
        DrawTextW(dc, note.c_str(), -1, &plot,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
        return;
    }
    PaintCurve(dc, plot, process);
    PaintCurve(dc, plot, machine);
    PaintLegends(dc, plot);
}

/// What is left beside the texts of the axes, and below the legends.
RECT LoadChart::Plot(const RECT& area) const {
    const int gap = look->Pixels(margin);
    const int left = 2 * gap + look->TextWidth(Text("Percent", {L"100"}));
    const int top = (note.empty() ? look->Line() + gap : 0) + look->Line() / 2 + gap;
    const int right = area.right - gap - look->TextWidth(Text("ChartNow")) / 2;
    const int bottom = area.bottom - gap - look->Line() - gap / 2;
    return {left, top, std::max<LONG>(right, left + 1), std::max<LONG>(bottom, top + 1)};
}

/// In quarters where there is room for them, else in halves.
void LoadChart::PaintPercents(HDC dc, const RECT& plot) const {
    const int gap = look->Pixels(margin);
    const int height = plot.bottom - plot.top;
    const int step = height > 5 * look->Line() ? 25 : 50;
    for (int percent = 0; percent <= 100; percent += step) {
        const int y = plot.bottom - MulDiv(height, percent, 100);
        Fill(dc, {plot.left, y, plot.right + 1, y + 1}, GridColour());
        const std::wstring text = Text("Percent", {std::to_wstring(percent)});
        TextOutW(dc, plot.left - gap - look->TextWidth(text), y - look->Line() / 2, text.c_str(),
                 static_cast<int>(text.size()));
    }
}

void LoadChart::PaintTimes(HDC dc, const RECT& plot) const {
    const int width = plot.right - plot.left;
    const int height = look->Pixels(margin) / 2;
    for (int ago = 0; ago <= LoadHistory::span; ago += timeStep) {
        const int x = plot.right - MulDiv(width, ago, LoadHistory::span);
        Fill(dc, {x, plot.top, x + 1, plot.bottom + height}, GridColour());
        const std::wstring text =
            ago == 0 ? Text("ChartNow") : Text("SecondsAgo", {std::to_wstring(ago / 1000)});
        TextOutW(dc, x - look->TextWidth(text) / 2, plot.bottom + height, text.c_str(),
                 static_cast<int>(text.size()));
    }
}

void LoadChart::PaintCurve(HDC dc, const RECT& plot, CurveIndex index) const {
    const int saved = SaveDC(dc);
    IntersectClipRect(dc, plot.left, 0, plot.right + look->Pixels(2),
                      plot.bottom + look->Pixels(2));
    {
        const vtr::Owner<vtr::GdiObjectKind<HPEN>> pen(
            CreatePen(PS_SOLID, look->Pixels(WidthOf(index)), ColourOf(index)));
        const vtr::SelectedObject line(dc, pen.Get());
        for (const LoadHistory::Sample& sample : curves[index].history.Samples()) {
            const double back = static_cast<double>(now - sample.time) / LoadHistory::span;
            const double up = std::clamp(sample.percent, 0.0, 100.0) / 100;
            const int x =
                static_cast<int>(std::lround(plot.right - back * (plot.right - plot.left)));
            const int y =
                static_cast<int>(std::lround(plot.bottom - up * (plot.bottom - plot.top)));
            if (!sample.joined)
                MoveToEx(dc, x, y, /*lppt=*/nullptr);
            // Draws a dot where the curve begins.
            LineTo(dc, x + (sample.joined ? 0 : 1), y);
        }
    }
    RestoreDC(dc, saved);
}

void LoadChart::PaintLegends(HDC dc, const RECT& plot) const {
    const int gap = look->Pixels(margin);
    int x = plot.left;
    for (const CurveIndex index : {machine, process}) {
        const std::wstring& legend = curves[index].legend;
        const int thick = std::max(look->Pixels(WidthOf(index)), 1);
        const int y = gap + (look->Line() - thick) / 2;
        Fill(dc, {x, y, x + 3 * gap, y + thick}, ColourOf(index));
        x += 4 * gap;
        TextOutW(dc, x, gap, legend.c_str(), static_cast<int>(legend.size()));
        x += look->TextWidth(legend) + 3 * gap;
    }
}

} // namespace gallery
