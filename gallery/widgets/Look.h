#ifndef VTRUTILS_GALLERY_WIDGETS_LOOK_H
#define VTRUTILS_GALLERY_WIDGETS_LOOK_H

#include "common/Handles.h"

#include <string>

namespace gallery {

/// How `DrawTextW` breaks a text into lines: at any character where a word is too long, as that of
/// a path or of a language without spaces is.
constexpr UINT wrappedTextFormat = DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX;

/// How large things are in one window: its resolution and the user's message font for it. Layouts
/// count in units of 1/96 inch and in heights and widths of texts. One thread at a time.
class Look {
public:
    /// Takes resolution and font anew. Requires: a window.
    void Update(HWND window);
    void Update(unsigned newDpi);
    /// The character set of the fonts that `Update` takes from now on.
    void SetCharset(unsigned char newCharset) { charset = newCharset; }

    HFONT Font() const { return font.Get(); }
    /// Half as large again.
    HFONT HeadingFont() const { return headingFont.Get(); }
    int Pixels(int units) const { return MulDiv(units, static_cast<int>(dpi), 96); }

    /// Heights of a line of text, and of an edit field and a button (or a row of both) that hold
    /// one.
    int Line() const { return lineHeight; }
    int Field() const { return lineHeight + Pixels(3) + 2 * GetSystemMetrics(SM_CYEDGE); }
    int Row() const { return lineHeight + Pixels(8); }
    int TextWidth(const std::wstring& text) const;
    /// Of the text that a control shows.
    int TextWidth(HWND control) const;
    /// Of the text in lines of at most that width.
    int WrappedHeight(const std::wstring& text, int width) const;
    /// Wide enough for the text of a button, and never narrower than a usual one.
    int ButtonWidth(HWND button) const;

private:
    unsigned dpi = 96;
    unsigned char charset = DEFAULT_CHARSET;
    int lineHeight = 0;
    vtr::FontHandle font;
    vtr::FontHandle headingFont;
};

} // namespace gallery

#endif
