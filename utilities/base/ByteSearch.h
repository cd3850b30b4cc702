#ifndef VTRUTILS_BASE_BYTESEARCH_H
#define VTRUTILS_BASE_BYTESEARCH_H

#include <cstddef>

/// `std::strlen` and `std::memchr`, eight bytes at a time: those of the C run-time take one at a
/// time in some of its versions. Private to the library. Immutable and safe.

namespace vtr {

std::size_t TextLength(const char* text);

/// The first one in [text, end), or null.
const char* FindByte(const char* text, const char* end, char wanted);

} // namespace vtr

#endif
