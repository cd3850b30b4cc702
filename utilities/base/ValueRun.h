#ifndef VTRUTILS_BASE_VALUERUN_H
#define VTRUTILS_BASE_VALUERUN_H

#include "common/Require.h"

#include <cstdlib>
#include <cstring>
#include <type_traits>

namespace vtr {

/// A growing row of plain values, for work in progress; up to `localCapacity` of them need no
/// allocation. Private to the library. One thread at a time.
template <class T, int localCapacity>
class ValueRow {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    ValueRow() = default;
    ValueRow(const ValueRow&) = delete;
    ValueRow& operator=(const ValueRow&) = delete;
    ~ValueRow() {
        if (values != local)
            std::free(values);
    }

    int Count() const { return count; }
    T* begin() { return values; }
    T* end() { return values + count; }
    const T* begin() const { return values; }
    const T* end() const { return values + count; }

    /// Requires: 0 <= index < Count(). A reference is valid until the next `Append`.
    T& operator[](int index) {
        VTR_REQUIRE(index >= 0 && index < count);
        return values[index];
    }
    const T& operator[](int index) const {
        VTR_REQUIRE(index >= 0 && index < count);
        return values[index];
    }

    /// False, with nothing changed, when memory runs out.
    bool Append(const T& value) {
        const T copy = value; // it may be one of these
        if (count == capacity && !Grow())
            return false;
        values[count++] = copy;
        return true;
    }

    /// Requires: 0 <= newCount <= Count().
    void Truncate(int newCount) {
        VTR_REQUIRE(newCount >= 0 && newCount <= count);
        count = newCount;
    }

private:
    bool Grow() {
        if (capacity > 0x7FFFFFFF / 2)
            return false;
        const std::size_t size = static_cast<std::size_t>(capacity) * 2 * sizeof(T);
        void* grown = std::realloc(values == local ? nullptr : values, size);
        if (grown == nullptr)
            return false;
        if (values == local)
            std::memcpy(grown, local, sizeof local);
        values = static_cast<T*>(grown);
        capacity *= 2;
        return true;
    }

    T local[std::size_t{localCapacity}];
    T* values = local;
    int count = 0;
    int capacity = localCapacity;
};

/// A row of which there are few.
template <class T>
class ValueRun : public ValueRow<T, 32> {};

} // namespace vtr

#endif
