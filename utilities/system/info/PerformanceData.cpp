#include "utilities/system/info/PerformanceData.h"

#include "utilities/base/OwnedText.h"

#include <algorithm>
#include <cstdio>

namespace vtr {

namespace {

constexpr DWORD firstSize = 102'400;
constexpr DWORD step = 10'240;
/// Far above what any system answers: a provider that always has more data must not take all
/// memory.
constexpr DWORD largestSize = 64 * 1024 * 1024;

/// Keeps its size from one query to the next.
class QueryBuffer {
public:
    /// False when memory runs out; the old bytes are gone.
    bool Resize(DWORD newSize) {
        bytes.reset();
        bytes = AllocateChars<BYTE>(newSize);
        size = bytes != nullptr ? newSize : 0;
        return bytes != nullptr;
    }
    BYTE* Get() const { return bytes.get(); }
    DWORD Size() const { return size; }

private:
    OwnedBytes bytes;
    DWORD size = 0;
};

QueryBuffer buffer;

} // namespace

PerformanceBlock QueryPerformanceData(DWORD object) {
    const PerformanceBlock nothing(nullptr, 0);
    char name[16];
    std::snprintf(name, sizeof name, "%d", static_cast<int>(object));
    if (buffer.Get() == nullptr && !buffer.Resize(firstSize))
        return nothing;
    for (;;) {
        DWORD length = buffer.Size();
        const LSTATUS status = RegQueryValueExA(HKEY_PERFORMANCE_DATA, name, /*lpReserved=*/nullptr,
                                                /*lpType=*/nullptr, buffer.Get(), &length);
        if (status == ERROR_SUCCESS)
            return {buffer.Get(), std::min(length, buffer.Size())};
        if (status != ERROR_MORE_DATA)
            return nothing;
        if (buffer.Size() > largestSize - step) {
            buffer.Resize(firstSize);
            return nothing;
        }
        if (!buffer.Resize(buffer.Size() + step))
            return nothing;
    }
}

} // namespace vtr
