#include "utilities/promo/PromoTransitions.h"

#include "tests/support/Dice.h"
#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>

namespace {

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
    const auto isInCentre = [&](int percent) {
        return IsInside(x, width, width * percent / 100) &&
               IsInside(y, height, height * percent / 100);
    };
    switch (effect) {
    case 2:
    case 3:
        return mix(previous, next, p);
    case 4:
        return p <= 50 ? mix(previous, colored, 2 * p) : mix(next, colored, 200 - 2 * p);
    case 5:
        return p < 100 ? mix(previous, colored, p) : next;
    case 6:
        return isInCentre(p) ? next : previous;
    case 7:
        return isInCentre(100 - p) ? previous : next;
    default: // wipes, to the right and to the left
        const int place = effect % 2 == 0 ? x : width - 1 - x;
        return effect < 2 || place < width * p / 100 ? next : previous;
    }
}

unsigned char* Pixels(GuardedBytes& bytes) {
    return reinterpret_cast<unsigned char*>(bytes.Data());
}

} // namespace

TEST(PromoTransitions, EveryPixelIsThatOfTheFormula) {
    Dice dice(61);
    constexpr int channels[] = {3, 77, 201};
    for (const int width : {1, 2, 3, 4, 5, 6, 7, 8, 9, 86}) {
        const int height = 1 + 2 * dice.Below(4), stride = (width * 3 + 3) / 4 * 4;
        const auto size = static_cast<std::size_t>(stride * height);
        GuardedBytes previous(size), next(size);
        for (GuardedBytes* frame : {&previous, &next}) {
            for (int i = 0; i < stride * height; ++i)
                Pixels(*frame)[i] = static_cast<unsigned char>(i < 258 ? i : dice.Below(256));
        }
        for (int run = 0; run < 12 * 101; ++run) {
            const int effect = run / 101, p = run % 101;
            GuardedBytes output(size);
            vtr::ComposeTransition(effect,
                                   {Pixels(previous), Pixels(next), Pixels(output),
                                    RGB(channels[2], channels[1], channels[0]), width, height,
                                    static_cast<std::size_t>(stride)},
                                   p);
            for (int i = 0; i < stride * height; ++i) {
                const int column = i % stride, y = height - 1 - i / stride;
                ASSERT_EQ(Pixels(output)[i],
                          column >= width * 3 ? 0xCD // after the row
                                              : Expected(effect, p, column / 3, y, width, height,
                                                         Pixels(previous)[i], Pixels(next)[i],
                                                         channels[column % 3]))
                    << "effect " << effect << " at " << p << " %, " << width << "x" << height
                    << ", byte " << column << " of row " << y;
            }
        }
    }
}
