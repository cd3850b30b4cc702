#ifndef VTRUTILS_CONTAINERS_LASTDIRLIST_H
#define VTRUTILS_CONTAINERS_LASTDIRLIST_H

#include "utilities/Export.h"
#include "utilities/Fields.h"
#include "utilities/containers/MyList.h"

#include <cstddef>

/// An entry of a `CLastDirList`.
struct _lastDirList {
    char path[264]; ///< terminated
    long long time; ///< seconds since 1970
    int value;      ///< the host's own
};
static_assert(sizeof(_lastDirList) == 280 && offsetof(_lastDirList, time) == 264 &&
              offsetof(_lastDirList, value) == 272);

/// Folders with a time and a number of the host's, newest first. Paths compare without regard to
/// case in the current multibyte code page and are cut to 263 bytes; a null path is never in the
/// list and is not added. A path may be one that this list gave out. An insertion into a list whose
/// count is the largest `int` throws `std::length_error("list too long")`.
///
/// "In time order" means before the first entry that is older, and so after entries of the same
/// time. After `MoveOrAddToTop`, or `UpdateOrAdd` without repositioning, the list may be out of
/// order: an entry may come before newer ones.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CLastDirList {
public:
    CLastDirList() noexcept;
    CLastDirList(const CLastDirList&) = delete;
    CLastDirList& operator=(const CLastDirList&) = delete;
    ~CLastDirList();

    /// Inserts a new entry in time order. Returns 1, even if memory runs out.
    int Add(char* path, long long time, int value, int unused);

    /// Inserts an entry made with `new` in time order, and owns it from then on. Returns 1; 0 for
    /// null and if memory runs out, and the entry then stays the caller's.
    int AddPtr(_lastDirList* entry, int unused);

    /// Puts a new entry with the current time before all others. It takes the value of the old
    /// entry, which is deleted, or 1000 if there was none. Returns 1, or 0 with nothing changed if
    /// memory runs out.
    int MoveOrAddToTop(char* path);

    /// Gives the entry a time and a value and, if `reposition` is not 0, its place in time order; a
    /// path that is not in the list is added. Returns 1.
    int UpdateOrAdd(char* path, long long time, int value, int reposition);

    /// The first entry with that path, which the list keeps; null when there is none.
    _lastDirList* ContainsDir(char* path) noexcept;

    /// Deletes every entry with that path.
    void DeletePath(char* path) noexcept;

    /// Does nothing if it is out of range.
    void DeleteIndex(int index) noexcept;
    void DeleteAll() noexcept;

    /// Newest first; entries of the same time stay in their order. Returns 1, or 0 with nothing
    /// changed if memory runs out.
    int Sort() noexcept;

private:
    vtr::NodeFields<_tNode_t> nodes;
};

#endif
