#ifndef VTRUTILS_ONLINE_SERVICEURL_H
#define VTRUTILS_ONLINE_SERVICEURL_H

/// Where the online services are asked. Private to the library. Locked by itself.

namespace vtr {

/// What all URLs of a service begin with: scheme, name and port, without a slash at the end, such
/// as "https://freesound.org".
struct ServiceUrl {
    char text[272];
};

/// As set at the moment of the call.
ServiceUrl SoundRepoUrl() noexcept;
ServiceUrl MusicLookupUrl() noexcept;

} // namespace vtr

#endif
