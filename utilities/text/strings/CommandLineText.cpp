#include "utilities/text/strings/CommandLineText.h"

#include "utilities/base/NarrowPath.h"
#include "utilities/base/PathBuilder.h"
#include "utilities/text/strings/StringFunctions.h"

#include <cstring>
#include <windows.h>

#include <shlwapi.h>

namespace {

constexpr std::size_t shortestFilePath = 4;

struct Range {
    const wchar_t* begin;
    const wchar_t* end;
    std::size_t Length() const { return static_cast<std::size_t>(end - begin); }
};

Range Trimmed(Range range) {
    while (range.begin < range.end && *range.begin == L' ')
        ++range.begin;
    while (range.begin < range.end && range.end[-1] == L' ')
        --range.end;
    return range;
}

bool NamesFile(Range range) {
    vtr::PathBuilder<> path;
    return range.Length() > 0 && path.Append(range.begin, range.Length()) &&
           PathFileExistsW(path.Get()) && !PathIsDirectoryW(path.Get());
}

bool BeginsWithRootPath(const wchar_t* text) {
    if (wcsnlen(text, 3) < 3)
        return false;
    const wchar_t root[] = {text[0], text[1], text[2], L'\0'};
    return PathIsRootW(root) != FALSE;
}

/// Reads the parameter at `next`, which is not a space, and moves `next` past it.
Range ReadParameter(const wchar_t*& next) {
    if (*next == L'"') {
        const wchar_t* begin = ++next;
        while (*next != L'\0' && *next != L'"')
            ++next;
        const Range parameter{begin, next};
        if (*next == L'"')
            ++next;
        return parameter;
    }
    const bool path = BeginsWithRootPath(next);
    Range parameter{next, next};
    for (; *parameter.end != L'\0'; ++parameter.end) {
        if (*parameter.end != L' ')
            continue;
        if (!path || (parameter.Length() >= shortestFilePath && NamesFile(parameter)))
            break;
    }
    next = parameter.end;
    return parameter;
}

/// As a path, since most are one; what is not in any page with its missing letters replaced.
vtr::OwnedText NarrowParameter(Range range) {
    const auto wide = vtr::AllocateChars<wchar_t>(range.Length() + 1);
    if (wide == nullptr)
        return nullptr;
    std::wmemcpy(wide.get(), range.begin, range.Length());
    wide.get()[range.Length()] = L'\0';
    vtr::OwnedText narrow = vtr::NarrowPath(wide.get());
    return narrow != nullptr ? std::move(narrow) : vtr::NearestText(wide.get());
}

void Store(Range range, char* buffer, int size) {
    const vtr::OwnedText narrow = NarrowParameter(range);
    const std::size_t room = static_cast<std::size_t>(size) - 1;
    const std::size_t length = narrow != nullptr ? std::strlen(narrow.get()) : 0;
    std::memcpy(buffer, narrow.get(), length < room ? length : room);
    RemoveSpacesA(buffer, /*alsoLineBreaks=*/false);
}

} // namespace

void vtr::ParameterOfCommandLine(const wchar_t* commandLine, int index, char* buffer, int size) {
    if (buffer == nullptr || size < 1)
        return;
    std::memset(buffer, 0, static_cast<std::size_t>(size));
    if (index < 0)
        return;
    const wchar_t* next = commandLine;
    for (int i = 0; i <= index; ++i) {
        while (*next == L' ')
            ++next;
        if (*next == L'\0')
            return;
        if (i == index && i > 0) {
            const Range rest = Trimmed({next, next + std::wcslen(next)});
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
    vtr::ParameterOfCommandLine(GetCommandLineW(), index, buffer, size);
}
