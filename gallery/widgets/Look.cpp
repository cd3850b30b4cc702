#include "gallery/widgets/Look.h"

#include "common/DynamicFunction.h"
#include "common/Require.h"
#include "gallery/widgets/Controls.h"

#include <algorithm>

namespace gallery {

namespace {

vtr::DynamicFunction<UINT WINAPI(HWND)> dpiForWindow("user32.dll", "GetDpiForWindow");
vtr::DynamicFunction<BOOL WINAPI(UINT, UINT, void*, UINT, UINT)>
    parametersForDpi("user32.dll", "SystemParametersInfoForDpi");

unsigned SystemDpi() {
    const vtr::MemoryDc screen(CreateICW(L"DISPLAY", nullptr, nullptr, nullptr));
    const int dpi = GetDeviceCaps(screen.Get(), LOGPIXELSY);
    return dpi > 0 ? static_cast<unsigned>(dpi) : 96;
}

unsigned DpiOf(HWND window) {
    auto* getDpi = dpiForWindow.Get();
    const unsigned dpi = getDpi != nullptr ? getDpi(window) : 0;
    return dpi > 0 ? dpi : SystemDpi();
}

/// False leaves the font to the caller.
bool MessageFont(unsigned dpi, LOGFONTW& result) {
    auto* forDpi = parametersForDpi.Get();
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (forDpi != nullptr &&
        forDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, /*fWinIni=*/0, dpi)) {
        result = metrics.lfMessageFont;
        return true;
    }
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, /*fWinIni=*/0))
        return false;
    result = metrics.lfMessageFont;
    result.lfHeight = MulDiv(result.lfHeight, static_cast<int>(dpi), static_cast<int>(SystemDpi()));
    return true;
}

/// A device context of the screen's kind that measures texts in one font.
class Measure {
public:
    explicit Measure(HFONT font)
        : dc(CreateCompatibleDC(/*hdc=*/nullptr)), selected(dc.Get(), font) {}
    HDC Dc() const { return dc.Get(); }

private:
    vtr::MemoryDc dc;
    vtr::SelectedObject selected;
};

} // namespace

void Look::Update(HWND window) {
    VTR_REQUIRE(IsWindow(window) != FALSE);
    Update(DpiOf(window));
}

void Look::Update(unsigned newDpi) {
    dpi = newDpi;
    LOGFONTW description{};
    const bool known = MessageFont(dpi, description);
    description.lfCharSet = charset;
    if (known) {
        font.Reset(CreateFontIndirectW(&description));
        // Not bold: fonts of some languages are not.
        description.lfHeight = MulDiv(description.lfHeight, 3, 2);
        headingFont.Reset(CreateFontIndirectW(&description));
    }
    TEXTMETRICW metrics{};
    lineHeight = GetTextMetricsW(Measure(Font()).Dc(), &metrics) ? metrics.tmHeight : Pixels(16);
}

int Look::TextWidth(const std::wstring& text) const {
    SIZE size{};
    GetTextExtentPoint32W(Measure(Font()).Dc(), text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

int Look::TextWidth(HWND control) const {
    // Some glyphs reach beyond their place.
    return TextWidth(TextOf(control)) + Pixels(2);
}

int Look::WrappedHeight(const std::wstring& text, int width) const {
    RECT area{0, 0, std::max(width, 1), 0};
    DrawTextW(Measure(Font()).Dc(), text.data(), static_cast<int>(text.size()), &area,
              wrappedTextFormat | DT_CALCRECT);
    return std::max<int>(area.bottom, lineHeight);
}

int Look::ButtonWidth(HWND button) const {
    return std::max(Pixels(80), TextWidth(button) + Pixels(24));
}

} // namespace gallery
