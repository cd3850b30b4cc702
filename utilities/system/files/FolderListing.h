#ifndef VTRUTILS_SYSTEM_FILES_FOLDERLISTING_H
#define VTRUTILS_SYSTEM_FILES_FOLDERLISTING_H

#include "common/Handles.h"

namespace vtr {

/// The entries that match a pattern, one at a time: true while there is one. Private to the
/// library. One thread at a time.
class FolderListing {
public:
    explicit FolderListing(const wchar_t* pattern)
        : handle(FindFirstFileW(pattern, &entry)), more(handle) {}

    explicit operator bool() const { return more; }
    void Next() { more = FindNextFileW(handle.Get(), &entry) != FALSE; }

    const wchar_t* Name() const { return entry.cFileName; }
    /// "" when the entry has no other name.
    const wchar_t* ShortName() const { return entry.cAlternateFileName; }
    bool Has(DWORD attribute) const { return (entry.dwFileAttributes & attribute) != 0; }
    bool IsFolder() const { return Has(FILE_ATTRIBUTE_DIRECTORY); }

private:
    WIN32_FIND_DATAW entry;
    FindHandle handle;
    bool more;
};

} // namespace vtr

#endif
