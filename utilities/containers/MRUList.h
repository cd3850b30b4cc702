#ifndef VTRUTILS_CONTAINERS_MRULIST_H
#define VTRUTILS_CONTAINERS_MRULIST_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

#include <cstddef>
#include <windows.h>

/// An entry of a `CMRUList`.
struct _MRUData {
    char path[MAX_PATH];         ///< terminated
    unsigned long long lastTime; ///< a FILETIME: 100 ns steps since 1601, UTC
    unsigned int lastLength;     ///< what the host passed with the file
    unsigned char exists;        ///< whether it was a file, not a folder, when the entry was made
};
static_assert(sizeof(_MRUData) == 280 && offsetof(_MRUData, lastTime) == 264 &&
              offsetof(_MRUData, lastLength) == 272 && offsetof(_MRUData, exists) == 276);

/// The files that were used last, newest first, kept in the registry from one run to the next. The
/// list has no greatest length: a host trims it with `RemoveFile`.
///
/// With the base name N, entry k, counted from 1, is kept in the string values "N.k" (path),
/// "N-last-length.k" (decimal, signed) and "N-last-time.k" (decimal). Files that do not exist any
/// more are left out when the list is loaded and when it is saved. In the registry, the paths of
/// the files after them then move up, but their lengths and times do not. Loading ends at the first
/// path that is missing, empty or longer than 511 bytes; saving writes empty ones after the list.
///
/// Paths are as FileFunctions.h says, of at most 259 bytes, and compare without regard to case in
/// the current multibyte code page. They come back from the registry byte for byte. Loading and
/// saving look at every file of the list, and adding saves: a path on a server that does not answer
/// holds the caller up each time, for as long as Windows tries. When memory runs out, an entry is
/// left out.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CMRUList {
public:
    /// A value name, with its suffix and "%u", has at most 127 bytes: a longer base name is cut to
    /// fit. Null counts as "".
    explicit CMRUList(char* baseName) noexcept;
    CMRUList(const CMRUList&) = delete;
    CMRUList& operator=(const CMRUList&) = delete;
    /// Does not save.
    ~CMRUList();

    /// Remembers the key, which need not exist, and replaces the list with what is there. Until
    /// this is called, and after a null root or subkey, the list lives in memory only. The root
    /// must stay open.
    void Init(HKEY root, const char* subkey) noexcept;

    /// Appends the paths kept under another key, with the lengths and times kept under the list's
    /// own, and saves.
    void LoadFrom(HKEY root, const char* subkey) noexcept;

    /// Puts the file first, with the current time, removes other entries with its path, and saves.
    /// The path may be one that this list gave out. Does nothing for null and for a path that names
    /// neither a file nor a folder.
    void AddFile(const char* path, unsigned long length) noexcept;
    void MoveFileToTop(const char* path, unsigned long length) noexcept;

    /// Saves, if asked, even if there was nothing to remove.
    void RemoveFile(unsigned int index, bool save) noexcept;
    void ClearMRUList(bool save) noexcept;

    /// As `IndexOf` compares.
    bool Contains(const char* path) noexcept;

    /// -1 when it is not in the list.
    int IndexOf(const char* path) noexcept;

    /// Null when out of range; valid until the entry is removed.
    const char* GetFileWithPath(unsigned int index) const noexcept;

    /// What is after the last separator.
    const char* GetFileNameOnly(unsigned int index) const noexcept;

    /// All zero when out of range.
    _MRUData GetMRUItem(unsigned int index) noexcept;

    /// True after `Init` was called.
    VTRUTILS_INLINE bool Initialized() const noexcept { return initialized; }

private:
    friend struct vtr::Internals<CMRUList>;

    vtr::PointerFields<_MRUData> entries;
    HKEY root;    ///< null: nothing is loaded or saved
    char* subKey; ///< null stands for ""
    char pathFormat[128];
    char lengthFormat[128];
    char timeFormat[128];
    bool initialized;
};

#endif
