#ifndef VTRUTILS_TEXT_STORECUT_H
#define VTRUTILS_TEXT_STORECUT_H

namespace vtr {

/// Copies the text and its terminator, cut to `size - 1` characters. Requires: size > 0. Private to
/// the library. Immutable and safe.
template <class Char>
void StoreCut(const Char* text, Char* buffer, unsigned size) {
    // Most texts are so short that finding their length and calling `memcpy` takes longer.
    unsigned length = 0;
    for (; length < size - 1 && text[length] != 0; ++length)
        buffer[length] = text[length];
    buffer[length] = 0;
}

} // namespace vtr

#endif
