#include "common/WidePath.h"

#include "common/PageSteps.h"

#include <windows.h>

namespace vtr {

namespace {

bool IsAscii(const char* text) {
    while (static_cast<signed char>(*text) > 0)
        ++text;
    return *text == '\0';
}

bool IsAnsiPage(unsigned codePage) {
    return codePage == CP_ACP || codePage == GetACP();
}

bool Names(const wchar_t* path) {
    return GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}

/// Walks over the folders in a path, each with all that is before it, to the path itself.
class FolderWalk {
public:
    explicit FolderWalk(wchar_t* wholePath) : path(wholePath), end(wholePath) {}

    /// False at the end of the path.
    bool Next() {
        end += std::wcsspn(end, L"\\/");
        const std::size_t length = std::wcscspn(end, L"\\/");
        end += length;
        return length > 0;
    }

    bool IsSameAs(const FolderWalk& other) const {
        const std::size_t length = static_cast<std::size_t>(end - path);
        return length == static_cast<std::size_t>(other.end - other.path) &&
               std::wmemcmp(path, other.path, length) == 0;
    }

    bool Exists() const {
        const wchar_t after = *end;
        *end = L'\0';
        const bool exists = Names(path);
        *end = after;
        return exists;
    }

private:
    wchar_t* path;
    wchar_t* end;
};

/// Whether the second reading of a path is the one that is meant. Both stay as they are.
bool SecondIsMeant(wchar_t* first, wchar_t* second) {
    if (std::wcscmp(first, second) == 0 || Names(first))
        return false;
    if (Names(second))
        return true;
    FolderWalk one(first);
    FolderWalk other(second);
    bool same = true;
    while (one.Next() && other.Next()) {
        same = same && one.IsSameAs(other);
        if (same)
            continue;
        const bool oneExists = one.Exists();
        const bool otherExists = other.Exists();
        if (!oneExists || !otherExists)
            return otherExists;
    }
    return false;
}

} // namespace

bool WideText::Convert(const char* source, unsigned codePage, bool strict) {
    std::free(large);
    large = nullptr;
    int units = Fill(source, codePage, strict ? MB_ERR_INVALID_CHARS : 0);
    // Some code pages know no flags.
    if (units == 0 && strict && GetLastError() == ERROR_INVALID_FLAGS)
        units = Fill(source, codePage, 0);
    if (units == 0)
        Get()[0] = L'\0';
    return units > 0;
}

int WideText::Fill(const char* source, unsigned codePage, unsigned long flags) {
    const int units = MultiByteToWideChar(codePage, flags, source, -1, small, smallUnits);
    if (units > 0 || GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return units;
    const int needed = MultiByteToWideChar(codePage, flags, source, -1, nullptr, 0);
    if (needed > 0)
        large =
            static_cast<wchar_t*>(std::malloc(static_cast<std::size_t>(needed) * sizeof(wchar_t)));
    return large != nullptr ? MultiByteToWideChar(codePage, flags, source, -1, large, needed) : 0;
}

WidePath::WidePath(const char* path, unsigned codePage) : page(codePage) {
    if (path == nullptr)
        return;
    if (IsAscii(path) || IsAnsiPage(codePage)) {
        text.Convert(path, CP_ACP, /*strict=*/false);
        return;
    }
    const bool inLanguage = text.Convert(path, codePage, /*strict=*/true);
    const bool inAnsi = ansi.Convert(path, CP_ACP, /*strict=*/true);
    ansiMeant = inAnsi && (!inLanguage || SecondIsMeant(text.Get(), ansi.Get()));
    if (ansiMeant)
        page = CP_ACP;
    else if (!inLanguage)
        text.Convert(path, codePage, /*strict=*/false);
}

unsigned PageForSteps(const char* path, unsigned codePage) {
    if (IsAnsiPage(codePage) || !(PageSteps(codePage).Multibyte() || PageSteps(CP_ACP).Multibyte()))
        return codePage;
    return WidePath(path, codePage).Page();
}

} // namespace vtr
