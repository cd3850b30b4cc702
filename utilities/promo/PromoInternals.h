#ifndef VTRUTILS_PROMO_PROMOINTERNALS_H
#define VTRUTILS_PROMO_PROMOINTERNALS_H

#include "common/Handles.h"
#include "utilities/base/Layout.h"
#include "utilities/promo/PromoEffects.h"
#include "utilities/promo/PromoScript.h"
#include "utilities/promo/PromoSequencer.h"
#include "utilities/promo/PromoStyle.h"

/// What works on the fields of CPromoScript, by the source that has it. Private to the library. One
/// thread at a time.
template <>
struct vtr::Internals<CPromoScript> {
    // PromoScript.cpp: the fields, as the parts that know no window see them.
    static PromoStyle Style(CPromoScript& script);
    static PromoPosition Position(CPromoScript& script);
    static PromoSequencer Sequencer(const CPromoScript& script);
    static int Margin(const CPromoScript& script, PromoSide side, const RECT* area);
    static void FreeResources(CPromoScript& script);

    // PromoPlayback.cpp: what is shown when.
    static void Retire(const CPromoScript& script); ///< timers find it no longer
    static void NextSubStep(CPromoScript& script);
    static void ReadWaits(CPromoScript& script);
    static void TakeText(CPromoScript& script, const char* text);
    static void Launch(CPromoScript& script);
    static void StartWait(CPromoScript& script);
    static void EndTransition(CPromoScript& script);
    static void StartTimer(CPromoScript& script, UINT_PTR& timer, int period);
    static void KillTimers(CPromoScript& script);
    static void CALLBACK TimerProcedure(HWND window, UINT message, UINT_PTR id,
                                        DWORD tick) noexcept;
    static bool DoingPerCharDelay(const CPromoScript& script) { return script.pending[0] != '\0'; }
    /// One that is painted frame by frame.
    static bool DoingTransition(const CPromoScript& script) {
        return script.transitionTime > 0 && script.effect != promoPerCharacter;
    }

    // PromoWindow.cpp: the window, and its frames as they are asked for.
    static bool TakeWindow(CPromoScript& script, HWND window);
    static void LeaveWindow(CPromoScript& script);
    static void Invalidate(const CPromoScript& script);
    static void Resized(CPromoScript& script);
    static void PaintWindow(CPromoScript& script, HWND window);
    static bool PaintFrame(CPromoScript& script, HDC dc, const RECT& client);
    static void PaintTransition(CPromoScript& script, HDC dc, SIZE size);
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;

    // PromoPainter.cpp: one message, off-screen.
    static bool FitOffscreen(CPromoScript& script, HWND window);
    static void SetUpContext(CPromoScript& script, HDC dc);
    static void RevealCharacter(CPromoScript& script);
    static RECT TextPlace(const CPromoScript& script, HDC dc, const RECT& client);
    static bool PaintHostBackground(CPromoScript& script, HDC dc, const RECT& client);
    static void DrawMessage(const CPromoScript& script, HDC dc, RECT place);

    // PromoFrames.cpp: the frames of a transition.
    static bool MakeFrame(CPromoScript& script, PromoFrame& frame, SIZE size);
    static bool FillSource(CPromoScript& script, SIZE size);
    static bool CaptureFrame(CPromoScript& script, PromoFrame& frame, HDC dc, SIZE size);
    static bool PrepareFrames(CPromoScript& script, HDC dc, SIZE size);
    static void ShowProgress(const CPromoScript& script, HDC dc, SIZE size, int progress);
    static void FreeFrames(CPromoScript& script);

