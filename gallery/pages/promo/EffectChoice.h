#ifndef VTRUTILS_GALLERY_PAGES_PROMO_EFFECTCHOICE_H
#define VTRUTILS_GALLERY_PAGES_PROMO_EFFECTCHOICE_H

#include "gallery/pages/promo/ScriptSteps.h"
#include "gallery/widgets/Look.h"

namespace gallery {

/// A box with the effects of the script language, and a slider for the time that one takes. One
/// thread at a time.
class EffectChoice {
public:
    static constexpr int wipe = 8;       ///< the place of "wipe LR" in the box
    static constexpr int longest = 2000; ///< milliseconds

    /// False, with `GetLastError`, when a control cannot be made.
    bool Create(HWND parent);

    ScriptEffect Chosen() const;
    void Choose(int effect, int milliseconds);

    /// To be called when the slider was moved or the language is another: its label has the time.
    void ShowTime() const;

    HWND Box() const { return box; }
    HWND TimeLabel() const { return timeLabel; }
    HWND Slider() const { return slider; }
    /// Wide enough for each time.
    int LabelWidth(const Look& look) const;

private:
    HWND box = nullptr;
    HWND timeLabel = nullptr;
    HWND slider = nullptr;
};

} // namespace gallery

#endif
