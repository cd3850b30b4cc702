#include "utilities/text/language/StringCache.h"

#include "utilities/base/OwnedText.h"

#include <cstdint>
#include <cstring>

namespace vtr {

StringCache::~StringCache() {
    for (unsigned b = 0; b < bucketCount; ++b) {
        CMyArrayList* bucket = table.GetTable(b);
        for (int i = 0; bucket != nullptr && i < bucket->NumNodes(); ++i)
            std::free(bucket->FastIndex(i));
    }
}

const char* StringCache::Find(const char* key) {
    long long text = 0;
    return table.Find(key, text) ? reinterpret_cast<const char*>(static_cast<std::uintptr_t>(text))
                                 : nullptr;
}

void StringCache::Add(const char* key, const char* text) {
    const std::size_t keySize = std::strlen(key) + 1;
    const std::size_t textSize = std::strlen(text) + 1;
    OwnedText block(static_cast<char*>(std::malloc(keySize + textSize)));
    if (block == nullptr)
        return;
    std::memcpy(block.get(), key, keySize);
    char* copy = block.get() + keySize;
    std::memcpy(copy, text, textSize);
    table.AddEntry(block.get(), reinterpret_cast<long long>(copy));
    if (Find(key) == copy)
        static_cast<void>(block.release());
}

} // namespace vtr
