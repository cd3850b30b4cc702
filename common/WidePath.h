#ifndef VTR_COMMON_WIDEPATH_H
#define VTR_COMMON_WIDEPATH_H

#include <windows.h>

#include <cstdlib>

/// The one place where a narrow path becomes UTF-16. Private to the two libraries.

namespace vtr {

/// `path` converted with `codePage` (0: the system's ANSI code page), of any length. Get() is ""
/// for a null path, for bytes that the code page cannot convert, and when memory runs out: no file
/// has that name, so the call that follows fails as for a missing file. One thread at a time.
class WidePath {
public:
    WidePath(const char* path, unsigned codePage) {
        if (path == nullptr)
            return;
        int units = MultiByteToWideChar(codePage, 0, path, -1, small, smallUnits);
        if (units > 0 || GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
            if (units == 0)
                small[0] = L'\0';
            return;
        }
        small[0] = L'\0';
        units = MultiByteToWideChar(codePage, 0, path, -1, nullptr, 0);
        if (units <= 0)
            return;
        large =
            static_cast<wchar_t*>(std::malloc(static_cast<std::size_t>(units) * sizeof(wchar_t)));
        if (large != nullptr)
            MultiByteToWideChar(codePage, 0, path, -1, large, units);
    }
    WidePath(const WidePath&) = delete;
    WidePath& operator=(const WidePath&) = delete;
    ~WidePath() { std::free(large); }

    const wchar_t* Get() const { return large != nullptr ? large : small; }

private:
    static constexpr int smallUnits = MAX_PATH;
    wchar_t small[smallUnits] = L"";
    wchar_t* large = nullptr;
};

} // namespace vtr

#endif
