// What is shown when: sub-steps, waits and the three timers.

#include "utilities/base/SameText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/promo/PromoDocument.h"
#include "utilities/promo/PromoInternals.h"

#include <climits>
#include <cstring>

namespace {

/// The object that called `Go` last: thread timers have nothing that tells whose they are.
CPromoScript* playing = nullptr;

using Internals = vtr::Internals<CPromoScript>;

void KillTimerOf(UINT_PTR& timer) {
    if (timer != 0)
        KillTimer(/*hWnd=*/nullptr, timer);
    timer = 0;
}

} // namespace

void CALLBACK Internals::TimerProcedure(HWND, UINT, UINT_PTR id, DWORD) noexcept {
    if (playing != nullptr)
        playing->OnTimer(id);
}

void Internals::StartTimer(CPromoScript& script, UINT_PTR& timer, int period) {
    KillTimerOf(timer);
    if (!script.stopped)
        timer =
            SetTimer(/*hWnd=*/nullptr, /*nIDEvent=*/0, static_cast<UINT>(period), &TimerProcedure);
}

void Internals::KillTimers(CPromoScript& script) {
    KillTimerOf(script.mainTimer);
    KillTimerOf(script.refreshTimer);
    KillTimerOf(script.transitionTimer);
}

void Internals::Retire(const CPromoScript& script) {
    if (playing == &script)
        playing = nullptr;
}

bool CPromoScript::Go() noexcept {
    if (handling != nullptr)
        return false;
    Stop();
    Internals::FreeResources(*this);
    if (!Load() || IsWindow(outputWindow) == FALSE)
        return false;
    vtr::StoreCut(startScript, currentScript, sizeof currentScript);
    if (currentScript[0] == '\0')
        return false;
    if (playing != nullptr && playing != this)
        playing->Stop();
    playing = this;
    if (!Internals::FitOffscreen(*this, outputWindow) ||
        !Internals::TakeWindow(*this, outputWindow))
        return false;
    step = 1;
    subStep = 0;
    returnScript[0] = '\0';
    returnStep = -1;
    stopped = false;
    Internals::NextSubStep(*this);
    return true; // a handler may have destroyed the object
}

void CPromoScript::Stop() noexcept {
    stopped = true;
    Internals::KillTimers(*this);
}

void CPromoScript::Resume() noexcept {
    if (handling != nullptr || subclassed == nullptr)
        return;
    stopped = playing != this;
    Internals::NextSubStep(*this);
}

void Internals::NextSubStep(CPromoScript& script) {
    script.clearPausing = false;
    script.notify = false;
    script.solidSourceReady = false;
    script.newFrameCaptured = false;
    script.transitionStart = 0;
    KillTimerOf(script.mainTimer);
    KillTimerOf(script.transitionTimer);
    FreeField<BrushHandle>(script.transitionBrush);
    char text[1024];
    PromoSequencer::Found found = PromoSequencer::Found::nothing;
    if (IsWindow(script.subclassed) != FALSE)
        found = Sequencer(script).Next(Position(script), text, sizeof text);
    if (found == PromoSequencer::Found::nothing)
        script.Stop();
    if (found != PromoSequencer::Found::text)
        return;
    UnescapePromoText(text);
    ReadWaits(script);

    char backgroundBefore[sizeof script.hostBackgroundName];
    StoreCut(script.hostBackgroundName, backgroundBefore, sizeof backgroundBefore);
    Style(script).Resolve(script.document, script.currentScript, script.step, script.subStep);
    TakeText(script, text);
    if (!SameText(script.hostBackgroundName, backgroundBefore)) {
        script.hostBackgroundStart = 0;
        script.refreshCount = 0;
        KillTimerOf(script.refreshTimer);
    }
    Launch(script);
}

void Internals::ReadWaits(CPromoScript& script) {
    const NumberedName step(script.currentScript, script.step);
    script.stepWait = script.defaultWait;
    PromoSection(script.document, step.Get()).Natural("wait", script.stepWait);
    const PromoSection subStep(script.document, step.Get(), script.subStep);
    char word[8];
    script.notify = subStep.Text("wait", word) && SameText(word, "notify");
    subStep.Natural("wait", script.stepWait);
}

/// Makes the text what is shown, or what is revealed character by character, or adds it.
void Internals::TakeText(CPromoScript& script, const char* text) {
    const NumberedName step(script.currentScript, script.step);
    char clear[4];
    PromoSection(script.document, step.Get(), script.subStep).Text("clear", clear);
    const bool clears = script.subStep == 1 || std::strcmp(clear, "1") == 0;
    const bool oneByOne = script.transitionTime > 0 && script.effect == promoPerCharacter;

    script.activeClearPause = script.clearPause;
    script.lastCharacter = false;
    StoreCut(oneByOne ? text : "", script.pending, sizeof script.pending);
    if (clears) {
        script.displayText[0] = '\0';
        script.clearPausing = script.activeClearPause != 0;
    }
    const std::size_t shown = std::strlen(script.displayText);
    if (!oneByOne && shown + std::strlen(text) < sizeof script.displayText)
        StoreCut(text, script.displayText + shown, sizeof script.displayText - shown);
}

/// Shows the sub-step as it stands. The end of a transition starts the wait.
void Internals::Launch(CPromoScript& script) {
    KillTimerOf(script.mainTimer);
    if (!DoingTransition(script))
        StartWait(script);
    Invalidate(script);
}

/// Until the next character, the end of the clear pause or the next sub-step. One that waits for
/// `Resume` has characters at most.
void Internals::StartWait(CPromoScript& script) {
    KillTimerOf(script.mainTimer);
    const bool isRevealing = script.transitionTime > 0 && DoingPerCharDelay(script);
    script.lastCharacter = false;
    if (isRevealing)
        StartTimer(script, script.mainTimer, script.transitionTime);
    else if (!script.notify)
        StartTimer(script, script.mainTimer,
                   script.clearPausing ? script.activeClearPause : script.stepWait);
}

void Internals::EndTransition(CPromoScript& script) {
    KillTimerOf(script.transitionTimer);
    script.transitionTime = 0;
    StartWait(script);
}

void CPromoScript::OnTimer(UINT_PTR id) noexcept {
    if (id == 0 || handling != nullptr)
        return;
    if (id == refreshTimer || id == transitionTimer) {
        if (id == refreshTimer && refreshCount < INT_MAX)
            ++refreshCount;
        Internals::Invalidate(*this);
    } else if (id != mainTimer) {
        return;
    } else if (clearPausing) {
        clearPausing = false;
        Internals::Launch(*this);
    } else if (transitionTime > 0 && (Internals::DoingPerCharDelay(*this) || lastCharacter)) {
        Internals::Launch(*this);
    } else {
        Internals::NextSubStep(*this);
    }
}
