#include "utilities/ui/LinkControl.h"

#include "common/Handles.h"
#include "utilities/base/Layout.h"
#include "utilities/base/StoreCut.h"
#include "utilities/base/Subclassing.h"
#include "utilities/base/WindowText.h"

namespace {

constexpr int hitMargin = 7;

using Internals = vtr::Internals<CLinkControl>;

HFONT FontOf(HWND window) {
    return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
}

} // namespace

template <>
struct vtr::Internals<CLinkControl> {
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;
    static constexpr SubclassKind kind{&Procedure, L"vtrutils.LinkControl",
                                       L"vtrutils.LinkControl.previous"};
    static SIZE Measure(HDC dc, const WindowText<sizeof CLinkControl::text>& text);
    static SIZE FindHit(CLinkControl& link, HDC dc);
    static void Paint(CLinkControl& link);

    VTR_FIELD_AT(CLinkControl, link, 512);
    VTR_FIELD_AT(CLinkControl, savedProcedure, 2560);
    VTR_FIELD_AT(CLinkControl, control, 2568, 2564);
    VTR_FIELD_AT(CLinkControl, hit, 2576, 2568);
    VTR_FIELD_AT(CLinkControl, colour, 2592, 2584);
};

LRESULT CALLBACK Internals::Procedure(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept {
    auto* link = static_cast<CLinkControl*>(ObjectInChain(kind, window));
    if (link == nullptr)
        return PassOn(kind, window, message, wParam, lParam);
    if (message == WM_PAINT) {
        Paint(*link);
        return 0;
    }
    const WNDPROC previous = link->savedProcedure;
    if (message == WM_NCDESTROY)
        link->Restore();
    return CallPrevious(previous, window, message, wParam, lParam);
}

SIZE Internals::Measure(HDC dc, const WindowText<sizeof CLinkControl::text>& text) {
    SIZE size{};
    if (GetTextExtentPoint32W(dc, text.Get(), text.Length(), &size) != FALSE)
        return size;
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    return {(text.Length() + 2) * metrics.tmAveCharWidth, metrics.tmHeight};
}

/// Returns the size of the text. Requires: the font is selected.
SIZE Internals::FindHit(CLinkControl& link, HDC dc) {
    const SIZE size = Measure(dc, WindowText<sizeof link.text>(link.text));
    RECT client{};
    GetClientRect(link.control, &client);
    const LONG_PTR alignment = GetWindowLongPtrW(link.control, GWL_STYLE) & SS_TYPEMASK;
    link.hit.left = client.left;
    if (alignment == SS_RIGHT)
        link.hit.left = client.right - size.cx;
    else if (alignment == SS_CENTER)
        link.hit.left = (client.right - client.left - size.cx) / 2;
    link.hit.right = link.hit.left + size.cx;
    link.hit.top = client.top;
    link.hit.bottom = link.hit.top + size.cy + hitMargin;
    return size;
}

void Internals::Paint(CLinkControl& link) {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(link.control, &paint);
    const HWND parent = GetParent(link.control);
    // As the static control has its background: by its parent.
    const auto background = reinterpret_cast<HBRUSH>(
        SendMessageW(parent, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                     reinterpret_cast<LPARAM>(link.control)));
    RECT client{};
    GetClientRect(link.control, &client);
    FillRect(dc, &client, background != nullptr ? background : GetSysColorBrush(COLOR_BTNFACE));
    {
        const SelectedObject font(dc, FontOf(parent));
        const SIZE size = FindHit(link, dc);
        const WindowText<sizeof link.text> text(link.text);
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, link.colour);
        TextOutW(dc, link.hit.left, link.hit.top, text.Get(), text.Length());
        const Owner<GdiObjectKind<HPEN>> pen(CreatePen(PS_SOLID, /*cWidth=*/1, link.colour));
        const SelectedObject line(dc, pen.Get());
        MoveToEx(dc, link.hit.left, link.hit.top + size.cy, /*lppt=*/nullptr);
        LineTo(dc, link.hit.left + size.cx, link.hit.top + size.cy);
    }
    EndPaint(link.control, &paint);
}

CLinkControl::CLinkControl() noexcept
    : text(), link(), savedProcedure(nullptr), control(nullptr), hit(), colour(0) {}

CLinkControl::~CLinkControl() {
    Restore();
}

BOOL CLinkControl::SubClass(HWND staticControl, char* newText, char* newLink,
                            COLORREF newColour) noexcept {
    Restore();
    vtr::StoreCut(newText != nullptr ? newText : "", text, sizeof text);
    vtr::StoreCut(newLink != nullptr ? newLink : "", link, sizeof link);
    colour = newColour;
    control = staticControl;
    auto* earlier = static_cast<CLinkControl*>(ObjectInChain(Internals::kind, control));
    if (earlier != nullptr)
        earlier->Restore();
    savedProcedure = PutProcedureBefore(Internals::kind, control, this);
    if (savedProcedure == nullptr)
        return FALSE;
    const vtr::WindowDc dc(GetDC(control));
    const vtr::SelectedObject font(dc.Get(), FontOf(GetParent(control)));
    Internals::FindHit(*this, dc.Get());
    InvalidateRect(control, /*lpRect=*/nullptr, /*bErase=*/TRUE);
    return TRUE;
}

void CLinkControl::Restore() noexcept {
    if (savedProcedure == nullptr)
        return;
    TakeProcedureBack(Internals::kind, control, this);
    savedProcedure = nullptr;
    InvalidateRect(control, /*lpRect=*/nullptr, /*bErase=*/TRUE);
}

char* CLinkControl::GetLink() noexcept {
    return link;
}

RECT CLinkControl::GetLastHitRect() const noexcept {
    return hit;
}

BOOL CLinkControl::MouseOver(HWND dialog, POINT point) const noexcept {
    RECT place{};
    RECT window{};
    RECT client{};
    if (GetWindowRect(control, &place) == FALSE || GetWindowRect(dialog, &window) == FALSE ||
        GetClientRect(dialog, &client) == FALSE)
        return FALSE;
    // The right and bottom of the hit rectangle count as extents.
    RECT area;
    area.left = place.left - window.left;
    area.right = area.left + hit.right;
    area.top = place.top - client.top - window.bottom + client.bottom;
    area.bottom = area.top + hit.bottom;
    return PtInRect(&area, point);
}
