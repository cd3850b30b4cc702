#include "utilities/base/ByteSearch.h"

#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>

namespace vtr {

namespace {

constexpr std::uint64_t ones = 0x0101010101010101;
constexpr std::uint64_t highBits = ones << 7;
constexpr std::size_t wordSize = sizeof(std::uint64_t);

/// The lowest bit that is set belongs to the first byte of the word that is `wanted`; 0 for none.
std::uint64_t Matches(const char* text, char wanted) {
    static_assert(std::endian::native == std::endian::little);
    std::uint64_t word;
    std::memcpy(&word, text, wordSize);
    word ^= ones * static_cast<unsigned char>(wanted);
    return (word - ones) & ~word & highBits;
}

std::size_t FirstIndex(std::uint64_t matches) {
    return static_cast<std::size_t>(std::countr_zero(matches)) / CHAR_BIT;
}

} // namespace

std::size_t TextLength(const char* text) {
    const char* at = text;
    for (; reinterpret_cast<std::uintptr_t>(at) % wordSize != 0; ++at) {
        if (*at == '\0')
            return static_cast<std::size_t>(at - text);
    }
    // Aligned words may reach past the terminator, but never into another page.
    std::uint64_t zeros;
    while ((zeros = Matches(at, '\0')) == 0)
        at += wordSize;
    return static_cast<std::size_t>(at - text) + FirstIndex(zeros);
}

const char* FindByte(const char* text, const char* end, char wanted) {
    for (; static_cast<std::size_t>(end - text) >= wordSize; text += wordSize) {
        const std::uint64_t matches = Matches(text, wanted);
        if (matches != 0)
            return text + FirstIndex(matches);
    }
    while (text < end && *text != wanted)
        ++text;
    return text < end ? text : nullptr;
}

} // namespace vtr
