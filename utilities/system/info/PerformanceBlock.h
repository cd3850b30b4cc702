#ifndef VTRUTILS_SYSTEM_INFO_PERFORMANCEBLOCK_H
#define VTRUTILS_SYSTEM_INFO_PERFORMANCEBLOCK_H

#include "utilities/base/ByteRange.h"

#include <windows.h>

namespace vtr {

/// A counter by the numbers that Windows gives to the names of objects and counters.
struct CounterName {
    DWORD object;
    DWORD counter;
};

/// A block of performance data, which other modules filled: its lengths and offsets may be anything
/// and lead outside, backwards or nowhere. What does not lie whole where it must is not found. The
/// cost is linear in the length. Of several records with one name the first counts. Counters have
/// 32 or 64 bits. Private to the library. Immutable and safe.
class PerformanceBlock {
public:
    /// Requires: `length` readable bytes, which outlive this.
    PerformanceBlock(const void* data, std::size_t length);

    /// When the data was gathered, in units of 100 ns. False if the block is too short.
    bool Time(long long& time) const;

    // Each is false, with `value` as it was, if the counter is not found.

    /// Of an object without instances.
    bool Counter(const CounterName& name, long long& value) const;

    /// Of the instance with that name, compared without regard to case in the ANSI page.
    bool OfInstance(const CounterName& name, const char* instance, long long& value) const;

    /// Of the instance whose `idCounter` has that value.
    bool OfInstance(const CounterName& name, DWORD idCounter, long long id, long long& value) const;

private:
    ByteRange block;
};

} // namespace vtr

#endif
