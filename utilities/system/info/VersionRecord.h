#ifndef VTRUTILS_SYSTEM_INFO_VERSIONRECORD_H
#define VTRUTILS_SYSTEM_INFO_VERSIONRECORD_H

#include <windows.h>

namespace vtr {

/// What Windows says of its version. Private to the library. Immutable and safe.
class VersionRecord {
public:
    /// Reads the extended record, or the basic one where Windows has no other.
    static VersionRecord Read();

    /// Reads the basic record only.
    static VersionRecord ReadBasic();

    /// The basic part; null if Windows did not tell.
    const OSVERSIONINFOA* Get() const { return told ? &basic : nullptr; }

private:
    OSVERSIONINFOA basic{};
    bool told = false;
};

} // namespace vtr

#endif
