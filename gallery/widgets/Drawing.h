#ifndef VTRUTILS_GALLERY_WIDGETS_DRAWING_H
#define VTRUTILS_GALLERY_WIDGETS_DRAWING_H

#include "gallery/widgets/Look.h"

#include <windows.h>

namespace gallery {

/// What several pictures are drawn with. Immutable and safe.

/// `part` of 16 parts of the first colour, the rest of the second.
COLORREF Mix(COLORREF first, COLORREF second, int part);

/// Of what is selected in a control without the focus: the system's own grey is hard to see beside
/// white.
COLORREF QuietSelection();

void Fill(HDC dc, const RECT& area, COLORREF colour);

/// Answers WM_DRAWITEM of a static control: the text in lines, centred in the height, on a ground
/// of that colour.
void DrawWrapped(const DRAWITEMSTRUCT& item, const Look& look, const std::wstring& text,
                 COLORREF ground);

} // namespace gallery

#endif
