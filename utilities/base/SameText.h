#ifndef VTRUTILS_BASE_SAMETEXT_H
#define VTRUTILS_BASE_SAMETEXT_H

#include <cstddef>

/// Names and keys without regard to case: the order, equality and sign of `_mbsicmp` in the current
/// multibyte code page, but characters below 0x80, which are the same in every code page, are
/// compared without a call. A lead byte at the end of a text is a character of its own; the reading
/// stops there. Null counts as "". Private to the library. Immutable and safe.

namespace vtr {

/// Below 0, 0 or above 0.
int CompareText(const char* left, const char* right);

bool SameText(const char* left, const char* right);

/// Texts that are the same have the same hash, while code page and locale stay as they are.
std::size_t HashText(const char* text);

/// One character without regard to case, and past it.
struct FoldedCharacter {
    unsigned code;
    const char* next;
};

/// The character at `text` as `_mbsicmp` sees it; code 0, and no step, at the terminator.
FoldedCharacter FoldCharacter(const char* text, bool multibyte);

} // namespace vtr

#endif
