#ifndef VTRUTILS_PROMO_PROMOTRANSITIONS_H
#define VTRUTILS_PROMO_PROMOTRANSITIONS_H

#include <cstddef>
#include <windows.h>

namespace vtr {

/// Frames of 24 bits a pixel, blue, green, red, the bottom row first. Rows are `stride` bytes
/// apart; what follows the pixels of a row is neither read nor written. The buffers do not overlap.
struct TransitionFrames {
    const unsigned char* previous; ///< or one of the transition colour, for the effects that use it
    const unsigned char* next;
    unsigned char* output;
    COLORREF color;
    int width;
    int height;
    std::size_t stride;
};

/// Writes the frame that shows the effect at a progress from 0 to 100. Effects 0 and 1 have no
/// frames between: `next`. Divisions by 100 truncate, each term by itself. Knows neither window nor
/// time. Private to the library. Immutable and safe.
void ComposeTransition(int effect, const TransitionFrames& frames, int progress);

} // namespace vtr

#endif
