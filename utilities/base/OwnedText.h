#ifndef VTRUTILS_BASE_OWNEDTEXT_H
#define VTRUTILS_BASE_OWNEDTEXT_H

#include "utilities/text/strings/StringFunctions.h"

#include <cstdlib>
#include <memory>

/// Owners of what comes from `malloc`. Private to the library. One thread at a time.

namespace vtr {

struct Free {
    void operator()(void* block) const noexcept { std::free(block); }
};

using OwnedText = std::unique_ptr<char, Free>;
using OwnedBytes = std::unique_ptr<unsigned char, Free>;

inline bool IsEmptyText(const char* text) {
    return text == nullptr || *text == '\0';
}

/// As `CopyStringA` copies: null for a null or empty text or when memory runs out.
inline OwnedText CopyText(const char* source) {
    char* copy = nullptr;
    CopyStringA(&copy, source);
    return OwnedText(copy);
}

} // namespace vtr

#endif
