#include "utilities/ui/MyToolTip.h"

#include "common/Handles.h"
#include "utilities/base/Layout.h"
#include "utilities/base/Subclassing.h"
#include "utilities/base/WindowText.h"
#include "utilities/text/language/LibraryText.h"
#include "utilities/ui/WindowGeometry.h"

#include <algorithm>
#include <cstring>
#include <windowsx.h>

namespace {

constexpr wchar_t className[] = L"VTTTClass";
constexpr UINT_PTR showTimerId = 222;
constexpr UINT_PTR hideTimerId = 333;
constexpr COLORREF paleYellow = 0xDDFFFF;
constexpr int belowCursor = 32;
constexpr SIZE frame{6, 2};
constexpr POINT textOffset{3, 1};
constexpr SIZE unmeasured{200, 15};

using Internals = vtr::Internals<CMyToolTip>;

} // namespace

template <>
struct vtr::Internals<CMyToolTip> {
    using TipText = WindowText<sizeof CMyToolTip::text>;

    static LRESULT CALLBACK ClassProcedure(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) noexcept;
    static LRESULT WindowProc(CMyToolTip& tip, HWND window, UINT message, WPARAM wParam,
                              LPARAM lParam);
    static bool MakeWindow(CMyToolTip& tip);
    static void MakeLook(CMyToolTip& tip);
    static void Free(CMyToolTip& tip);
    static bool MovedTo(const CMyToolTip& tip, POINT& point);
    static void Moved(CMyToolTip& tip, UINT message, POINT point);
    static void StopTimers(CMyToolTip& tip);
    static bool InForeground(const CMyToolTip& tip);
    static bool AskText(CMyToolTip& tip, POINT point);
    static SIZE Measure(const CMyToolTip& tip, const TipText& text);
    static void ShowAt(CMyToolTip& tip, POINT point);
    static void Paint(const CMyToolTip& tip, HDC dc);

    VTR_FIELD_AT(CMyToolTip, tip, 2048);
    VTR_FIELD_AT(CMyToolTip, getText, 2056, 2052);
    VTR_FIELD_AT(CMyToolTip, context, 2064, 2056);
    VTR_FIELD_AT(CMyToolTip, lastX, 2072, 2060);
    VTR_FIELD_AT(CMyToolTip, lastY, 2076, 2064);
    VTR_FIELD_AT(CMyToolTip, showTimer, 2080, 2068);
    VTR_FIELD_AT(CMyToolTip, delay, 2088, 2072);
    VTR_FIELD_AT(CMyToolTip, hideTimer, 2096, 2076);
    VTR_FIELD_AT(CMyToolTip, displayTime, 2104, 2080);
    VTR_FIELD_AT(CMyToolTip, savedProcedure, 2112, 2084);
    VTR_FIELD_AT(CMyToolTip, font, 2120, 2088);
    VTR_FIELD_AT(CMyToolTip, background, 2128, 2092);
    VTR_FIELD_AT(CMyToolTip, watched, 2136, 2096);
    VTR_FIELD_AT(CMyToolTip, watchAll, 2144, 2100);
};

LRESULT CALLBACK Internals::ClassProcedure(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) noexcept {
    auto* tip = ObjectOf<CMyToolTip>(window);
    if (tip == nullptr)
        return DefWindowProcW(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        if (tip->tip == window)
            tip->tip = nullptr;
        return DefWindowProcW(window, message, wParam, lParam);
    }
    return WindowProc(*tip, window, message, wParam, lParam);
}

LRESULT Internals::WindowProc(CMyToolTip& tip, HWND window, UINT message, WPARAM wParam,
                              LPARAM lParam) {
    if (message == WM_PAINT) {
        RECT changed{};
        if (GetUpdateRect(window, &changed, /*bErase=*/FALSE) != FALSE) {
            PAINTSTRUCT paint;
            Paint(tip, BeginPaint(window, &paint));
            EndPaint(window, &paint);
        } else {
            const WindowDc dc(GetDC(window));
            Paint(tip, dc.Get());
        }
        return 0;
    }
    if (message != WM_TIMER)
        return DefWindowProcW(window, message, wParam, lParam);
    if (wParam == showTimerId) {
        tip.ShowToolTip();
    } else if (wParam == hideTimerId) {
        tip.HideToolTip();
        KillTimer(window, hideTimerId);
        tip.hideTimer = 0;
    }
    return 0;
}

