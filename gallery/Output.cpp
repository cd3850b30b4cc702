#include "gallery/Output.h"

#include "gallery/text/Text.h"

#include <windows.h>

namespace gallery {

bool Print(Stream stream, const std::wstring& text) {
    const DWORD kind = stream == Stream::output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE;
    // A program with windows has the console of its parent only if it asks for it.
    if (GetStdHandle(kind) == nullptr && !AttachConsole(ATTACH_PARENT_PROCESS))
        return false;
    const HANDLE file = GetStdHandle(kind);
    const std::wstring line = text + L"\r\n";
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(file, &mode))
        return WriteConsoleW(file, line.data(), static_cast<DWORD>(line.size()), &written,
                             /*lpReserved=*/nullptr) != FALSE;
    std::string bytes;
    Narrow(line, bytes, CP_UTF8);
    return WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     /*lpOverlapped=*/nullptr) != FALSE;
}

} // namespace gallery
