#ifndef VTRUTILS_BASE_CHARACTERREADER_H
#define VTRUTILS_BASE_CHARACTERREADER_H

#include "common/Require.h"
#include "utilities/base/MultibyteText.h"
#include "utilities/base/SameText.h"

#include <cctype>

namespace vtr {

enum class Characters { ofCodePage, singleBytes };

/// A text as a row of numbers: two characters have the same one if a search takes them for the
/// same. Private to the library. Immutable and safe.
class CharacterReader {
public:
    CharacterReader(bool exactCase, Characters characters)
        : caseSensitive(exactCase),
          multibyte(characters == Characters::ofCodePage && steps.Multibyte()) {}

    bool Multibyte() const { return multibyte; }
    bool ExactCase() const { return caseSensitive; }
    /// True if each byte is a character and only the same byte is the same.
    bool ExactBytes() const { return caseSensitive && !multibyte; }

    /// The bytes of the character at `text`, which ends at `end`.
    std::size_t Step(const char* text, const char* end) const {
        return multibyte ? steps.Length(text, static_cast<std::size_t>(end - text)) : 1;
    }

    /// That of the character at `text`, which is moved past it. Requires: text < end.
    unsigned Read(const char*& text, const char* end) const {
        VTR_REQUIRE(text < end);
        const char* at = text;
        const std::size_t size = Step(at, end);
        text += size;
        const unsigned first = static_cast<unsigned char>(*at);
        if (size == 1)
            return caseSensitive ? first
                                 : static_cast<unsigned>(std::tolower(static_cast<int>(first)));
        if (!caseSensitive)
            return pairs + FoldCharacter(at, multibyte).code;
        return pairs + (first << 8 | static_cast<unsigned char>(at[1]));
    }

private:
    static constexpr unsigned pairs = 0x100; ///< above every single byte

    bool caseSensitive;
    CharacterSteps steps;
    bool multibyte;
};

} // namespace vtr

#endif
