#ifndef VTRUTILS_SYSTEM_FILES_REGISTRYSTRINGS_H
#define VTRUTILS_SYSTEM_FILES_REGISTRYSTRINGS_H

#include "common/Handles.h"

namespace vtr {

/// The strings of one registry key, opened once for many of them. Private to the library. One
/// thread at a time.
class RegistryStrings {
public:
    /// False, with nothing open, for a null argument and a key that cannot be opened; writing makes
    /// a key that is missing.
    bool OpenForReading(HKEY root, const char* subKey);
    bool OpenForWriting(HKEY root, const char* subKey);

    // The registry holds UTF-16. A text becomes that in the ANSI page, as with the narrow functions
    // of Windows, whatever its code page is: it comes back byte for byte. One that the ANSI page
    // does not keep, because its bytes are not characters there, is text of the language's code
    // page and becomes UTF-16 with that; a second terminator tells so.

    /// Zeroes all of `out`; false if it stays so because there is no string, or none that fits.
    /// Requires: size > 0.
    bool Read(const char* valueName, char* out, unsigned size) const;
    bool Write(const char* valueName, const char* text) const;

private:
    RegistryKey key;
};

} // namespace vtr

#endif