bool Internals::MakeWindow(CMyToolTip& tip) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = &ClassProcedure;
    kind.hInstance = tip.instance;
    kind.hCursor = LoadCursorA(/*hInstance=*/nullptr, IDC_ARROW);
    kind.lpszClassName = className;
    // Another tip that ends on another thread may take the class away in between.
    for (int attempt = 0; attempt < 8 && tip.tip == nullptr; ++attempt) {
        if (RegisterClassW(&kind) == 0 && GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
            return false;
        tip.tip = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOPARENTNOTIFY, className, L"VT_Tooltip",
                                  WS_POPUP, 0, 0, 1, 1, /*hWndParent=*/nullptr, /*hMenu=*/nullptr,
                                  tip.instance, /*lpParam=*/nullptr);
        if (tip.tip == nullptr && GetLastError() != ERROR_CANNOT_FIND_WND_CLASS)
            return false;
    }
    return tip.tip != nullptr;
}

void Internals::MakeLook(CMyToolTip& tip) {
    char face[LF_FACESIZE] = "";
    LibraryText("DefaultToolTipFont", face, sizeof face);
    tip.font =
        CreateFontW(/*cHeight=*/14, /*cWidth=*/0, /*cEscapement=*/0, /*cOrientation=*/0,
                    /*cWeight=*/400, /*bItalic=*/FALSE, /*bUnderline=*/FALSE,
                    /*bStrikeOut=*/FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                    CLEARTYPE_NATURAL_QUALITY, FF_SWISS, WindowText<sizeof face>(face).Get());
    tip.background = CreateSolidBrush(paleYellow);
}

void Internals::Free(CMyToolTip& tip) {
    if (IsWindow(tip.tip) != FALSE) {
        StopTimers(tip);
        SetWindowLongPtrW(tip.tip, GWLP_USERDATA, 0);
        DestroyWindow(tip.tip);
        // Fails while other tips have windows. A class left behind would call into a library that
        // was unloaded.
        UnregisterClassW(className, tip.instance);
    }
    tip.tip = nullptr;
    FontHandle(tip.font).Close();
    Owner<GdiObjectKind<HBRUSH>>(tip.background).Close();
    tip.font = nullptr;
    tip.background = nullptr;
}

/// Where the cursor is, if that is in the watched window and not where it was seen last.
bool Internals::MovedTo(const CMyToolTip& tip, POINT& point) {
    POINT cursor{};
    if (GetCursorPos(&cursor) == FALSE || !WindowContainsPoint(tip.watched, cursor.x, cursor.y))
        return false;
    ScreenToClient(tip.watched, &cursor);
    point = cursor;
    return !tip.hasLastPoint || cursor.x != tip.lastX || cursor.y != tip.lastY;
}

void Internals::Moved(CMyToolTip& tip, UINT message, POINT point) {
    const bool isMove = message == WM_MOUSEMOVE;
    if (isMove && tip.hasLastPoint && point.x == tip.lastX && point.y == tip.lastY)
        return;
    tip.lastX = point.x;
    tip.lastY = point.y;
    tip.hasLastPoint = true;
    if (tip.delay > 1)
        tip.HideToolTip();
    StopTimers(tip);
    if (isMove)
        tip.showTimer = SetTimer(tip.tip, showTimerId, tip.delay, /*lpTimerFunc=*/nullptr);
}

void Internals::StopTimers(CMyToolTip& tip) {
    if (tip.hideTimer != 0)
        KillTimer(tip.tip, hideTimerId);
    if (tip.showTimer != 0)
        KillTimer(tip.tip, showTimerId);
    tip.hideTimer = 0;
    tip.showTimer = 0;
}

bool Internals::InForeground(const CMyToolTip& tip) {
    const HWND foreground = GetForegroundWindow();
    return foreground == tip.watched || IsChild(foreground, tip.watched) != FALSE;
}

bool Internals::AskText(CMyToolTip& tip, POINT point) {
    tip.text[0] = '\0';
    if (tip.getText == nullptr || tip.getText(tip.context, point, tip.text) == 0)
        return false;
    tip.text[sizeof tip.text - 1] = '\0';
    return tip.text[0] != '\0';
}

SIZE Internals::Measure(const CMyToolTip& tip, const TipText& text) {
    const WindowDc dc(GetDC(tip.tip));
    const SelectedObject selected(dc.Get(), tip.font);
    RECT area{};
    if (DrawTextW(dc.Get(), text.Get(), text.Length(), &area, DT_CALCRECT | DT_NOPREFIX) != 0)
        return {area.right - area.left, area.bottom - area.top};
    TEXTMETRICW metrics{};
    if (GetTextMetricsW(dc.Get(), &metrics) != FALSE)
        return {(text.Length() + 2) * metrics.tmAveCharWidth, metrics.tmHeight};
    return unmeasured;
}

