#include "gallery/pages/regions/RegionCanvas.h"

#include "gallery/widgets/BufferedPaint.h"
#include "gallery/widgets/Drawing.h"

#include <algorithm>
#include <utility>
#include <windowsx.h>

namespace gallery {

namespace {

/// Both in 1/96 inch.
constexpr int cellSize = 12;
constexpr int lineWidth = 1;

/// The system's colours, so that the picture follows the user's contrast.
COLORREF Paper() {
    return GetSysColor(COLOR_WINDOW);
}
COLORREF GridColour() {
    return Mix(GetSysColor(COLOR_WINDOWTEXT), Paper(), 1);
}
COLORREF PieceColour() {
    return Mix(GetSysColor(COLOR_HIGHLIGHT), Paper(), 5);
}
COLORREF EdgeColour() {
    return Mix(GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_WINDOWTEXT), 11);
}

/// Within the area, `width` pixels wide.
void Outline(HDC dc, RECT area, COLORREF colour, int width) {
    SetDCBrushColor(dc, colour);
    for (; width > 0; --width, InflateRect(&area, -1, -1))
        FrameRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void Hatch(HDC dc, const RECT& area, COLORREF colour) {
    const vtr::Owner<vtr::GdiObjectKind<HBRUSH>> brush(CreateHatchBrush(HS_BDIAGONAL, colour));
    const int old = SetBkMode(dc, TRANSPARENT);
    FillRect(dc, &area, brush.Get());
    SetBkMode(dc, old);
}

POINT PointOf(LPARAM lParam) {
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

bool IsPressed(int key) {
    return GetKeyState(key) < 0;
}

} // namespace

bool RegionCanvas::Create(HWND parent, int id,
                          std::function<void(Change, const RECT&)> whenChanged) {
    changed = std::move(whenChanged);
    // Every change is the user's own here.
    region.set_consolidate_on_add(false, 0, 1);
    if (!CreateAs(L"VtrGalleryRegion", L"", WS_EX_CLIENTEDGE, WS_CHILD | WS_VISIBLE | WS_TABSTOP,
                  SIZE{0, 0}, parent))
        return false;
    SetWindowLongPtrW(Handle(), GWLP_ID, id);
    return true;
}

void RegionCanvas::SetLook(const Look& look) {
    cell = std::max(look.Pixels(cellSize), 4);
    line = std::max(look.Pixels(lineWidth), 1);
    Redraw();
}

void RegionCanvas::SetFrame(const RECT& cells) {
    frame = cells;
    Redraw();
}

LRESULT RegionCanvas::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        Redraw();
        return 0;
    case WM_SETCURSOR:
        if (LOWORD(lParam) != HTCLIENT)
            break;
        SetCursor(LoadCursorW(nullptr, IDC_CROSS));
        return TRUE;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
        StartDragging(message == WM_LBUTTONDOWN ? Change::added : Change::subtracted,
                      PointOf(lParam));
        return 0;
    case WM_MOUSEMOVE:
        DragTo(PointOf(lParam));
        return 0;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
        // Moves may have been told late, or merged.
        DragTo(PointOf(lParam));
        FinishDragging(message == WM_LBUTTONUP ? Change::added : Change::subtracted);
        return 0;
    case WM_CAPTURECHANGED:
        StopDragging();
        return 0;
    case WM_KEYDOWN:
        if (PressKey(wParam))
            return 0;
        break;
    default:
        break;
    }
    return Window::OnMessage(message, wParam, lParam);
}

void RegionCanvas::StartDragging(Change change, POINT place) {
    SetFocus(Handle());
    if (dragging)
        return;
    SetCapture(Handle());
    dragging = true;
    drag = change;
    dragStart = CellAt(place);
    DragTo(place);
}

void RegionCanvas::DragTo(POINT place) {
    if (!dragging)
        return;
    const POINT end = CellAt(place);
    SetFrame({std::min(dragStart.x, end.x), std::min(dragStart.y, end.y),
              std::max(dragStart.x, end.x) + 1, std::max(dragStart.y, end.y) + 1});
}

