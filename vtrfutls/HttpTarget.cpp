#include "vtrfutls/HttpTarget.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr unsigned short portOfHttp = 80;
constexpr unsigned short portOfHttps = 443;

/// What follows `start` in the text, whatever the case of its letters; null if it starts otherwise.
const char* After(const char* text, const char* start) {
    const std::size_t length = std::strlen(start);
    return _strnicmp(text, start, length) == 0 ? text + length : nullptr;
}

bool IsGraphic(char c) {
    return c > ' ' && c < 0x7F;
}

/// The number after a ":", or what `port` is if there is none. Null for anything else.
const char* ReadPort(const char* from, unsigned short& port) {
    unsigned long number = 0;
    const char* digit = from;
    for (; *digit >= '0' && *digit <= '9' && number <= 0xFFFF; ++digit)
        number = 10 * number + static_cast<unsigned long>(*digit - '0');
    if (digit != from) {
        if (number == 0 || number > 0xFFFF)
            return nullptr;
        port = static_cast<unsigned short>(number);
    }
    return digit;
}

} // namespace

namespace vtr {

bool HttpTarget::Set(const char* url) {
    if (std::strlen(url) > longestUrl)
        return false;
    const char* server = After(url, "https://");
    const bool isSecure = server != nullptr;
    if (!isSecure)
        server = After(url, "http://");
    if (server == nullptr)
        return false;
    // The colons of an address in brackets name no port.
    const char* end = server + (*server == '[' ? std::strcspn(server, "]/?#") : 0);
    end += std::strcspn(end, ":/?#");
    const std::size_t length = static_cast<std::size_t>(end - server);
    unsigned short number = isSecure ? portOfHttps : portOfHttp;
    const char* rest = *end == ':' ? ReadPort(end + 1, number) : end;
    if (length == 0 || length >= sizeof host || rest == nullptr ||
        (*rest != '\0' && std::strchr("/?#", *rest) == nullptr))
        return false;
    for (const char* c = server; c != end; ++c) {
        if (!IsGraphic(*c) || *c == '@' || *c == '\\')
            return false;
    }
    secure = isSecure;
    port = number;
    std::memcpy(host, server, length);
    host[length] = '\0';
    SetPath(rest);
    return true;
}

void HttpTarget::SetPath(const char* from) {
    char* to = path;
    if (*from != '/')
        *to++ = '/';
    for (; *from != '\0' && *from != '#'; ++from) {
        if (IsGraphic(*from)) {
            *to++ = *from;
        } else {
            constexpr char digits[] = "0123456789ABCDEF";
            const unsigned char byte = static_cast<unsigned char>(*from);
            *to++ = '%';
            *to++ = digits[byte >> 4];
            *to++ = digits[byte & 0xF];
        }
    }
    *to = '\0';
}

} // namespace vtr
