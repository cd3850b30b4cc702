// Writes to the file that it is told what the library says of the system.

#include "utilities/system/info/CpuUsage.h"
#include "utilities/system/info/SystemInfo.h"

#include <cstdio>

int main(int count, char** arguments) {
    std::FILE* out = count == 2 ? std::fopen(arguments[1], "wb") : nullptr;
    if (out == nullptr)
        return 1;
    char description[300];
    const int code = GetWindowsSystemVersion(description);
    CCpuUsage usage;
    std::fprintf(out, "%d %d %d %d|%s", code, OSIsNativeUnicode(), SystemUsesXPThemes(),
                 usage.GetCpuUsage(), description);
    return std::fclose(out) == 0 ? 0 : 1;
}
