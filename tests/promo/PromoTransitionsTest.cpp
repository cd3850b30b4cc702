#include "utilities/promo/PromoTransitions.h"

#include "tests/support/Dice.h"
#include "tests/support/GuardedBuffer.h"
#include "utilities/promo/PromoEffects.h"

#include <gtest/gtest.h>

namespace {

constexpr COLORREF color = RGB(201, 77, 3);

/// A frame whose first row ends where the stride says and whose last byte is followed by a page
/// that may not be touched.
struct Frame {
    Frame(int frameWidth, int frameHeight)
        : width(frameWidth), height(frameHeight),
          stride(static_cast<std::size_t>((frameWidth * 3 + 3) / 4 * 4)),
          bytes(stride * static_cast<std::size_t>(frameHeight)) {}

    /// Counted from the top.
    unsigned char& At(int x, int y, int channel) {
        const auto row = static_cast<std::size_t>(height - 1 - y);
        return reinterpret_cast<unsigned char*>(
            bytes.Data())[row * stride + static_cast<std::size_t>(x * 3 + channel)];
    }
    unsigned char* Pixels() { return reinterpret_cast<unsigned char*>(bytes.Data()); }

    int width;
    int height;
    std::size_t stride;
    GuardedBytes bytes;
};

bool IsInside(int at, int extent, int size) {
    const int first = (extent - size) / 2;
    return at >= first && at < first + size;
}

/// One channel of one pixel, from the description of the effects.
int Expected(int effect, int p, int x, int y, int width, int height, int previous, int next,
             int colored) {
    const auto mix = [](int from, int to, int percent) {
        return from * (100 - percent) / 100 + to * percent / 100;
    };
    const int grown = width * p / 100;
    switch (effect) {
    case 2:
    case 3:
        return mix(previous, next, p);
    case 4:
        return p <= 50 ? mix(previous, colored, 2 * p) : mix(next, colored, 200 - 2 * p);
    case 5:
        return p < 100 ? mix(previous, colored, p) : next;
    case 6:
        return IsInside(x, width, grown) && IsInside(y, height, height * p / 100) ? next : previous;
    case 7:
        return IsInside(x, width, width * (100 - p) / 100) &&
                       IsInside(y, height, height * (100 - p) / 100)
                   ? previous
                   : next;
    case 8:
    case 10:
        return x < grown ? next : previous;
    case 9:
    case 11:
        return x >= width - grown ? next : previous;
    default:
        return next;
    }
}

} // namespace

TEST(PromoTransitions, EveryPixelIsThatOfTheFormula) {
    Dice dice(61);
    for (const int width : {1, 2, 3, 4, 5, 6, 7, 8, 9, 86}) {
        const int height = 1 + 2 * dice.Below(4);
        Frame previous(width, height);
        Frame next(width, height);
        for (Frame* frame : {&previous, &next}) {
            for (std::size_t i = 0; i < frame->stride * static_cast<std::size_t>(height); ++i)
                frame->Pixels()[i] =
                    static_cast<unsigned char>(i < 258 ? static_cast<int>(i) : dice.Below(256));
        }
        const int channels[] = {GetBValue(color), GetGValue(color), GetRValue(color)};
        for (int effect = 0; effect < 12; ++effect) {
            for (int p = 0; p <= 100; ++p) {
                Frame output(width, height);
                vtr::ComposeTransition(effect,
                                       {previous.Pixels(), next.Pixels(), output.Pixels(), color,
                                        width, height, output.stride},
                                       p);
                for (int y = 0; y < height; ++y) {
                    for (int i = 0; i < width * 3; ++i)
                        ASSERT_EQ(output.At(i / 3, y, i % 3),
                                  Expected(effect, p, i / 3, y, width, height,
                                           previous.At(i / 3, y, i % 3), next.At(i / 3, y, i % 3),
                                           channels[i % 3]))
                            << "effect " << effect << " at " << p << " %, " << width << "x"
                            << height << ", byte " << i << " of row " << y;
                    for (int i = width * 3; i < static_cast<int>(output.stride); ++i)
                        ASSERT_EQ(output.At(0, y, i), 0xCD) << "after row " << y;
                }
            }
        }
    }
}