void Internals::ShowAt(CMyToolTip& tip, POINT point) {
    const TipText text(tip.text);
    SetWindowTextW(tip.tip, text.Get());
    tip.hideTimer = SetTimer(tip.tip, hideTimerId, tip.displayTime, /*lpTimerFunc=*/nullptr);
    SIZE size = Measure(tip, text);
    size.cx += frame.cx;
    size.cy += frame.cy;
    RECT window{};
    GetWindowRect(tip.watched, &window);
    POINT place{window.left + point.x, window.top + point.y + belowCursor};
    const RECT monitor = GetMonitorRectFromPt(place);
    if (place.x < monitor.left)
        place.x = monitor.left;
    else if (place.x + size.cx > monitor.right)
        place.x = monitor.right - size.cx;
    if (place.y < monitor.top)
        place.y = monitor.top;
    else if (place.y + size.cy > monitor.bottom)
        place.y = monitor.bottom - size.cy;
    InvalidateRect(tip.tip, /*lpRect=*/nullptr, /*bErase=*/TRUE);
    SetWindowPos(tip.tip, HWND_TOPMOST, place.x, place.y, size.cx, size.cy,
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void Internals::Paint(const CMyToolTip& tip, HDC dc) {
    RECT area{};
    GetClientRect(tip.tip, &area);
    {
        const SelectedObject brush(dc, tip.background);
        const SelectedObject pen(dc, GetStockObject(BLACK_PEN));
        Rectangle(dc, area.left, area.top, area.right, area.bottom);
    }
    const TipText text(tip.text);
    const SelectedObject selected(dc, tip.font);
    SetBkMode(dc, TRANSPARENT);
    RECT place = area;
    place.left += textOffset.x;
    place.top += textOffset.y;
    DrawTextW(dc, text.Get(), text.Length(), &place, DT_NOPREFIX);
}

CMyToolTip::CMyToolTip() noexcept
    : text(), tip(nullptr), getText(nullptr), context(nullptr), lastX(0), lastY(0), showTimer(0),
      delay(0), hideTimer(0), displayTime(0), savedProcedure(nullptr), font(nullptr),
      background(nullptr), watched(nullptr), watchAll(true), hasLastPoint(false),
      instance(nullptr) {}

CMyToolTip::~CMyToolTip() {
    if (savedProcedure != nullptr && IsWindow(watched) != FALSE)
        SetWindowLongPtrA(watched, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(savedProcedure));
    Internals::Free(*this);
}

int CMyToolTip::Init(HINSTANCE newInstance, HWND newWatched, int (*getTip)(void*, POINT, char*),
                     void* newContext, DWORD delayMs, DWORD displayMs) noexcept {
    Internals::Free(*this);
    instance = newInstance;
    if (!Internals::MakeWindow(*this))
        return 0;
    watched = newWatched;
    getText = getTip;
    context = newContext;
    delay = delayMs;
    displayTime = displayMs;
    hasLastPoint = false;
    Internals::MakeLook(*this);
    SetWindowLongPtrW(tip, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return 1;
}

void CMyToolTip::ForwardMouseMessage(HWND /*window*/, UINT message, WPARAM /*wParam*/,
                                     LPARAM lParam) noexcept {
    if (IsWindow(tip) == FALSE)
        return;
    const bool isOther =
        message == WM_LBUTTONDBLCLK || message < WM_MOUSEMOVE || message >= WM_RBUTTONDBLCLK;
    if (isOther) {
        POINT point;
        if (watchAll && Internals::MovedTo(*this, point))
            Internals::Moved(*this, WM_MOUSEMOVE, point);
        return;
    }
    Internals::Moved(*this, message, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
}

void CMyToolTip::ShowToolTip() noexcept {
    if (IsWindow(tip) == FALSE)
        return;
    POINT point{};
    if (GetCursorPos(&point) == FALSE || ScreenToClient(watched, &point) == FALSE)
        point = {lastX, lastY};
    KillTimer(tip, showTimerId);
    showTimer = 0;
    if ((watchAll && !Internals::InForeground(*this)) || !Internals::AskText(*this, point)) {
        HideToolTip();
        return;
    }
    Internals::ShowAt(*this, point);
}

void CMyToolTip::HideToolTip() noexcept {
    if (IsWindow(tip) != FALSE)
        ShowWindow(tip, SW_HIDE);
}

bool CMyToolTip::ShowingTipNow() noexcept {
    return IsWindow(tip) != FALSE && IsWindowVisible(tip) != FALSE;
}

void CMyToolTip::SetWatchAllMouseMovementsMode(bool on) noexcept {
    watchAll = on;
}

void CMyToolTip::UpdateTipDelayTime(DWORD delayMs) noexcept {
    delay = delayMs;
}
