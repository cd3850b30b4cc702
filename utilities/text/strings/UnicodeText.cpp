#include "utilities/text/strings/StringFunctions.h"

#include <cstring>
#include <cwchar>

namespace {

constexpr wchar_t byteOrderMark = 0xFEFF;

std::size_t NotNegative(int length) {
    return length < 0 ? 0 : static_cast<std::size_t>(length);
}

/// Unit `index` of a buffer at any address.
wchar_t UnitAt(const wchar_t* units, std::size_t index) {
    wchar_t unit;
    std::memcpy(&unit, reinterpret_cast<const char*>(units) + index * sizeof(wchar_t), sizeof unit);
    return unit;
}

enum class Pair { zero, wide, narrow };

/// `wide` when both bytes are in use, so that the low byte alone would lose something.
Pair PairAt(const unsigned char* data) {
    if (data[0] == 0 && data[1] == 0)
        return Pair::zero;
    return data[0] != 0 && data[1] != 0 ? Pair::wide : Pair::narrow;
}

/// The first zero or wide pair in [from, length), with its offset; `narrow` when there is neither.
Pair FirstTellingPair(const unsigned char* data, std::size_t from, std::size_t length,
                      std::size_t& offset) {
    for (offset = from; offset + 2 <= length; offset += 2) {
        const Pair pair = PairAt(data + offset);
        if (pair != Pair::narrow)
            return pair;
    }
    return Pair::narrow;
}

} // namespace

bool StringHasUnicodeHeader(const unsigned char* data) {
    return data != nullptr && data[0] == 0xFF && data[1] == 0xFE;
}

bool StringIsUnicode(const unsigned char* data, int length, bool requireTerminator) {
    if (data == nullptr || length < 2)
        return false;
    if (StringHasUnicodeHeader(data))
        return true;
    const std::size_t size = NotNegative(length);
    std::size_t offset = 0;
    const Pair telling = FirstTellingPair(data, 0, size, offset);
    if (telling != Pair::narrow)
        return telling == Pair::zero;
    return !requireTerminator || PairAt(data + size - 2) == Pair::zero;
}

bool StringIsConvertibleUnicode(const unsigned char* data, int length) {
    if (data == nullptr || length < 2)
        return false;
    const std::size_t start = length > 2 && StringHasUnicodeHeader(data) ? 2 : 0;
    std::size_t offset = 0;
    return FirstTellingPair(data, start, NotNegative(length), offset) != Pair::wide;
}

int NumConvertibleUnicodeChars(const unsigned char* data, int length) {
    if (data == nullptr || length < 4 || !StringHasUnicodeHeader(data))
        return 0;
    std::size_t offset = 0;
    if (FirstTellingPair(data, 2, NotNegative(length), offset) != Pair::zero)
        return 0;
    return static_cast<int>((offset - 2) / 2);
}

void ConvertUnicodeToSingleByte(const wchar_t* source, int sourceUnits, char* destination,
                                unsigned destinationSize, bool reserveTerminator) {
    if (destination == nullptr || destinationSize == 0)
        return;
    std::memset(destination, 0, destinationSize);
    if (source == nullptr)
        return;
    const std::size_t count = NotNegative(sourceUnits);
    const std::size_t room = reserveTerminator ? destinationSize - 1 : destinationSize;
    std::size_t in = count > 0 && UnitAt(source, 0) == byteOrderMark ? 1 : 0;
    for (std::size_t out = 0; in < count && out < room; ++in, ++out) {
        const wchar_t unit = UnitAt(source, in);
        if (unit == 0 && in + 1 < count && UnitAt(source, in + 1) == 0)
            break;
        destination[out] = static_cast<char>(unit & 0xFF);
    }
}

void ConvertUnicodeToSingleByte(const wchar_t* source, char* destination,
                                unsigned destinationSize) {
    if (source == nullptr)
        return;
    ConvertUnicodeToSingleByte(source, static_cast<int>(std::wcslen(source)), destination,
                               destinationSize, /*reserveTerminator=*/true);
}

void ConvertSingleByteToUnicode(const char* source, int sourceLength, wchar_t* destination,
                                unsigned destinationUnits, bool reserveTerminator) {
    if (destination == nullptr || destinationUnits == 0)
        return;
    std::memset(destination, 0, destinationUnits * sizeof(wchar_t));
    if (source == nullptr)
        return;
    const std::size_t length = NotNegative(sourceLength);
    const std::size_t room = reserveTerminator ? destinationUnits - 1 : destinationUnits;
    for (std::size_t i = 0; i < length && i < room && source[i] != '\0'; ++i)
        destination[i] = static_cast<unsigned char>(source[i]);
}

void ConvertSingleByteToUnicode(const char* source, wchar_t* destination,
                                unsigned destinationUnits) {
    if (source == nullptr)
        return;
    ConvertSingleByteToUnicode(source, static_cast<int>(std::strlen(source)), destination,
                               destinationUnits, /*reserveTerminator=*/true);
}

bool CopyCharToTChar(const char* source, unsigned sourceLength, char* destination,
                     unsigned destinationSize) {
    if (destination == nullptr || destinationSize == 0)
        return false;
    std::memset(destination, 0, destinationSize);
    if (source == nullptr || sourceLength == 0)
        return false;
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(source);
    if (StringIsUnicode(bytes, static_cast<int>(sourceLength), /*requireTerminator=*/true)) {
        ConvertUnicodeToSingleByte(reinterpret_cast<const wchar_t*>(source),
                                   static_cast<int>(sourceLength / 2), destination, destinationSize,
                                   /*reserveTerminator=*/true);
        return true;
    }
    const unsigned room = destinationSize - 1;
    std::memcpy(destination, source, sourceLength < room ? sourceLength : room);
    return true;
}

bool CopyCharToTChar(const char* source, char* destination, unsigned destinationSize) {
    const std::size_t length = source != nullptr ? std::strlen(source) : 0;
    return CopyCharToTChar(source, static_cast<unsigned>(length), destination, destinationSize);
}
