#ifndef VTRUTILS_BASE_CASEBIT_H
#define VTRUTILS_BASE_CASEBIT_H

/// The two cases of an ASCII letter differ in one bit. So one comparison of two bytes tells most
/// texts that differ without regard to case. Private to the library. Immutable and safe.

namespace vtr {

inline constexpr unsigned caseBit = 'a' ^ 'A';

/// Set in all bytes above 0x7F, which may be the other case of any letter, or a part of it.
inline constexpr unsigned beyondAscii = 0x80;

/// The byte without its case; `beyondAscii` for all bytes above 0x7F.
constexpr unsigned WithoutCase(char c) {
    const unsigned byte = static_cast<unsigned char>(c);
    return byte < beyondAscii ? byte & ~caseBit : beyondAscii;
}

/// Passes the bytes that a text may begin with if it is to be the same as one that begins with a
/// given byte.
class CaseFilter {
public:
    explicit constexpr CaseFilter(char wanted, bool exactCase = false)
        : first(static_cast<unsigned char>(wanted)), ignored(exactCase ? 0 : caseBit),
          unknown(exactCase ? 0 : beyondAscii) {}

    constexpr bool Passes(char c) const {
        const unsigned byte = static_cast<unsigned char>(c);
        return ((byte | first) & unknown) != 0 || ((byte ^ first) & ~ignored) == 0;
    }

private:
    unsigned first;
    unsigned ignored;
    unsigned unknown;
};

} // namespace vtr

#endif
