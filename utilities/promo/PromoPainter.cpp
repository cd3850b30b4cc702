// One message, painted off-screen.

#include "utilities/base/StoreCut.h"
#include "utilities/base/WindowText.h"
#include "utilities/promo/PromoHandlerCall.h"
#include "utilities/promo/PromoInternals.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

using Internals = vtr::Internals<CPromoScript>;

/// What is higher needs so much memory for each letter that painting takes seconds.
constexpr LONG highestFont = 1024;

HFONT MakeFont(const LOGFONTA& description) {
    LOGFONTW wide{};
    std::memcpy(&wide, &description, offsetof(LOGFONTA, lfFaceName));
    wide.lfHeight = std::max(wide.lfHeight, -highestFont);
    vtr::StoreCut(vtr::WindowText<LF_FACESIZE>(description.lfFaceName).Get(), wide.lfFaceName,
                  LF_FACESIZE);
    return CreateFontIndirectW(&wide);
}

/// Margins come from scripts: no sum of them may overflow.
LONG Near(int margin, LONG extent) {
    return std::clamp<LONG>(margin, -extent - 1, extent + 1);
}

} // namespace

/// Makes an off-screen bitmap of the window's size, unless it has one. False if it cannot be made.
bool Internals::FitOffscreen(CPromoScript& script, HWND window) {
    RECT client{};
    if (IsWindow(window) == FALSE || GetClientRect(window, &client) == FALSE || client.right < 1 ||
        client.bottom < 1)
        return false;
    if (script.offscreenSize.cx == client.right && script.offscreenSize.cy == client.bottom)
        return true;
    const WindowDc windowDc(GetDC(window));
    MemoryDc dc(CreateCompatibleDC(windowDc.Get()));
    BitmapHandle bitmap(CreateCompatibleBitmap(windowDc.Get(), client.right, client.bottom));
    if (!dc || !bitmap || SelectObject(dc.Get(), bitmap.Get()) == nullptr)
        return false;
    FreeField<MemoryDc>(script.offscreen);
    FreeField<BitmapHandle>(script.offscreenBitmap);
    script.offscreen = dc.Release();
    script.offscreenBitmap = bitmap.Release();
    script.offscreenSize = {client.right, client.bottom};
    script.blank = true;
    // The frames of the transition have another size now.
    if (DoingTransition(script) && script.transitionStart != 0)
        EndTransition(script);
    return true;
}

/// Selects and sets what the message is painted with. The caller saves and restores the context.
void Internals::SetUpContext(CPromoScript& script, HDC dc) {
    if (script.font == nullptr || std::memcmp(&script.fontDescription, &script.madeDescription,
                                              sizeof script.fontDescription) != 0) {
        FreeField<FontHandle>(script.font);
        script.font = MakeFont(script.fontDescription);
        script.madeDescription = script.fontDescription;
    }
    if (script.brushColor != script.backgroundColor) {
        FreeField<BrushHandle>(script.backgroundBrush);
        script.backgroundBrush = CreateSolidBrush(script.backgroundColor);
        script.brushColor =
            script.backgroundBrush != nullptr ? script.backgroundColor : CLR_INVALID;
    }
    SelectObject(dc, script.font != nullptr ? script.font : GetStockObject(ANSI_VAR_FONT));
    SelectObject(dc, script.backgroundBrush);
    SetTextColor(dc, script.textColor);
    SetBkMode(dc, TRANSPARENT);
}

/// One byte a paint.
void Internals::RevealCharacter(CPromoScript& script) {
    if (!DoingPerCharDelay(script))
        return;
    const std::size_t shown = std::strlen(script.displayText);
    if (shown + 1 < sizeof script.displayText) {
        script.displayText[shown] = script.pending[0];
        script.displayText[shown + 1] = '\0';
    }
    std::memmove(script.pending, script.pending + 1, std::strlen(script.pending));
    if (!DoingPerCharDelay(script))
        script.lastCharacter = true;
}

/// Where the message is drawn. Measures by drawing: the caller fills the background after this.
RECT Internals::TextPlace(const CPromoScript& script, HDC dc, const RECT& client) {
    const auto margin = [&](PromoSide side, LONG extent) {
        return Near(Margin(script, side, &client), extent);
    };
    RECT place{client.left + margin(promoLeft, client.right),
               client.top + margin(promoTop, client.bottom),
               client.right - margin(promoRight, client.right),
               client.bottom - margin(promoBottom, client.bottom)};
    if (script.vertical != 0) {
        const WindowText<sizeof script.displayText> text(script.displayText);
        RECT whole = client;
        const LONG height = DrawTextW(dc, text.Get(), text.Length(), &whole, script.textFormat);
        TEXTMETRICW metrics{};
        GetTextMetricsW(dc, &metrics);
        place.top = script.vertical == 1 ? (place.bottom - height) / 2
                                         : place.bottom - metrics.tmHeight / 2 - height;
        place.top = std::max(place.top, 0L);
    }
    return place;
}

/// False when the host destroyed the object.
bool Internals::PaintHostBackground(CPromoScript& script, HDC dc, const RECT& client) {
    if (!script.hostBackground || script.backgroundHandler == nullptr)
        return true;
    const DWORD now = GetTickCount();
    if (script.hostBackgroundStart == 0)
        script.hostBackgroundStart = now;
    const int saved = SaveDC(dc);
    {
        const PromoHandlerCall call(script.handling);
        script.backgroundHandler(
            dc, client, script.hostBackgroundName, now - script.hostBackgroundStart,
            static_cast<unsigned>(script.refreshCount), script.backgroundContext);
        if (call.Gone())
            return false;
    }
    RestoreDC(dc, saved);
    if (script.refreshPeriod > 0 && script.refreshTimer == 0 && !script.stopped) {
        StartTimer(script, script.refreshTimer, script.refreshPeriod);
        script.refreshCount = 0;
    }
    return true;
}

void Internals::DrawMessage(const CPromoScript& script, HDC dc, RECT place) {
    constexpr LONG beside = 2;
    place.left += beside;
    place.right -= beside;
    const WindowText<sizeof script.displayText> text(script.displayText);
    if (text.Length() > 0)
        DrawTextW(dc, text.Get(), text.Length(), &place, script.textFormat);
}
