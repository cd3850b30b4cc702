#ifndef VTRUTILS_TEXT_LANGUAGE_STRINGCACHE_H
#define VTRUTILS_TEXT_LANGUAGE_STRINGCACHE_H

#include "utilities/containers/HashTable.h"

namespace vtr {

/// Texts that were looked up, by their keys, with case. Private to the library. One thread at a
/// time.
class StringCache {
public:
    StringCache() : table(bucketCount) {}
    StringCache(const StringCache&) = delete;
    StringCache& operator=(const StringCache&) = delete;
    ~StringCache();

    /// Null when there is none.
    const char* Find(const char* key);

    /// Keeps copies of both. Does nothing if memory runs out.
    void Add(const char* key, const char* text);

private:
    static constexpr int bucketCount = 25;

    CHashTable table; ///< each key is the start of a block that ends with its text
};

} // namespace vtr

#endif
