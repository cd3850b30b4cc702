#ifndef VTRUTILS_PROMO_PROMOCOLORS_H
#define VTRUTILS_PROMO_PROMOCOLORS_H

#include <windows.h>

namespace vtr {

/// The colour that a script names: a decimal number, a colour of the system or one of a few names,
/// without regard to case. False, with the colour as it was, for any other text; a negative number
/// is true and leaves the colour, too. Private to the library. Immutable and safe.
bool PromoColor(const char* text, COLORREF& color);

} // namespace vtr

#endif
