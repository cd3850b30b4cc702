#ifndef VTRUTILS_PROMO_PROMOBLEND_H
#define VTRUTILS_PROMO_PROMOBLEND_H

#include <cstddef>
#include <emmintrin.h>

namespace vtr {

constexpr unsigned char PercentOf(unsigned value, int percent) {
    return static_cast<unsigned char>(value * static_cast<unsigned>(percent) / 100);
}

/// The same for sixteen bytes at once. A byte times its percentage in 65536ths, rounded up, has the
/// result in its upper 16 bits: exact for every byte and for percentages from 0 to 99. The bytes at
/// odd places are multiplied where they are, as the upper halves of 16-bit words.
class PercentOfSixteen {
public:
    explicit PercentOfSixteen(int percent)
        : factor(_mm_set1_epi16(static_cast<short>((percent * 65536 + 99) / 100))) {}

    __m128i operator()(__m128i bytes) const {
        const __m128i even = _mm_set1_epi16(0x00FF);
        const __m128i evenResults = _mm_mulhi_epu16(_mm_and_si128(bytes, even), factor);
        const __m128i oddResults = _mm_mulhi_epu16(_mm_andnot_si128(even, bytes), factor);
        return _mm_or_si128(evenResults, _mm_andnot_si128(even, oddResults));
    }

private:
    __m128i factor;
};

inline __m128i LoadSixteen(const unsigned char* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}
inline void StoreSixteen(unsigned char* bytes, __m128i value) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), value);
}

} // namespace vtr

#endif
