#ifndef VTRUTILS_BASE_WINDOWTEXT_H
#define VTRUTILS_BASE_WINDOWTEXT_H

#include "utilities/base/CodePage.h"

#include <cstddef>
#include <cstring>
#include <windows.h>

namespace vtr {

/// UTF-16 of a narrow text for Windows to show, in the code page of the language; in the system's
/// ANSI page when Windows does not know that one. Null counts as "". Private to the library.
/// Immutable and safe.
template <std::size_t size>
class WindowText {
public:
    /// Cuts the text to `size` - 1 bytes. In no code page do bytes become more UTF-16 units than
    /// they are.
    explicit WindowText(const char* text) {
        const int length = text != nullptr ? static_cast<int>(strnlen(text, size - 1)) : 0;
        if (length == 0)
            return;
        units = MultiByteToWideChar(CurrentCodePage(), 0, text, length, buffer, length);
        if (units == 0)
            units = MultiByteToWideChar(CP_ACP, 0, text, length, buffer, length);
        buffer[static_cast<unsigned>(units)] = L'\0';
    }

    const wchar_t* Get() const { return buffer; }
    int Length() const { return units; }

private:
    int units = 0;
    wchar_t buffer[size]{};
};

} // namespace vtr

#endif
