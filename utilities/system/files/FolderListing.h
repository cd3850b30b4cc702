#ifndef VTRUTILS_SYSTEM_FILES_FOLDERLISTING_H
#define VTRUTILS_SYSTEM_FILES_FOLDERLISTING_H

#include "common/Handles.h"

#include <cstring>

namespace vtr {

/// The entries that match a pattern, one at a time: true while there is one. Private to the
/// library. One thread at a time.
class FolderListing {
public:
    explicit FolderListing(const char* pattern)
        : handle(FindFirstFileA(pattern, &entry)), more(handle) {}

    explicit operator bool() const { return more; }
    void Next() { more = FindNextFileA(handle.Get(), &entry) != FALSE; }

    const char* Name() const { return entry.cFileName; }
    bool Has(DWORD attribute) const { return (entry.dwFileAttributes & attribute) != 0; }
    bool IsFolder() const { return Has(FILE_ATTRIBUTE_DIRECTORY); }

private:
    WIN32_FIND_DATAA entry;
    FindHandle handle;
    bool more;
};

} // namespace vtr

#endif
