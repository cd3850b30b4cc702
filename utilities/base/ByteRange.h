#ifndef VTRUTILS_BASE_BYTERANGE_H
#define VTRUTILS_BASE_BYTERANGE_H

#include <cstddef>
#include <cstring>

namespace vtr {

/// A part of a block of bytes, whose contents are read and never trusted: nothing outside the part
/// is touched, and records need not be aligned. Private to the library. Immutable and safe.
class ByteRange {
public:
    ByteRange() = default;
    ByteRange(const void* bytes, std::size_t count)
        : data(static_cast<const unsigned char*>(bytes)), length(count) {}

    std::size_t Length() const { return length; }
    const unsigned char* Data() const { return data; }

    /// The record at that offset; false, with `record` as it was, if it does not lie whole in here.
    template <class Record>
    bool Read(std::size_t offset, Record& record) const {
        if (!Has(offset, sizeof record))
            return false;
        std::memcpy(&record, data + offset, sizeof record);
        return true;
    }

    /// False, with `part` as it was, if it does not lie whole in here.
    bool Part(std::size_t offset, std::size_t count, ByteRange& part) const {
        if (!Has(offset, count))
            return false;
        part = ByteRange(data + offset, count);
        return true;
    }

    /// From that offset to the end; empty if the offset is outside.
    ByteRange From(std::size_t offset) const {
        return offset <= length ? ByteRange(data + offset, length - offset) : ByteRange();
    }

private:
    bool Has(std::size_t offset, std::size_t count) const {
        return offset <= length && count <= length - offset;
    }

    const unsigned char* data = nullptr;
    std::size_t length = 0;
};

} // namespace vtr

#endif
