#ifndef VTRUTILS_BASE_OWNEDTEXT_H
#define VTRUTILS_BASE_OWNEDTEXT_H

#include <cstdlib>
#include <memory>

/// Owners of what comes from `malloc`. Private to the library. One thread at a time.

namespace vtr {

struct Free {
    void operator()(void* block) const noexcept { std::free(block); }
};

/// A text, or any other block of plain items.
template <class Char>
using OwnedChars = std::unique_ptr<Char, Free>;

using OwnedText = OwnedChars<char>;
using OwnedBytes = OwnedChars<unsigned char>;

/// Null when memory runs out.
template <class Char>
OwnedChars<Char> AllocateChars(std::size_t count) {
    return OwnedChars<Char>(static_cast<Char*>(std::malloc(count * sizeof(Char))));
}

template <class Char>
bool IsEmptyText(const Char* text) {
    return text == nullptr || *text == 0;
}

/// Makes the target an exact copy of the source: null for a null or empty source and when memory
/// runs out. A present text of the same length is written over; another is freed. Does nothing for
/// a null target or when it points at the source already.
void AssignText(char** target, const char* source);
void AssignText(wchar_t** target, const wchar_t* source);

/// Null for a null or empty text and when memory runs out.
template <class Char>
OwnedChars<Char> CopyText(const Char* source) {
    Char* copy = nullptr;
    AssignText(&copy, source);
    return OwnedChars<Char>(copy);
}

} // namespace vtr

#endif
