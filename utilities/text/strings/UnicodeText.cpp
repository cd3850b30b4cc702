#include "utilities/base/Utf16Text.h"
#include "utilities/text/strings/StringFunctions.h"

#include <cstring>
#include <cwchar>

namespace {

std::size_t NotNegative(int length) {
    return length < 0 ? 0 : static_cast<std::size_t>(length);
}

} // namespace

bool StringHasUnicodeHeader(const unsigned char* data) {
    return data != nullptr && vtr::HasByteOrderMark(data);
}

bool StringIsUnicode(const unsigned char* data, int length, bool requireTerminator) {
    return vtr::LooksLikeUtf16(data, NotNegative(length), requireTerminator);
}

bool StringIsConvertibleUnicode(const unsigned char* data, int length) {
    if (data == nullptr || length < 2)
        return false;
    const std::size_t start = length > 2 && StringHasUnicodeHeader(data) ? 2 : 0;
    std::size_t offset = 0;
    return vtr::FirstTellingPair(data, start, NotNegative(length), offset) != vtr::Utf16Pair::wide;
}

int NumConvertibleUnicodeChars(const unsigned char* data, int length) {
    if (data == nullptr || length < 4 || !StringHasUnicodeHeader(data))
        return 0;
    std::size_t offset = 0;
    if (vtr::FirstTellingPair(data, 2, NotNegative(length), offset) != vtr::Utf16Pair::zero)
        return 0;
    return static_cast<int>((offset - 2) / 2);
}

void ConvertUnicodeToSingleByte(const wchar_t* source, int sourceUnits, char* destination,
                                unsigned destinationSize, bool reserveTerminator) {
    if (destination == nullptr || destinationSize == 0)
        return;
    const std::size_t units = source != nullptr ? NotNegative(sourceUnits) : 0;
    vtr::KeepLowBytes(source, units, destination, destinationSize, reserveTerminator);
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
