#ifndef VTRUTILS_ONLINE_SERVICEHOSTS_H
#define VTRUTILS_ONLINE_SERVICEHOSTS_H

#include "utilities/Export.h"

/// Which servers the online services ask: the public ones, "freesound.org" and "musicbrainz.org",
/// until a host names others. The setting is one for the process and counts for requests that are
/// made later; one under way stays with its server.
/// Thread-safety: locked by itself.

/// Sets the server of all sound repositories: "name" or "name:port", such as "localhost:8080"; null
/// is the public server. A name has letters, digits, "-", "_" and ".", at most 253 of them, and a
/// port is a number from 1 to 65535. Requests go over TLS. With "http://" before the name they go
/// unencrypted, API key included: that is for tests only. False, with nothing changed, for any
/// other text, "" too.
VTRUTILS_API bool SetSoundRepoHost(const char* host) noexcept;

/// The same for the music lookup, whose requests always go unencrypted: "http://" makes no
/// difference here.
VTRUTILS_API bool SetMusicLookupHost(const char* host) noexcept;

#endif
