#ifndef VTRUTILS_BASE_STORECUT_H
#define VTRUTILS_BASE_STORECUT_H

#include "common/Require.h"

#include <cstddef>
#include <cstring>

/// Copies into buffers of a fixed size. Private to the library. Immutable and safe.

namespace vtr {

/// Copies the text and its terminator, cut to `size - 1` characters, and returns its length. The
/// text may lie in the buffer. Requires: size > 0.
template <class Char>
std::size_t StoreCut(const Char* text, Char* buffer, std::size_t size) {
    VTR_REQUIRE(size > 0);
    // Most texts are so short that finding their length and calling `memcpy` takes longer.
    std::size_t length = 0;
    for (; length < size - 1 && text[length] != 0; ++length)
        buffer[length] = text[length];
    buffer[length] = 0;
    return length;
}

/// For paths, which must not be cut: false, with the buffer unchanged, for a text that does not
/// fit. Null counts as "". The text may lie in the buffer.
template <std::size_t size>
bool StoreWhole(const char* text, char (&buffer)[size]) {
    if (text == nullptr)
        text = "";
    const std::size_t length = strnlen(text, size);
    if (length == size)
        return false;
    std::memmove(buffer, text, length);
    buffer[length] = '\0';
    return true;
}

} // namespace vtr

#endif
