#include "utilities/containers/HashTable.h"

#include "utilities/base/MultibyteText.h"

#include <cstddef>
#include <new>
// Behind them: its one-letter macros break C++ headers.
#include <mbstring.h>

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<CHashTable> {
    static_assert(sizeof(CHashTable) == 24);
    static_assert(offsetof(CHashTable, bucketCount) == 8);
    static_assert(offsetof(CHashTable, buckets) == 16);
};

namespace {

const unsigned char* Bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

/// What `_mbscmp` calls equal. Texts that differ first in characters below 0x80 are different in
/// every code page; others may not be where such a byte is half a character.
bool SameKey(const char* left, const char* right) {
    std::size_t i = 0;
    for (; left[i] == right[i]; ++i) {
        if (left[i] == '\0')
            return true;
    }
    if (static_cast<signed char>(left[i]) >= 0 && static_cast<signed char>(right[i]) >= 0)
        return false;
    return vtr::IsMultibyteCodePage() && _mbscmp(Bytes(left), Bytes(right)) == 0;
}

} // namespace

CHashTable::CHashTable(int number) noexcept : bucketCount(0), buckets(nullptr) {
    MakeBuckets(number > 0 ? number : 1);
}

CHashTable::CHashTable(const CHashTable& other) noexcept : bucketCount(0), buckets(nullptr) {
    CopyBuckets(other);
}

CHashTable& CHashTable::operator=(const CHashTable& other) noexcept {
    if (this != &other) {
        FreeBuckets();
        CopyBuckets(other);
    }
    return *this;
}

CHashTable::~CHashTable() {
    FreeBuckets();
}

/// All lists are one array, so that a table costs two allocations.
void CHashTable::MakeBuckets(int number) noexcept {
    const std::size_t size = static_cast<std::size_t>(number);
    CMyArrayList* lists = new (std::nothrow) CMyArrayList[size];
    buckets = new (std::nothrow) CMyArrayList*[size];
    if (lists == nullptr || buckets == nullptr) {
        delete[] lists;
        delete[] buckets;
        buckets = nullptr;
        return;
    }
    for (std::size_t i = 0; i < size; ++i)
        buckets[i] = &lists[i];
    bucketCount = number;
}

void CHashTable::FreeBuckets() noexcept {
    if (bucketCount > 0)
        delete[] buckets[0];
    delete[] buckets;
    buckets = nullptr;
    bucketCount = 0;
}

void CHashTable::CopyBuckets(const CHashTable& other) noexcept {
    if (other.bucketCount > 0)
        MakeBuckets(other.bucketCount);
    for (int i = 0; i < bucketCount; ++i) {
        buckets[i]->Copy(*other.buckets[i]);
        if (buckets[i]->NumNodes() != other.buckets[i]->NumNodes())
            FreeBuckets();
    }
}

/// The sum of the bytes as signed numbers. Requires: buckets.
unsigned int CHashTable::HashFunction(const char* key) const noexcept {
    unsigned sum = 0;
    for (; *key != '\0'; ++key)
        sum += static_cast<unsigned>(static_cast<signed char>(*key));
    return sum % static_cast<unsigned>(bucketCount);
}

/// The first entry with this key, and this value unless that is null, in its bucket; or -1.
int CHashTable::IndexOf(const char* key, const long long* value,
                        CMyArrayList*& bucket) const noexcept {
    if (key == nullptr || bucketCount == 0)
        return -1;
    bucket = buckets[HashFunction(key)];
    const int count = bucket->NumNodes();
    for (int i = 0; i < count; ++i) {
        const char* other = static_cast<const char*>(bucket->FastIndex(i));
        // A host that has the bucket may have put a null there.
        if (other == nullptr || !SameKey(other, key))
            continue;
        long long found = 0;
        bucket->Index(i, &found);
        if (value == nullptr || found == *value)
            return i;
    }
    return -1;
}

bool CHashTable::AddEntry(char* key, long long value) noexcept {
    if (key != nullptr && bucketCount > 0)
        buckets[HashFunction(key)]->AppendToTail(key, value);
    return true;
}

bool CHashTable::Find(const char* key, long long& valueOut) noexcept {
    CMyArrayList* bucket = nullptr;
    const int index = IndexOf(key, nullptr, bucket);
    return index >= 0 && bucket->Index(index, &valueOut) != nullptr;
}

bool CHashTable::Remove(char* key, long long value) noexcept {
    CMyArrayList* bucket = nullptr;
    const int index = IndexOf(key, &value, bucket);
    if (index < 0)
        return false;
    bucket->RemoveByIndex(index);
    return true;
}

CMyArrayList* CHashTable::GetTable(unsigned int bucket) noexcept {
    return bucket < static_cast<unsigned>(bucketCount) ? buckets[bucket] : nullptr;
}

void CHashTable::RemoveAll() noexcept {
    for (int i = 0; i < bucketCount; ++i)
        buckets[i]->RemoveAll();
}
