#include "utilities/text/strings/StringFunctions.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/// The number that the hexadecimal digits at `text` give, at most `digits` of them.
unsigned long ReadHex(const char* text, std::size_t digits) {
    unsigned long value = 0;
    for (; digits > 0 && IsHexCharacter(*text); --digits, ++text) {
        const char one[] = {*text, '\0'};
        value = value << 4 | std::strtoul(one, /*endptr=*/nullptr, /*base=*/16);
    }
    return value;
}

} // namespace

void GUIDToString(GUID guid, char* buffer, int size, bool braces) {
    if (buffer == nullptr || size < 1)
        return;
    const unsigned char* d = guid.Data4;
    std::snprintf(buffer, static_cast<std::size_t>(size),
                  "%s%08lX-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X%s", braces ? "{" : "",
                  guid.Data1, guid.Data2, guid.Data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6],
                  d[7], braces ? "}" : "");
}

bool GUIDStringToGUID(GUID& result, const char* text) {
    if (text == nullptr)
        return false;
    const bool brace = *text == '{';
    if (std::strlen(text) != (brace ? 38u : 36u))
        return false;
    if (brace)
        ++text;
    GUID guid;
    guid.Data1 = ReadHex(text, 8);
    guid.Data2 = static_cast<unsigned short>(ReadHex(text + 9, 4));
    guid.Data3 = static_cast<unsigned short>(ReadHex(text + 14, 4));
    static constexpr int groups[] = {19, 21, 24, 26, 28, 30, 32, 34};
    for (int i = 0; i < 8; ++i)
        guid.Data4[i] = static_cast<unsigned char>(ReadHex(text + groups[i], 2));
    result = guid;
    return true;
}

bool GUIDIsZero(GUID guid) {
    static constexpr GUID zero{};
    return std::memcmp(&guid, &zero, sizeof zero) == 0;
}
