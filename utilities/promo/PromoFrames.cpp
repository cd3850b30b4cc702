// The frames of a transition: the source, the new message and what is between them.

#include "utilities/promo/PromoInternals.h"
#include "utilities/promo/PromoTransitions.h"

#include <cstdlib>
#include <initializer_list>

namespace {

using Internals = vtr::Internals<CPromoScript>;
using vtr::PromoFrame;

constexpr std::size_t mostColors = 256;

std::size_t Stride(LONG width) {
    return (static_cast<std::size_t>(width) * 24 + 31) / 32 * 4;
}

void FreeFrame(PromoFrame& frame) {
    vtr::FreeField<vtr::BitmapHandle>(frame.bitmap);
    frame.pixels = nullptr;
}

/// The pixels of a frame as a context.
class FrameContext {
public:
    explicit FrameContext(const PromoFrame& frame)
        : dc(CreateCompatibleDC(/*hdc=*/nullptr)), selected(dc.Get(), frame.bitmap) {}
    HDC Get() const { return dc.Get(); }

private:
    vtr::MemoryDc dc;
    vtr::SelectedObject selected;
};

} // namespace

void Internals::FreeFrames(CPromoScript& script) {
    for (PromoFrame* frame : {&script.sourceFrame, &script.newFrame, &script.outputFrame})
        FreeFrame(*frame);
}

/// A frame of that size, the present one if it fits. All three have one size.
bool Internals::MakeFrame(CPromoScript& script, PromoFrame& frame, SIZE size) {
    if (script.description == nullptr)
        script.description = static_cast<BITMAPINFO*>(
            std::calloc(1, sizeof(BITMAPINFOHEADER) + mostColors * sizeof(RGBQUAD)));
    if (script.description == nullptr)
        return false;
    BITMAPINFOHEADER& header = script.description->bmiHeader;
    if (header.biWidth != size.cx || header.biHeight != size.cy)
        FreeFrames(script);
    if (frame.pixels != nullptr)
        return true;
    header = {};
    header.biSize = sizeof header;
    header.biWidth = size.cx;
    header.biHeight = size.cy;
    header.biPlanes = 1;
    header.biBitCount = 24;
    header.biCompression = BI_RGB;
    header.biSizeImage = static_cast<DWORD>(Stride(size.cx) * static_cast<std::size_t>(size.cy));
    void* pixels = nullptr;
    frame.bitmap = CreateDIBSection(/*hdc=*/nullptr, script.description, DIB_RGB_COLORS, &pixels,
                                    /*hSection=*/nullptr, /*offset=*/0);
    frame.pixels = static_cast<unsigned char*>(pixels);
    if (frame.bitmap == nullptr || pixels == nullptr)
        FreeFrame(frame);
    return frame.pixels != nullptr;
}

bool Internals::CaptureFrame(CPromoScript& script, PromoFrame& frame, HDC dc, SIZE size) {
    return MakeFrame(script, frame, size) &&
           BitBlt(FrameContext(frame).Get(), 0, 0, size.cx, size.cy, dc, 0, 0, SRCCOPY) != FALSE;
}

bool Internals::FillSource(CPromoScript& script, SIZE size) {
    if (!MakeFrame(script, script.sourceFrame, size))
        return false;
    if (script.transitionBrush == nullptr)
        script.transitionBrush = CreateSolidBrush(script.transitionColor & 0xFFFFFF);
    const RECT whole{0, 0, size.cx, size.cy};
    return script.transitionBrush != nullptr &&
           FillRect(FrameContext(script.sourceFrame).Get(), &whole, script.transitionBrush) != 0;
}

/// Makes what is still missing. False when there is nothing between the messages, because the
/// effect has no frames or they cannot be made.
bool Internals::PrepareFrames(CPromoScript& script, HDC dc, SIZE size) {
    if (script.effect == promoNone)
        return false;
    if (EffectUsesSolidColorSource(script.effect) && !script.solidSourceReady)
        script.solidSourceReady = FillSource(script, size);
    if (!script.newFrameCaptured)
        script.newFrameCaptured = CaptureFrame(script, script.newFrame, dc, size);
    return script.newFrameCaptured && MakeFrame(script, script.outputFrame, size) &&
           script.sourceFrame.pixels != nullptr && script.newFrame.pixels != nullptr;
}

void Internals::ShowProgress(const CPromoScript& script, HDC dc, SIZE size, int progress) {
    GdiFlush(); // what it still holds back would come after what is written here
    ComposeTransition(script.effect,
                      {script.sourceFrame.pixels, script.newFrame.pixels, script.outputFrame.pixels,
                       script.transitionColor, static_cast<int>(size.cx), static_cast<int>(size.cy),
                       Stride(size.cx)},
                      progress);
    BitBlt(dc, 0, 0, size.cx, size.cy, FrameContext(script.outputFrame).Get(), 0, 0, SRCCOPY);
}
