#ifndef VTRUTILS_PROMO_PROMOINTERNALS_H
#define VTRUTILS_PROMO_PROMOINTERNALS_H

#include "common/Handles.h"
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
    static void WindowDestroyed(CPromoScript& script);
    static void Invalidate(const CPromoScript& script);
    static void Resized(CPromoScript& script);
    static void PaintWindow(CPromoScript& script, HWND window);
    static bool PaintFrame(CPromoScript& script, HDC dc, const RECT& client);
    static void PaintTransition(CPromoScript& script, HDC dc, SIZE size);
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;

    // PromoPainter.cpp: one message, off-screen.
    static bool MakeOffscreen(CPromoScript& script, HWND window);
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
