#ifndef VTRUTILS_BASE_BLOCKTEXT_H
#define VTRUTILS_BASE_BLOCKTEXT_H

#include "utilities/base/OwnedText.h"

#include <cstdint>
#include <cstring>
#include <functional>

/// Texts that may be part of a larger block: that of the object that has them, or of all that was
/// loaded. Such a text is freed with its block. Every other text is a block of its own from
/// `malloc`, and is freed by itself. Private to the library. One thread at a time.

namespace vtr {

/// For owners that know the block but not which texts lie in it. False for a null block.
inline bool LiesIn(const char* block, std::size_t size, const char* text) {
    const std::less<const char*> before;
    return block != nullptr && !before(text, block) && before(text, block + size);
}

inline void FreeText(char* text, bool inBlock) {
    if (!inBlock)
        std::free(text);
}

/// Takes a text that is a block of its own, or null, in place of the old one.
inline void TakeText(char*& field, bool& inBlock, char* text) {
    FreeText(field, inBlock);
    field = text;
    inBlock = false;
}

/// Takes a copy, as the other `AssignText` does; the source may be the present text or a part of
/// it.
inline void AssignText(char*& field, bool& inBlock, const char* source) {
    if (!inBlock)
        AssignText(&field, source);
    else if (source != field)
        TakeText(field, inBlock, CopyText(source).release());
}

/// Copies a text into a block and terminates it; `place` moves past it. Most texts are so short
/// that calling `memcpy` takes longer: two words that may overlap hold them.
inline char* PutText(const char* text, std::size_t length, char*& place) {
    constexpr std::size_t word = 8;
    char* const copy = place;
    if (length < word || length > 2 * word) {
        std::memcpy(copy, text, length);
    } else {
        std::uint64_t first;
        std::uint64_t last;
        std::memcpy(&first, text, word);
        std::memcpy(&last, text + length - word, word);
        std::memcpy(copy, &first, word);
        std::memcpy(copy + length - word, &last, word);
    }
    copy[length] = '\0';
    place += length + 1;
    return copy;
}

} // namespace vtr

/// Defines what `VTRUTILS_OWN_MEMORY` declares: `allocate(size)` gives null when memory runs out,
/// and `release(object)` does nothing for null.
#define VTR_OWN_MEMORY(Class, allocate, release)                                                   \
    void* Class::operator new(std::size_t size) noexcept {                                         \
        return allocate(size);                                                                     \
    }                                                                                              \
    void* Class::operator new(std::size_t size, const std::nothrow_t&) noexcept {                  \
        return allocate(size);                                                                     \
    }                                                                                              \
    void Class::operator delete(void* object) noexcept {                                           \
        release(object);                                                                           \
    }                                                                                              \
    void Class::operator delete(void* object, const std::nothrow_t&) noexcept {                    \
        release(object);                                                                           \
    }                                                                                              \
    static_assert(true)

#endif
