#include "utilities/text/strings/CommandLineText.h"

#include "utilities/text/strings/StringFunctions.h"

#include <cstring>
#include <windows.h>

#include <shlwapi.h>

namespace {

constexpr std::size_t shortestFilePath = 4;

struct Range {
    const char* begin;
    const char* end;
    std::size_t Length() const { return static_cast<std::size_t>(end - begin); }
};

Range Trimmed(Range range) {
    while (range.begin < range.end && *range.begin == ' ')
        ++range.begin;
    while (range.begin < range.end && range.end[-1] == ' ')
        --range.end;
    return range;
}

bool NamesFile(Range range) {
    char path[MAX_PATH];
    if (range.Length() == 0 || range.Length() >= sizeof path)
        return false;
    std::memcpy(path, range.begin, range.Length());
    path[range.Length()] = '\0';
    return PathFileExistsA(path) && !PathIsDirectoryA(path);
}

bool BeginsWithRootPath(const char* text) {
    if (strnlen(text, 3) < 3)
        return false;
    const char root[] = {text[0], text[1], text[2], '\0'};
    return PathIsRootA(root) != FALSE;
}

/// Reads the parameter at `next`, which is not a space, and moves `next` behind it.
Range ReadParameter(const char*& next) {
    if (*next == '"') {
        const char* begin = ++next;
        while (*next != '\0' && *next != '"')
            ++next;
        const Range parameter{begin, next};
        if (*next == '"')
            ++next;
        return parameter;
    }
    const bool path = BeginsWithRootPath(next);
    Range parameter{next, next};
    for (; *parameter.end != '\0'; ++parameter.end) {
        if (*parameter.end != ' ')
            continue;
        if (!path || (parameter.Length() >= shortestFilePath && NamesFile(parameter)))
            break;
    }
    next = parameter.end;
    return parameter;
}

void Store(Range range, char* buffer, int size) {
    const std::size_t room = static_cast<std::size_t>(size) - 1;
    std::memcpy(buffer, range.begin, range.Length() < room ? range.Length() : room);
    RemoveSpacesA(buffer, /*alsoLineBreaks=*/false);
}

} // namespace

void vtr::ParameterOfCommandLine(const char* commandLine, int index, char* buffer, int size) {
    if (buffer == nullptr || size < 1)
        return;
    std::memset(buffer, 0, static_cast<std::size_t>(size));
    if (index < 0)
        return;
    const char* next = commandLine;
    for (int i = 0; i <= index; ++i) {
        while (*next == ' ')
            ++next;
        if (*next == '\0')
            return;
        if (i == index && i > 0) {
            const Range rest = Trimmed({next, next + std::strlen(next)});
            if (NamesFile(rest)) {
                Store(rest, buffer, size);
                return;
            }
        }
        const Range parameter = ReadParameter(next);
        if (i == index)
            Store(parameter, buffer, size);
    }
}

void GetCommandLineParameter(int index, char* buffer, int size) {
    vtr::ParameterOfCommandLine(GetCommandLineA(), index, buffer, size);
}
