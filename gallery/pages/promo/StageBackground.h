#ifndef VTRUTILS_GALLERY_PAGES_PROMO_STAGEBACKGROUND_H
#define VTRUTILS_GALLERY_PAGES_PROMO_STAGEBACKGROUND_H

#include <windows.h>

namespace gallery {

/// Draws a moving background as it is after that time: "meters", the level meters of a mixing
/// desk, or "waves". It is drawn faintly over the colour that is there, so that any text can be
/// read on it. Does nothing for another name. Immutable and safe.
void DrawStageBackground(HDC dc, const RECT& area, const char* name, unsigned milliseconds);

} // namespace gallery

#endif
