#include "gallery/Look.h"

#include <algorithm>
#include <cwchar>

namespace gallery {

namespace {

/// Null on systems that lack the function.
template <class Function>
Function UserFunction(const char* name) {
    const HMODULE user = GetModuleHandleW(L"user32.dll");
    // Through void*: the result is a function of another type by contract.
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(user != nullptr ? GetProcAddress(user, name) : nullptr));
}

unsigned SystemDpi() {
    const vtr::MemoryDc screen(CreateICW(L"DISPLAY", nullptr, nullptr, nullptr));
    const int dpi = GetDeviceCaps(screen.Get(), LOGPIXELSY);
    return dpi > 0 ? static_cast<unsigned>(dpi) : 96;
}

unsigned DpiOf(HWND window) {
    static const auto getDpi = UserFunction<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    const unsigned dpi = getDpi != nullptr ? getDpi(window) : 0;
    return dpi > 0 ? dpi : SystemDpi();
}

/// False leaves the font to the caller.
bool MessageFont(unsigned dpi, LOGFONTW& result) {
    static const auto forDpi =
        UserFunction<BOOL(WINAPI*)(UINT, UINT, void*, UINT, UINT)>("SystemParametersInfoForDpi");
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
    Update(DpiOf(window));
}

void Look::Update(unsigned newDpi) {
    dpi = newDpi;
    LOGFONTW description{};
    if (MessageFont(dpi, description))
        font.Reset(CreateFontIndirectW(&description));
    TEXTMETRICW metrics{};
    lineHeight = GetTextMetricsW(Measure(Font()).Dc(), &metrics) ? metrics.tmHeight : Pixels(16);
}

int Look::TextWidth(const wchar_t* text) const {
    SIZE size{};
    GetTextExtentPoint32W(Measure(Font()).Dc(), text, static_cast<int>(std::wcslen(text)), &size);
    return size.cx;
}

int Look::ButtonWidth(const wchar_t* text) const {
    return std::max(Pixels(80), TextWidth(text) + Pixels(24));
}

} // namespace gallery
