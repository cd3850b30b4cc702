#include "gallery/widgets/Link.h"

#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"

#include <cstdlib>

namespace gallery {

namespace {

/// A link keeps less of longer texts, and would show another one.
constexpr std::size_t longestText = 511;

/// From 0 to 255, as bright as it looks.
int Brightness(COLORREF colour) {
    return (GetRValue(colour) * 299 + GetGValue(colour) * 587 + GetBValue(colour) * 114) / 1000;
}

/// Some themes have a colour for links that cannot be read on a window's background.
COLORREF LinkColour() {
    const COLORREF link = GetSysColor(COLOR_HOTLIGHT);
    const int background = Brightness(GetSysColor(COLOR_BTNFACE));
    if (std::abs(Brightness(link) - background) >= 96)
        return link;
    return background >= 128 ? RGB(0, 0, 192) : RGB(160, 200, 255);
}

} // namespace

bool Link::Create(HWND parent, int id) {
    label = MakeTextLine(parent, SS_LEFT, id);
    return label != nullptr;
}

void Link::Set(const std::wstring& text) {
    std::string narrow;
    const bool fits = Narrow(text, narrow) && narrow.size() <= longestText;
    SetText(label, fits ? text : L"");
    Update();
}

void Link::Update() {
    std::string narrow;
    Narrow(TextOf(label), narrow);
    link.SubClass(label, narrow.data(), narrow.data(), LinkColour());
}

bool Link::IsUnder(POINT point) const {
    return link.MouseOver(GetParent(label), point) != FALSE;
}

} // namespace gallery
