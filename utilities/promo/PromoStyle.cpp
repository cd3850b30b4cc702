#include "utilities/promo/PromoStyle.h"

#include "utilities/base/SameText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/promo/PromoColors.h"
#include "utilities/promo/PromoDocument.h"
#include "utilities/promo/PromoEffects.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <iterator>

namespace vtr {

namespace {

constexpr const char* promoEffectNames[] = {
    "none",           "per-char delay",
    "color fade",     "frames crossfade",
    "frames fade",    "color frame fade pop",
    "color rect out", "color rect in",
    "wipe LR",        "wipe RL",
    "color wipe LR",  "color wipe RL",
};
static_assert(std::size(promoEffectNames) == promoColorWipeLeft + 1);

constexpr const char* horizontalNames[] = {"left", "center", "right"};
constexpr const char* verticalNames[] = {"top", "center", "bottom"};

/// By PromoSide.
constexpr const char* pixelKeys[] = {"left margin", "top margin", "right margin", "bottom margin"};
constexpr const char* percentKeys[] = {"left pct margin", "top pct margin", "right pct margin",
                                       "bottom pct margin"};

/// Sets the number of the name that is the key's value, if any is.
template <std::size_t count>
void ReadName(const PromoSection& section, const char* key, const char* const (&names)[count],
              int& number) {
    char value[260];
    if (!section.Text(key, value))
        return;
    for (std::size_t i = 0; i < count; ++i) {
        if (SameText(value, names[i]))
            number = static_cast<int>(i);
    }
}

/// Sets one of two values where the key's value is "1" or "0".
template <class Value>
void ReadSwitch(const PromoSection& section, const char* key, Value& field, Value on, Value off) {
    char value[260];
    if (!section.Text(key, value))
        return;
    if (std::strcmp(value, "1") == 0)
        field = on;
    else if (std::strcmp(value, "0") == 0)
        field = off;
}

void ReadColor(const PromoSection& section, const char* key, COLORREF& color) {
    char value[260];
    if (section.Text(key, value))
        PromoColor(value, color);
}

void ReadFont(const PromoSection& section, LOGFONTA& font) {
    char face[260];
    if (section.Text("typeface", face) && strnlen(face, LF_FACESIZE) < LF_FACESIZE)
        SetPromoFace(font, face);
    int size = 0;
    if (section.Natural("font size", size))
        font.lfHeight = -size;
    char sizeHere[32];
    std::snprintf(sizeHere, sizeof sizeHere, "font size@%d", GetSystemMetrics(SM_CXFULLSCREEN));
    if (section.Natural(sizeHere, size))
        font.lfHeight = -size;
    ReadSwitch<LONG>(section, "bold", font.lfWeight, FW_BOLD, FW_NORMAL);
    ReadSwitch<BYTE>(section, "italic", font.lfItalic, TRUE, FALSE);
    ReadSwitch<BYTE>(section, "underline", font.lfUnderline, TRUE, FALSE);
}

UINT TextFormat(int horizontal) {
    constexpr UINT always = DT_WORDBREAK | DT_NOPREFIX;
    constexpr UINT byAlignment[] = {always, always | DT_CENTER, always | DT_RIGHT};
    return byAlignment[horizontal];
}

/// A section that has only one of the two forms turns the other off.
void ReadMargin(const PromoSection& section, PromoSide side, int& pixels, int& percent) {
    const bool hasPixels = section.Number(pixelKeys[side], pixels);
    const bool hasPercent = section.Number(percentKeys[side], percent);
    if (hasPercent && !hasPixels)
        pixels = 0;
    else if (hasPixels && !hasPercent)
        percent = 0;
}

void ReadNamedStyle(const PromoStyle& style, const CIniFileReader& document,
                    const PromoSection& step) {
    char name[260];
    if (!step.Text("style", name))
        return;
    char section[272];
    std::snprintf(section, sizeof section, "style.%s", name);
    style.Read(document, section, 0);
}

} // namespace

void PromoStyle::Reset() const {
    SetPromoFace(font, "Arial");
    font.lfHeight = -14;
    font.lfWeight = FW_NORMAL;
    font.lfItalic = FALSE;
    font.lfUnderline = FALSE;
    horizontal = 0;
    vertical = 0;
    backgroundColor = GetSysColor(COLOR_BTNFACE);
    textColor = GetSysColor(COLOR_BTNTEXT);
    std::fill(std::begin(marginPixels), std::end(marginPixels), 0);
    std::fill(std::begin(marginPercents), std::end(marginPercents), 0);
    hostBackground = false;
    hostBackgroundName[0] = '\0';
    refreshPeriod = 0;
    transitionTime = 0;
    effect = promoNone;
    transitionColor = 0;
}

void PromoStyle::Read(const CIniFileReader& document, const char* section, int index) const {
    if (section == nullptr || section[0] == '\0')
        return;
    const PromoSection values(document, section, index);
    ReadFont(values, font);
    ReadName(values, "horz", horizontalNames, horizontal);
    ReadName(values, "vert", verticalNames, vertical);
    textFormat = TextFormat(horizontal);
    ReadColor(values, "text color", textColor);
    ReadColor(values, "bg color", backgroundColor);
    for (const PromoSide side : {promoLeft, promoRight, promoTop, promoBottom})
        ReadMargin(values, side, marginPixels[side], marginPercents[side]);
    int turnedOn = 0;
    if (values.Number("owner draw bg", turnedOn))
        hostBackground = turnedOn == 1;
    char name[260];
    if (values.Text("owner draw bg name", name))
        StoreCut(name, hostBackgroundName, sizeof hostBackgroundName);
    values.Number("owner draw bg refresh", refreshPeriod);
    values.Number("transition time", transitionTime);
    ReadColor(values, "transition color", transitionColor);
    ReadName(values, "transition effect", promoEffectNames, effect);
}

void PromoStyle::Resolve(const CIniFileReader& document, const char* script, int step,
                         int subStep) const {
    const NumberedName section(script, step);
    Reset();
    Read(document, "general", 0);
    ReadNamedStyle(*this, document, PromoSection(document, section.Get()));
    Read(document, section.Get(), 0);
    ReadNamedStyle(*this, document, PromoSection(document, section.Get(), subStep));
    Read(document, section.Get(), subStep);
}

void SetPromoFace(LOGFONTA& font, const char* face) {
    std::memset(font.lfFaceName, 0, sizeof font.lfFaceName);
    StoreCut(face, font.lfFaceName, sizeof font.lfFaceName);
}

int PromoMargin(int pixels, int percent, int extent) {
    const long long share = static_cast<long long>(extent) * percent / 100;
    return static_cast<int>(std::clamp<long long>(share, pixels, INT_MAX));
}

} // namespace vtr
