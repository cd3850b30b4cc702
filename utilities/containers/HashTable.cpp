#include "utilities/containers/HashTable.h"

#include "common/Require.h"
#include "utilities/base/Layout.h"
#include "utilities/base/MultibyteText.h"

#include <cstddef>
#include <new>
// After them: its one-letter macros break C++ headers.
#include <mbstring.h>

template <>
struct vtr::Internals<CHashTable> {
    static_assert(sizeof(CHashTable) == vtr::ByPointer(24, 12));
    VTR_FIELD_AT(CHashTable, bucketCount, 8, 4);
    VTR_FIELD_AT(CHashTable, buckets, 16, 8);

    static void MakeBuckets(CHashTable& table, int number);
    static void FreeBuckets(CHashTable& table);
    static void CopyBuckets(CHashTable& table, const CHashTable& other);
    static CMyArrayList* BucketOf(const CHashTable& table, const char* key);
    static int IndexOf(const CHashTable& table, const char* key, const long long* value,
                       CMyArrayList*& bucket);
};

using Internals = vtr::Internals<CHashTable>;

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
    Internals::MakeBuckets(*this, number > 0 ? number : 1);
}

CHashTable::CHashTable(const CHashTable& other) noexcept : bucketCount(0), buckets(nullptr) {
    Internals::CopyBuckets(*this, other);
}

CHashTable& CHashTable::operator=(const CHashTable& other) noexcept {
    if (this != &other) {
        Internals::FreeBuckets(*this);
        Internals::CopyBuckets(*this, other);
    }
    return *this;
}

CHashTable::~CHashTable() {
    Internals::FreeBuckets(*this);
}

/// All lists are one array, so that a table costs two allocations.
void Internals::MakeBuckets(CHashTable& table, int number) {
    const std::size_t size = static_cast<std::size_t>(number);
    CMyArrayList* lists = new (std::nothrow) CMyArrayList[size];
    table.buckets = new (std::nothrow) CMyArrayList*[size];
    if (lists == nullptr || table.buckets == nullptr) {
        delete[] lists;
        delete[] table.buckets;
        table.buckets = nullptr;
        return;
    }
    for (std::size_t i = 0; i < size; ++i)
        table.buckets[i] = &lists[i];
    table.bucketCount = number;
}

void Internals::FreeBuckets(CHashTable& table) {
    if (table.bucketCount > 0)
        delete[] table.buckets[0];
    delete[] table.buckets;
    table.buckets = nullptr;
    table.bucketCount = 0;
}

void Internals::CopyBuckets(CHashTable& table, const CHashTable& other) {
    if (other.bucketCount > 0)
        MakeBuckets(table, other.bucketCount);
    for (int i = 0; i < table.bucketCount; ++i) {
        table.buckets[i]->Copy(*other.buckets[i]);
        if (table.buckets[i]->NumNodes() != other.buckets[i]->NumNodes())
            FreeBuckets(table);
    }
}

/// By the sum of the bytes as signed numbers. Requires: buckets.
CMyArrayList* Internals::BucketOf(const CHashTable& table, const char* key) {
    VTR_REQUIRE(table.bucketCount > 0);
    unsigned sum = 0;
    for (; *key != '\0'; ++key)
        sum += static_cast<unsigned>(static_cast<signed char>(*key));
    return table.buckets[sum % static_cast<unsigned>(table.bucketCount)];
}

/// The first entry with this key, and this value unless that is null, in its bucket; or -1.
int Internals::IndexOf(const CHashTable& table, const char* key, const long long* value,
                       CMyArrayList*& bucket) {
    if (key == nullptr || table.bucketCount == 0)
        return -1;
    CMyArrayList* const list = BucketOf(table, key);
    bucket = list;
    const int count = list->NumNodes();
    for (int i = 0; i < count; ++i) {
        const char* other = static_cast<const char*>(list->FastIndex(i));
        // A host that has the bucket may have put a null there.
        if (other == nullptr || !SameKey(other, key))
            continue;
        long long found = 0;
        list->Index(i, &found);
        if (value == nullptr || found == *value)
            return i;
    }
    return -1;
}

bool CHashTable::AddEntry(char* key, long long value) noexcept {
    if (key != nullptr && bucketCount > 0)
        Internals::BucketOf(*this, key)->AppendToTail(key, value);
    return true;
}

bool CHashTable::Find(const char* key, long long& valueOut) noexcept {
    CMyArrayList* bucket = nullptr;
    const int index = Internals::IndexOf(*this, key, nullptr, bucket);
    return index >= 0 && bucket->Index(index, &valueOut) != nullptr;
}

bool CHashTable::Remove(char* key, long long value) noexcept {
    CMyArrayList* bucket = nullptr;
    const int index = Internals::IndexOf(*this, key, &value, bucket);
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
