// The window: taking its procedure and giving it back, and painting its frames when it asks.

#include "utilities/base/Subclassing.h"
#include "utilities/promo/PromoInternals.h"

namespace {

using Internals = vtr::Internals<CPromoScript>;

constexpr vtr::SubclassKind kind{&Internals::Procedure, L"vtrutils.PromoScript",
                                 L"vtrutils.PromoScript.previous"};

CPromoScript* ScriptOf(HWND window) {
    return static_cast<CPromoScript*>(ObjectInChain(kind, window));
}

} // namespace

bool Internals::TakeWindow(CPromoScript& script, HWND window) {
    CPromoScript* const before = ScriptOf(window);
    if (before != &script) {
        LeaveWindow(script);
        if (before != nullptr)
            LeaveWindow(*before);
    }
    const WNDPROC previous = PutProcedureBefore(kind, window, &script);
    if (previous == nullptr)
        return false;
    script.previousProcedure = previous;
    script.subclassed = window;
    return true;
}

void Internals::LeaveWindow(CPromoScript& script) {
    TakeProcedureBack(kind, script.subclassed, &script);
    script.subclassed = nullptr;
}

LRESULT CALLBACK Internals::Procedure(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept {
    if (message == WM_CREATE) {
        SetWindowLongPtrW(window, GWLP_USERDATA, lParam);
        return 0;
    }
    CPromoScript* const script = ScriptOf(window);
    if (script != nullptr)
        return script->StaticWndFunc(window, message, wParam, lParam);
    return PassOn(kind, window, message, wParam, lParam);
}

LRESULT CPromoScript::StaticWndFunc(HWND window, UINT message, WPARAM wParam,
                                    LPARAM lParam) noexcept {
    switch (message) {
    case WM_SIZE:
        Internals::Resized(*this);
        break;
    case WM_PAINT:
        Internals::PaintWindow(*this, window);
        return 0;
    case WM_ERASEBKGND:
    case WM_NOTIFYFORMAT:
        return 1;
    case WM_NCDESTROY:
        if (window == subclassed) {
            Stop();
            Internals::LeaveWindow(*this);
        }
        break;
    default:
        break;
    }
    return vtr::CallPrevious(previousProcedure, window, message, wParam, lParam);
}

void Internals::Invalidate(const CPromoScript& script) {
    if (script.subclassed != nullptr) // null stands for all windows
        InvalidateRect(script.subclassed, /*lpRect=*/nullptr, /*bErase=*/FALSE);
}

/// While a handler runs, the off-screen context is in use; the next paint makes one of the new
/// size.
void Internals::Resized(CPromoScript& script) {
    Invalidate(script);
    if (script.handling == nullptr)
        FitOffscreen(script, script.subclassed);
}

void Internals::PaintWindow(CPromoScript& script, HWND window) {
    PAINTSTRUCT paint;
    const HDC target = BeginPaint(window, &paint);
    RECT client{};
    GetClientRect(window, &client);
    bool isThere = true;
    if (script.handling == nullptr && FitOffscreen(script, window))
        isThere = PaintFrame(script, script.offscreen, client);
    if (isThere && script.offscreen != nullptr)
        BitBlt(target, 0, 0, client.right, client.bottom, script.offscreen, 0, 0, SRCCOPY);
    EndPaint(window, &paint);
}

void CPromoScript::OnPaint(HDC dc, HWND /*window*/, RECT client) noexcept {
    if (handling == nullptr)
        Internals::PaintFrame(*this, dc, client);
}

/// False when the host destroyed the object meanwhile.
bool Internals::PaintFrame(CPromoScript& script, HDC dc, const RECT& client) {
    const SIZE size{client.right, client.bottom};
    if (script.stopped && DoingTransition(script)) {
        if (script.transitionStart != 0)
            return true;
        script.transitionTime = 0;
    }
    const int saved = SaveDC(dc);
    SetUpContext(script, dc);
    if (script.blank)
        PatBlt(dc, 0, 0, size.cx, size.cy, PATCOPY);
    script.blank = false;
    if (DoingTransition(script) && script.transitionTimer == 0 &&
        EffectUsesPrevFrame(script.effect))
        CaptureFrame(script, script.sourceFrame, dc, size);
    if (!script.stopped)
        RevealCharacter(script);
    const bool showsText = (!script.clearPausing || script.notify) &&
                           (!DoingTransition(script) || !script.newFrameCaptured) &&
                           script.transitionTimer == 0;
    const RECT place = showsText ? TextPlace(script, dc, client) : client;
    PatBlt(dc, 0, 0, size.cx, size.cy, PATCOPY);
    if (!PaintHostBackground(script, dc, client))
        return false;
    if (showsText)
        DrawMessage(script, dc, place);
    if (DoingTransition(script))
        PaintTransition(script, dc, size);
    RestoreDC(dc, saved);
    return true;
}

void Internals::PaintTransition(CPromoScript& script, HDC dc, SIZE size) {
    if (!PrepareFrames(script, dc, size)) {
        EndTransition(script);
        Invalidate(script);
        return;
    }
    const DWORD now = GetTickCount();
    if (script.transitionStart == 0)
        script.transitionStart = now;
    const DWORD elapsed = now - script.transitionStart;
    const auto time = static_cast<DWORD>(script.transitionTime);
    int progress = elapsed < time ? static_cast<int>(elapsed * 100ULL / time) : 100;
    if (progress < 100 && script.transitionTimer == 0) {
        StartTimer(script, script.transitionTimer, promoTransitionPeriod);
        if (script.transitionTimer == 0 && !script.stopped)
            progress = 100; // without a timer nothing would come after this frame
    }
    ShowProgress(script, dc, size, progress);
    if (progress == 100)
        EndTransition(script);
}
