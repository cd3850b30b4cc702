#ifndef VTRUTILS_PROMO_PROMOSTYLE_H
#define VTRUTILS_PROMO_PROMOSTYLE_H

#include "utilities/text/ini/IniFileReader.h"

#include <windows.h>

namespace vtr {

enum PromoSide { promoLeft, promoTop, promoRight, promoBottom };

/// How a message looks: fields of the script object, and how a script sets them. It knows no
/// window. Private to the library. One thread at a time.
struct PromoStyle {
    LOGFONTA& font;
    COLORREF& backgroundColor;
    COLORREF& textColor;
    int& horizontal;
    int& vertical;
    UINT& textFormat;
    int (&marginPixels)[4]; ///< by PromoSide
    int (&marginPercents)[4];
    bool& hostBackground;
    char (&hostBackgroundName)[260];
    int& refreshPeriod;
    int& transitionTime;
    int& effect;
    COLORREF& transitionColor;

    /// To what each sub-step begins with. Weight, face and such; character set and quality stay.
    void Reset() const;

    /// Sets what the section has valid values for: plain keys, or for an index above 0 those of
    /// that sub-step. Does nothing for a null or empty section name.
    void Read(const CIniFileReader& document, const char* section, int index) const;

    /// All that applies to a sub-step, the general first.
    void Resolve(const CIniFileReader& document, const char* script, int step, int subStep) const;
};

/// Cuts the face to 31 bytes, and clears what follows it: descriptions are compared byte by byte.
void SetPromoFace(LOGFONTA& font, const char* face);

/// The larger of the pixels and the percentage of the extent, truncated.
int PromoMargin(int pixels, int percent, int extent);

} // namespace vtr

#endif
