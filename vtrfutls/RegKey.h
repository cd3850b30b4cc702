#ifndef VTRFUTLS_REGKEY_H
#define VTRFUTLS_REGKEY_H

#include "vtrfutls/Export.h"

#include <windows.h>

/// A key of the registry that is read. Nothing here makes, changes or removes what is in the
/// registry. Paths and names are text in the system's ANSI code page; case does not matter.
/// Thread-safety: one thread at a time.
class VTRFUTLS_API CRegKey {
public:
    /// One of the predefined keys, such as HKEY_CURRENT_USER, or an open one, which the caller
    /// closes after this object. In a null key nothing is found.
    explicit CRegKey(HKEY root) noexcept;
    CRegKey(const CRegKey&) = delete;
    CRegKey& operator=(const CRegKey&) = delete;
    ~CRegKey();

    /// The key at `path` below this one, open for reading, in an object that the caller frees with
    /// `DeleteRegKey`. It does not depend on this one. "" is this key again. Null if the key does
    /// not exist or may not be read, for a null path, and when memory runs out.
    CRegKey* GetSubKey(const char* path) const noexcept;

    /// True if `GetSubKey` could open that key.
    bool SubKeyExists(const char* path) const noexcept;

    /// Reads the value `name`, a number of 32 bits (REG_DWORD); null or "" is the key's default
    /// value. False, with 0 in `number`, if there is no such value or it is not such a number.
    /// False for a null `number`.
    bool GetKeyNum(const char* name, unsigned* number) const noexcept;

private:
    HKEY key;
    bool owned; ///< this object closes the key
};

/// Closes the key and frees the object that `GetSubKey` gave. The key stays in the registry. Does
/// nothing for null.
VTRFUTLS_API void DeleteRegKey(CRegKey* key) noexcept;

#endif
