#ifndef VTRUTILS_BASE_PATHBUILDER_H
#define VTRUTILS_BASE_PATHBUILDER_H

#include "common/Require.h"

#include <cstddef>
#include <cwchar>

namespace vtr {

/// A wide path that is put together piece by piece. Private to the library. One thread at a time.
template <std::size_t capacity = 260>
class PathBuilder {
public:
    /// False, with the path as it was, when that does not fit.
    bool Append(const wchar_t* text, std::size_t count) {
        if (count >= capacity - length)
            return false;
        std::wmemcpy(path + length, text, count);
        length += count;
        path[length] = L'\0';
        return true;
    }
    bool Append(const wchar_t* text) { return Append(text, std::wcslen(text)); }

    /// Requires: `count` <= Length().
    void CutTo(std::size_t count) {
        VTR_REQUIRE(count <= length);
        length = count;
        path[length] = L'\0';
    }

    const wchar_t* Get() const { return path; }
    std::size_t Length() const { return length; }
    bool EndsWithBackslash() const { return length > 0 && path[length - 1] == L'\\'; }

private:
    wchar_t path[capacity] = {};
    std::size_t length = 0;
};

} // namespace vtr

#endif
