#include "vtrfutls/HttpTarget.h"

#include <cstring>

namespace vtr {

bool HttpTarget::Set(const char* url) {
    if (std::strlen(url) > longestUrl)
        return false;
    URL_COMPONENTSA parts{};
    parts.dwStructSize = sizeof parts;
    // A length without a buffer asks where the part is.
    parts.dwHostNameLength = parts.dwUrlPathLength = parts.dwExtraInfoLength = 1;
    if (InternetCrackUrlA(url, /*dwUrlLength=*/0, /*dwFlags=*/0, &parts) == FALSE ||
        (parts.nScheme != INTERNET_SCHEME_HTTP && parts.nScheme != INTERNET_SCHEME_HTTPS) ||
        parts.dwHostNameLength == 0 || parts.dwHostNameLength >= sizeof host)
        return false;
    scheme = parts.nScheme;
    port = parts.nPort;
    std::memcpy(host, parts.lpszHostName, parts.dwHostNameLength);
    host[parts.dwHostNameLength] = '\0';

    char* to = path;
    const char* from = parts.lpszHostName + parts.dwHostNameLength;
    if (*from == ':')
        from += std::strcspn(from, "/?#");
    if (*from != '/')
        *to++ = '/';
    for (; *from != '\0' && *from != '#'; ++from) {
        const unsigned char byte = static_cast<unsigned char>(*from);
        if (byte > ' ' && byte < 0x7F) {
            *to++ = *from;
        } else {
            constexpr char digits[] = "0123456789ABCDEF";
            *to++ = '%';
            *to++ = digits[byte >> 4];
            *to++ = digits[byte & 0xF];
        }
    }
    *to = '\0';
    return true;
}

} // namespace vtr
