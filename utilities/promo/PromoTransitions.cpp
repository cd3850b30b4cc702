#include "utilities/promo/PromoTransitions.h"

#include "common/Require.h"
#include "utilities/promo/PromoBlend.h"
#include "utilities/promo/PromoEffects.h"

#include <cstring>

namespace vtr {

namespace {

constexpr int bytesPerPixel = 3;

std::size_t Bytes(int pixels) {
    return static_cast<std::size_t>(pixels) * bytesPerPixel;
}

/// Copies a rectangle; `bottom` counts from the bottom row up.
void CopyArea(const TransitionFrames& frames, const unsigned char* from, int left, int bottom,
              int width, int height) {
    for (int row = bottom; row < bottom + height; ++row) {
        const std::size_t place = static_cast<std::size_t>(row) * frames.stride + Bytes(left);
        std::memcpy(frames.output + place, from + place, Bytes(width));
    }
}

void CopyFrame(const TransitionFrames& frames, const unsigned char* from) {
    CopyArea(frames, from, 0, 0, frames.width, frames.height);
}

/// A frame of `from` with a rectangle of `inside` in the middle.
void ComposeCentre(const TransitionFrames& frames, const unsigned char* from,
                   const unsigned char* inside, int percent) {
    const int width = frames.width * percent / 100;
    const int height = frames.height * percent / 100;
    const int top = (frames.height - height) / 2;
    CopyFrame(frames, from);
    CopyArea(frames, inside, (frames.width - width) / 2, frames.height - height - top, width,
             height);
}

/// The leftmost columns of one frame, the others of another.
void ComposeColumns(const TransitionFrames& frames, const unsigned char* left,
                    const unsigned char* right, int columns) {
    CopyArea(frames, left, 0, 0, columns, frames.height);
    CopyArea(frames, right, columns, 0, frames.width - columns, frames.height);
}

/// previous * (100 - progress) / 100 + next * progress / 100.
void CrossFade(const TransitionFrames& frames, int progress) {
    if (progress == 0 || progress == 100) {
        CopyFrame(frames, progress == 0 ? frames.previous : frames.next);
        return;
    }
    const PercentOfSixteen ofPrevious(100 - progress);
    const PercentOfSixteen ofNext(progress);
    const std::size_t length = Bytes(frames.width);
    for (int row = 0; row < frames.height; ++row) {
        const std::size_t place = static_cast<std::size_t>(row) * frames.stride;
        const unsigned char* previous = frames.previous + place;
        const unsigned char* next = frames.next + place;
        unsigned char* output = frames.output + place;
        std::size_t i = 0;
        for (; i + 16 <= length; i += 16)
            StoreSixteen(output + i, _mm_add_epi8(ofPrevious(LoadSixteen(previous + i)),
                                                  ofNext(LoadSixteen(next + i))));
        for (; i < length; ++i)
            output[i] = static_cast<unsigned char>(PercentOf(previous[i], 100 - progress) +
                                                   PercentOf(next[i], progress));
    }
}

/// image * (100 - percent) / 100 + colour * percent / 100.
void FadeToColor(const TransitionFrames& frames, const unsigned char* image, int percent) {
    if (percent == 0) {
        CopyFrame(frames, image);
        return;
    }
    const unsigned char color[bytesPerPixel] = {PercentOf(GetBValue(frames.color), percent),
                                                PercentOf(GetGValue(frames.color), percent),
                                                PercentOf(GetRValue(frames.color), percent)};
    constexpr std::size_t run = 16 * bytesPerPixel; // sixteen pixels begin with the same channel
    unsigned char colors[run];
    for (std::size_t i = 0; i < run; ++i)
        colors[i] = color[i % bytesPerPixel];
    const __m128i sixteenPixels[] = {LoadSixteen(colors), LoadSixteen(colors + 16),
                                     LoadSixteen(colors + 32)};
    const PercentOfSixteen ofImage(100 - percent);
    const std::size_t length = Bytes(frames.width);
    for (int row = 0; row < frames.height; ++row) {
        const std::size_t place = static_cast<std::size_t>(row) * frames.stride;
        const unsigned char* from = image + place;
        unsigned char* output = frames.output + place;
        std::size_t i = 0;
        for (; i + run <= length; i += run) {
            for (std::size_t part = 0; part < bytesPerPixel; ++part)
                StoreSixteen(
                    output + i + part * 16,
                    _mm_add_epi8(ofImage(LoadSixteen(from + i + part * 16)), sixteenPixels[part]));
        }
        for (; i < length; ++i)
            output[i] = static_cast<unsigned char>(PercentOf(from[i], 100 - percent) +
                                                   color[i % bytesPerPixel]);
    }
}

/// The previous frame fades to the colour, then the next one in from it.
void FadeThroughColor(const TransitionFrames& frames, int progress) {
    if (progress <= 50)
        FadeToColor(frames, frames.previous, 2 * progress);
    else
        FadeToColor(frames, frames.next, 200 - 2 * progress);
}

/// The previous frame fades to the colour, then the next one is there.
void FadeAndPop(const TransitionFrames& frames, int progress) {
    if (progress < 100)
        FadeToColor(frames, frames.previous, progress);
    else
        CopyFrame(frames, frames.next);
}

} // namespace

void ComposeTransition(int effect, const TransitionFrames& frames, int progress) {
    VTR_REQUIRE(progress >= 0 && progress <= 100);
    const int columns = frames.width * progress / 100;
    switch (effect) {
    case promoColorFade:
    case promoFramesCrossfade:
        CrossFade(frames, progress);
        break;
    case promoFramesFade:
        FadeThroughColor(frames, progress);
        break;
    case promoFadePop:
        FadeAndPop(frames, progress);
        break;
    case promoRectOut:
        ComposeCentre(frames, frames.previous, frames.next, progress);
        break;
    case promoRectIn:
        ComposeCentre(frames, frames.next, frames.previous, 100 - progress);
        break;
    case promoWipeRight:
    case promoColorWipeRight:
        ComposeColumns(frames, frames.next, frames.previous, columns);
        break;
    case promoWipeLeft:
    case promoColorWipeLeft:
        ComposeColumns(frames, frames.previous, frames.next, frames.width - columns);
        break;
    default:
        CopyFrame(frames, frames.next);
    }
}

} // namespace vtr
