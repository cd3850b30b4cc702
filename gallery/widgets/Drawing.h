#ifndef VTRUTILS_GALLERY_WIDGETS_DRAWING_H
#define VTRUTILS_GALLERY_WIDGETS_DRAWING_H

#include <windows.h>

namespace gallery {

/// What several pictures are drawn with. Immutable and safe.

/// `part` of 16 parts of the first colour, the rest of the second.
COLORREF Mix(COLORREF first, COLORREF second, int part);

void Fill(HDC dc, const RECT& area, COLORREF colour);

} // namespace gallery

#endif
