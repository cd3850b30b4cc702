#ifndef VTRUTILS_GALLERY_WIDGETS_READER_H
#define VTRUTILS_GALLERY_WIDGETS_READER_H

#include "gallery/widgets/Look.h"

#include <string>

namespace gallery {

/// Shows a text to read and copy in a window over its owner, which is used again when the user has
/// closed that. `dialog` is a template with two controls: the text and the button, with the ids
/// `textId` and IDOK.
void ShowReader(HWND owner, const Look& look, int dialog, int textId, const std::wstring& title,
                const std::wstring& text, const std::wstring& closeText);

} // namespace gallery

#endif
