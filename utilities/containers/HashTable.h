#ifndef VTRUTILS_CONTAINERS_HASHTABLE_H
#define VTRUTILS_CONTAINERS_HASHTABLE_H

#include "utilities/Export.h"
#include "utilities/containers/MyArrayList.h"

/// A table from texts to 64-bit values with a fixed number of buckets. Keys compare exactly, in the
/// current multibyte code page, and may repeat. The table keeps pointers to the keys, not copies: a
/// key must stay as it is while it is in the table. Null is not a key: it is not added and not
/// found.
///
/// A table without memory for its buckets stays empty.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CHashTable {
public:
    /// A number below 1 counts as 1.
    explicit CHashTable(int buckets) noexcept;
    /// Has buckets of its own with the same entries, or no buckets if memory runs out.
    CHashTable(const CHashTable& other) noexcept;
    CHashTable& operator=(const CHashTable& other) noexcept;
    virtual ~CHashTable();

    /// Always true; `Find` tells whether there was memory for the entry.
    bool AddEntry(char* key, long long value) noexcept;

    /// Yields the value that was added first. False, with `valueOut` unchanged, when there is none.
    bool Find(const char* key, long long& valueOut) noexcept;

    /// Removes the first entry with this key and this value. False when there is none.
    bool Remove(char* key, long long value) noexcept;

    /// The bucket's entries: the items are the keys, the sort values the values. Null when out of
    /// range. The table keeps the list.
    CMyArrayList* GetTable(unsigned int bucket) noexcept;

    /// Keys and values stay the host's.
    void RemoveAll() noexcept;

private:
    friend struct vtr::Internals<CHashTable>;

    int bucketCount; ///< 0 when there was no memory
    CMyArrayList** buckets;
};

#endif
