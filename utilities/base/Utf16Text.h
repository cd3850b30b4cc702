#ifndef VTRUTILS_BASE_UTF16TEXT_H
#define VTRUTILS_BASE_UTF16TEXT_H

#include <cstddef>

/// UTF-16 little-endian in buffers at any address: how it is told from single-byte text, and how it
/// is reduced to single bytes. Private to the library. Immutable and safe.

namespace vtr {

/// True when the text starts with the byte-order mark FF FE. Requires: two bytes.
bool HasByteOrderMark(const unsigned char* data);

/// What the bytes from `from` on say of themselves, taken in pairs: `offset` is that of the first
/// pair of two zeros (`zero`) or of two other bytes (`wide`), or the end when there is neither
/// (`narrow`).
enum class Utf16Pair { zero, wide, narrow };
Utf16Pair FirstTellingPair(const unsigned char* data, std::size_t from, std::size_t length,
                           std::size_t& offset);

/// True for a text with the byte-order mark, and for one in which no pair without a zero byte
/// precedes the first pair of zeros. With `requireTerminator`, a text without a pair of zeros is
/// refused. False for null and for less than two bytes.
bool LooksLikeUtf16(const unsigned char* data, std::size_t length, bool requireTerminator);

/// Zeroes the destination and writes the low byte of each unit there, without the byte-order mark,
/// until two zero units in a row. Requires: destination != nullptr, `units` units at `source`,
/// and room for the terminator if that is reserved.
void KeepLowBytes(const wchar_t* source, std::size_t units, char* destination,
                  std::size_t destinationSize, bool reserveTerminator);

} // namespace vtr

#endif