    VTR_FIELD_AT(CPromoScript, outputWindow, 0);
    VTR_FIELD_AT(CPromoScript, document, 8, 4);
    VTR_FIELD_AT(CPromoScript, step, 40, 28);
    VTR_FIELD_AT(CPromoScript, subStep, 44, 32);
    VTR_FIELD_AT(CPromoScript, returnStep, 48, 36);
    VTR_FIELD_AT(CPromoScript, defaultWait, 52, 40);
    VTR_FIELD_AT(CPromoScript, stepWait, 56, 44);
    VTR_FIELD_AT(CPromoScript, clearPause, 60, 48);
    VTR_FIELD_AT(CPromoScript, activeClearPause, 64, 52);
    VTR_FIELD_AT(CPromoScript, mainTimer, 72, 56);
    VTR_FIELD_AT(CPromoScript, refreshTimer, 80, 60);
    VTR_FIELD_AT(CPromoScript, transitionTimer, 88, 64);
    VTR_FIELD_AT(CPromoScript, eventHandler, 96, 68);
    VTR_FIELD_AT(CPromoScript, eventContext, 104, 72);
    VTR_FIELD_AT(CPromoScript, backgroundHandler, 112, 76);
    VTR_FIELD_AT(CPromoScript, backgroundContext, 120, 80);
    VTR_FIELD_AT(CPromoScript, sourceFile, 128, 84);
    VTR_FIELD_AT(CPromoScript, startScript, 388, 344);
    VTR_FIELD_AT(CPromoScript, currentScript, 648, 604);
    VTR_FIELD_AT(CPromoScript, displayText, 908, 864);
    VTR_FIELD_AT(CPromoScript, pending, 2956, 2912);
    VTR_FIELD_AT(CPromoScript, returnScript, 5004, 4960);
    VTR_FIELD_AT(CPromoScript, sourceBuffer, 5264, 5220);
    VTR_FIELD_AT(CPromoScript, sourceSize, 5272, 5224);
    VTR_FIELD_AT(CPromoScript, offscreenBitmap, 5280, 5228);
    VTR_FIELD_AT(CPromoScript, offscreen, 5288, 5232);
    VTR_FIELD_AT(CPromoScript, previousProcedure, 5296, 5236);
    VTR_FIELD_AT(CPromoScript, font, 5304, 5240);
    VTR_FIELD_AT(CPromoScript, fontDescription, 5312, 5244);
    VTR_FIELD_AT(CPromoScript, madeDescription, 5372, 5304);
    VTR_FIELD_AT(CPromoScript, backgroundBrush, 5432, 5364);
    VTR_FIELD_AT(CPromoScript, backgroundColor, 5440, 5368);
    VTR_FIELD_AT(CPromoScript, brushColor, 5444, 5372);
    VTR_FIELD_AT(CPromoScript, textColor, 5448, 5376);
    VTR_FIELD_AT(CPromoScript, horizontal, 5452, 5380);
    VTR_FIELD_AT(CPromoScript, vertical, 5456, 5384);
    VTR_FIELD_AT(CPromoScript, textFormat, 5460, 5388);
    VTR_FIELD_AT(CPromoScript, clearPausing, 5464, 5392);
    VTR_FIELD_AT(CPromoScript, notify, 5465, 5393);
    VTR_FIELD_AT(CPromoScript, lastCharacter, 5466, 5394);
    VTR_FIELD_AT(CPromoScript, marginPixels, 5468, 5396);
    VTR_FIELD_AT(CPromoScript, marginPercents, 5484, 5412);
    VTR_FIELD_AT(CPromoScript, hostBackground, 5500, 5428);
    VTR_FIELD_AT(CPromoScript, hostBackgroundName, 5501, 5429);
    VTR_FIELD_AT(CPromoScript, refreshPeriod, 5764, 5692);
    VTR_FIELD_AT(CPromoScript, hostBackgroundStart, 5768, 5696);
    VTR_FIELD_AT(CPromoScript, refreshCount, 5772, 5700);
    VTR_FIELD_AT(CPromoScript, solidSourceReady, 5776, 5704);
    VTR_FIELD_AT(CPromoScript, newFrameCaptured, 5777, 5705);
    VTR_FIELD_AT(CPromoScript, description, 5784, 5708);
    VTR_FIELD_AT(CPromoScript, sourceFrame, 5792, 5712);
    VTR_FIELD_AT(CPromoScript, newFrame, 5808, 5720);
    VTR_FIELD_AT(CPromoScript, outputFrame, 5824, 5728);
    VTR_FIELD_AT(CPromoScript, transitionStart, 5840, 5736);
    VTR_FIELD_AT(CPromoScript, transitionTime, 5844, 5740);
    VTR_FIELD_AT(CPromoScript, effect, 5848, 5744);
    VTR_FIELD_AT(CPromoScript, transitionColor, 5852, 5748);
    VTR_FIELD_AT(CPromoScript, transitionBrush, 5856, 5752);
};

namespace vtr {

/// Gives back what a field owns.
template <class Handle>
void FreeField(typename Handle::Type& field) {
    Handle(field).Close();
    field = nullptr;
}

inline constexpr int promoTransitionPeriod = 5;

} // namespace vtr

#endif
