#include "utilities/base/Utf16Text.h"

#include "common/Require.h"

#include <cstring>

namespace vtr {

namespace {

constexpr wchar_t byteOrderMark = 0xFEFF;

wchar_t UnitAt(const wchar_t* units, std::size_t index) {
    wchar_t unit;
    std::memcpy(&unit, reinterpret_cast<const char*>(units) + index * sizeof(wchar_t), sizeof unit);
    return unit;
}

/// `wide` when both bytes are in use, so that the low byte alone would lose something.
Utf16Pair PairAt(const unsigned char* data) {
    if (data[0] == 0 && data[1] == 0)
        return Utf16Pair::zero;
    return data[0] != 0 && data[1] != 0 ? Utf16Pair::wide : Utf16Pair::narrow;
}

} // namespace

bool HasByteOrderMark(const unsigned char* data) {
    VTR_REQUIRE(data != nullptr);
    return data[0] == 0xFF && data[1] == 0xFE;
}

Utf16Pair FirstTellingPair(const unsigned char* data, std::size_t from, std::size_t length,
                           std::size_t& offset) {
    for (offset = from; offset + 2 <= length; offset += 2) {
        const Utf16Pair pair = PairAt(data + offset);
        if (pair != Utf16Pair::narrow)
            return pair;
    }
    return Utf16Pair::narrow;
}

bool LooksLikeUtf16(const unsigned char* data, std::size_t length, bool requireTerminator) {
    if (data == nullptr || length < 2)
        return false;
    if (HasByteOrderMark(data))
        return true;
    std::size_t offset = 0;
    const Utf16Pair telling = FirstTellingPair(data, 0, length, offset);
    if (telling != Utf16Pair::narrow)
        return telling == Utf16Pair::zero;
    return !requireTerminator || PairAt(data + length - 2) == Utf16Pair::zero;
}

void KeepLowBytes(const wchar_t* source, std::size_t units, char* destination,
                  std::size_t destinationSize, bool reserveTerminator) {
    VTR_REQUIRE(destination != nullptr && (source != nullptr || units == 0));
    VTR_REQUIRE(destinationSize > 0 || !reserveTerminator);
    std::memset(destination, 0, destinationSize);
    const std::size_t room = reserveTerminator ? destinationSize - 1 : destinationSize;
    std::size_t in = units > 0 && UnitAt(source, 0) == byteOrderMark ? 1 : 0;
    for (std::size_t out = 0; in < units && out < room; ++in, ++out) {
        const wchar_t unit = UnitAt(source, in);
        if (unit == 0 && in + 1 < units && UnitAt(source, in + 1) == 0)
            break;
        destination[out] = static_cast<char>(unit & 0xFF);
    }
}

} // namespace vtr
