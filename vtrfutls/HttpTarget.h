#ifndef VTRFUTLS_HTTPTARGET_H
#define VTRFUTLS_HTTPTARGET_H

#include <cstddef>

namespace vtr {

/// The parts of a URL that a request is made of. Private to this library. One thread at a time.
class HttpTarget {
public:
    static constexpr std::size_t longestUrl = 2083;

    /// False, with the target as it was, for a URL that is longer, that is not one of http or
    /// https, or that names a user, no server, or a port that there is not.
    bool Set(const char* url);

    bool IsSecure() const { return secure; }
    const char* Host() const { return host; }
    unsigned short Port() const { return port; }
    /// With the query, without what follows "#"; every character is one of 0x21 to 0x7E.
    const char* Path() const { return path; }

private:
    void SetPath(const char* from);

    bool secure = false;
    unsigned short port = 0;
    char host[256] = "";
    char path[1 + 3 * longestUrl + 1] = "";
};

} // namespace vtr

#endif
