#ifndef VTRFUTLS_HTTPTARGET_H
#define VTRFUTLS_HTTPTARGET_H

#include <cstddef>
#include <windows.h>

#include <wininet.h>

namespace vtr {

/// The parts of a URL that a request is made of. Private to this library. One thread at a time.
class HttpTarget {
public:
    static constexpr std::size_t longestUrl = 2083;

    /// False, with the target as it was, for a URL that is longer, names no server or is not one of
    /// http or https.
    bool Set(const char* url);

    bool IsSecure() const { return scheme == INTERNET_SCHEME_HTTPS; }
    const char* Host() const { return host; }
    INTERNET_PORT Port() const { return port; }
    /// With the query, without what follows "#"; every character is one of 0x21 to 0x7E.
    const char* Path() const { return path; }

private:
    INTERNET_SCHEME scheme = INTERNET_SCHEME_UNKNOWN;
    INTERNET_PORT port = 0;
    char host[INTERNET_MAX_HOST_NAME_LENGTH + 1] = "";
    char path[3 * longestUrl + 2] = "";
};

} // namespace vtr

#endif
