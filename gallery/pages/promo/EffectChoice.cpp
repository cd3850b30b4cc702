#include "gallery/pages/promo/EffectChoice.h"

#include "gallery/app/ControlIds.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"

#include <algorithm>
#include <commctrl.h>
#include <iterator>

namespace gallery {

namespace {

/// As scripts name them.
constexpr const wchar_t* effects[] = {
    L"none",           L"per-char delay",
    L"color fade",     L"frames crossfade",
    L"frames fade",    L"color frame fade pop",
    L"color rect out", L"color rect in",
    L"wipe LR",        L"wipe RL",
    L"color wipe LR",  L"color wipe RL",
};

constexpr int usualEffect = 2;
constexpr int usualTime = 800;

std::wstring TimeText(int milliseconds) {
    return Text("EffectTime", {std::to_wstring(milliseconds)});
}

} // namespace

bool EffectChoice::Create(HWND parent) {
    box = MakeChoice(parent, ID_PROMO_EFFECT);
    timeLabel = MakeLabel(parent, L"", ID_PROMO_TIME_LABEL);
    slider = MakeControl(parent, TRACKBAR_CLASSW, L"", WS_TABSTOP | TBS_NOTICKS, ID_PROMO_TIME);
    SetChoices(box, {std::begin(effects), std::end(effects)}, usualEffect);
    SendMessageW(slider, TBM_SETRANGE, TRUE, MAKELPARAM(0, longest));
    SendMessageW(slider, TBM_SETLINESIZE, 0, 50);
    SendMessageW(slider, TBM_SETPAGESIZE, 0, 250);
    Choose(usualEffect, usualTime);
    return slider != nullptr;
}

ScriptEffect EffectChoice::Chosen() const {
    return {NarrowAnyway(effects[std::max(gallery::Chosen(box), 0)]),
            static_cast<int>(SendMessageW(slider, TBM_GETPOS, 0, 0))};
}

void EffectChoice::Choose(int effect, int milliseconds) {
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(effect), 0);
    SendMessageW(slider, TBM_SETPOS, TRUE, milliseconds);
    ShowTime();
}

void EffectChoice::ShowTime() const {
    SetText(timeLabel, TimeText(Chosen().milliseconds));
}

int EffectChoice::LabelWidth(const Look& look) const {
    return look.TextWidth(TimeText(longest));
}

} // namespace gallery