void RegionCanvas::FinishDragging(Change change) {
    if (!dragging || drag != change)
        return;
    StopDragging();
    Apply(change);
}

void RegionCanvas::StopDragging() {
    if (!dragging)
        return;
    dragging = false;
    ReleaseCapture();
    Redraw();
}

bool RegionCanvas::PressKey(WPARAM key) {
    const bool sizes = IsPressed(VK_SHIFT);
    const auto arrow = [&](int dx, int dy) {
        sizes ? SizeFrame(dx, dy) : MoveFrame(dx, dy);
        return true;
    };
    switch (key) {
    case VK_LEFT:
        return arrow(-1, 0);
    case VK_RIGHT:
        return arrow(1, 0);
    case VK_UP:
        return arrow(0, -1);
    case VK_DOWN:
        return arrow(0, 1);
    case VK_INSERT:
        AddFrame();
        return true;
    case VK_DELETE:
        Apply(Change::subtracted);
        return true;
    default:
        return false;
    }
}

void RegionCanvas::MoveFrame(int dx, int dy) {
    const SIZE cells = Cells();
    const LONG width = frame.right - frame.left;
    const LONG height = frame.bottom - frame.top;
    const LONG left = std::max(std::min(frame.left + dx, cells.cx - width), 0L);
    const LONG top = std::max(std::min(frame.top + dy, cells.cy - height), 0L);
    SetFrame({left, top, left + width, top + height});
}

void RegionCanvas::SizeFrame(int dx, int dy) {
    const SIZE cells = Cells();
    RECT sized = frame;
    sized.right = std::max(std::min(frame.right + dx, cells.cx), frame.left + 1);
    sized.bottom = std::max(std::min(frame.bottom + dy, cells.cy), frame.top + 1);
    SetFrame(sized);
}

void RegionCanvas::Apply(Change change) {
    change == Change::added ? region.add(&frame) : region.subtract(&frame);
    Redraw();
    changed(change, frame);
}

/// Those of which at least a part is seen.
SIZE RegionCanvas::Cells() const {
    RECT area{};
    GetClientRect(Handle(), &area);
    return {std::max<LONG>((area.right + cell - 1) / cell, 1),
            std::max<LONG>((area.bottom + cell - 1) / cell, 1)};
}

/// The nearest cell to a place that may lie outside.
POINT RegionCanvas::CellAt(POINT place) const {
    const SIZE cells = Cells();
    return {std::clamp(place.x / cell, 0L, cells.cx - 1),
            std::clamp(place.y / cell, 0L, cells.cy - 1)};
}

RECT RegionCanvas::PixelsOf(const RECT& cells) const {
    return {cells.left * cell, cells.top * cell, cells.right * cell, cells.bottom * cell};
}

void RegionCanvas::Paint() {
    const BufferedPaint paint(Handle());
    const HDC dc = paint.Dc();
    PaintGrid(dc, paint.Area());
    for (int i = 0; i < region.getNumRectangles(); ++i) {
        const RECT piece = PixelsOf(*region.getRectangle(i));
        Fill(dc, piece, PieceColour());
        Outline(dc, piece, EdgeColour(), line);
    }
    const bool focused = GetFocus() == Handle();
    PaintFrame(dc, focused);
    if (focused)
        DrawFocusRect(dc, &paint.Area());
}

void RegionCanvas::PaintGrid(HDC dc, const RECT& area) const {
    Fill(dc, area, Paper());
    for (int x = cell - 1; x < area.right; x += cell)
        Fill(dc, {x, 0, x + 1, area.bottom}, GridColour());
    for (int y = cell - 1; y < area.bottom; y += cell)
        Fill(dc, {0, y, area.right, y + 1}, GridColour());
}

/// Pale without the focus, when keys do not reach it; hatched while it is about to be subtracted.
void RegionCanvas::PaintFrame(HDC dc, bool focused) const {
    const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
    const RECT area = PixelsOf(frame);
    if (dragging)
        Hatch(dc, area, drag == Change::added ? EdgeColour() : text);
    Outline(dc, area, focused ? text : Mix(text, Paper(), 6), focused ? 2 * line : line);
}

} // namespace gallery
