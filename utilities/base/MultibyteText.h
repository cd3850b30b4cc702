#ifndef VTRUTILS_BASE_MULTIBYTETEXT_H
#define VTRUTILS_BASE_MULTIBYTETEXT_H

#include <cstddef>

namespace vtr {

/// True when some characters of the current multibyte code page have two bytes.
bool IsMultibyteCodePage();

/// Steps over text in the multibyte code page that was set when this was made, so that the second
/// byte of a character is never taken for a character of its own. A lead byte without a valid trail
/// byte after it counts as one character. Private to the library. Immutable and safe.
class CharacterSteps {
public:
    CharacterSteps() : multibyte(IsMultibyteCodePage()) {}

    bool Multibyte() const { return multibyte; }

    /// 1 or 2 bytes at `text`, of which `available` may be read; 1 at a terminator.
    std::size_t Length(const char* text, std::size_t available) const {
        const bool mayBeLead = multibyte && static_cast<signed char>(*text) < 0;
        return mayBeLead && available >= 2 && IsPair(text) ? 2 : 1;
    }

    /// The same for terminated text.
    std::size_t Length(const char* text) const { return Length(text, *text == '\0' ? 1 : 2); }

private:
    static bool IsPair(const char* text);

    bool multibyte;
};

} // namespace vtr

#endif
