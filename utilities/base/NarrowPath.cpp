#include "utilities/base/NarrowPath.h"

#include "common/WidePath.h"

#include <windows.h>

namespace vtr {

namespace {

/// What cannot be converted becomes something that reads otherwise: callers look.
OwnedText Narrow(const wchar_t* text, unsigned codePage) {
    const int size = WideCharToMultiByte(codePage, /*dwFlags=*/0, text, -1, nullptr, 0,
                                         /*lpDefaultChar=*/nullptr, /*lpUsedDefaultChar=*/nullptr);
    OwnedText narrow(size > 0 ? static_cast<char*>(std::malloc(static_cast<std::size_t>(size)))
                              : nullptr);
    if (narrow != nullptr &&
        WideCharToMultiByte(codePage, /*dwFlags=*/0, text, -1, narrow.get(), size,
                            /*lpDefaultChar=*/nullptr, /*lpUsedDefaultChar=*/nullptr) == 0)
        narrow.reset();
    return narrow;
}

/// Null when it does not read as the path again.
OwnedText NarrowIn(unsigned codePage, const wchar_t* path) {
    OwnedText narrow = Narrow(path, codePage);
    if (narrow != nullptr &&
        std::wcscmp(WidePath(narrow.get(), CurrentCodePage()).Get(), path) != 0)
        narrow.reset();
    return narrow;
}

OwnedText NarrowInSomePage(const wchar_t* path, unsigned firstPage) {
    OwnedText narrow = NarrowIn(firstPage, path);
    if (narrow == nullptr && firstPage != CurrentCodePage())
        narrow = NarrowIn(CurrentCodePage(), path);
    return narrow != nullptr ? std::move(narrow) : NarrowIn(CP_ACP, path);
}

} // namespace

OwnedText ExactText(const wchar_t* text, unsigned codePage) {
    OwnedText narrow = Narrow(text, codePage);
    WideText again;
    if (narrow != nullptr && (!again.Convert(narrow.get(), codePage, /*strict=*/true) ||
                              std::wcscmp(again.Get(), text) != 0))
        narrow.reset();
    return narrow;
}

OwnedText NearestText(const wchar_t* text, unsigned codePage) {
    return Narrow(text, codePage);
}

OwnedText NarrowPath(const wchar_t* path, unsigned firstPage) {
    OwnedText narrow = NarrowInSomePage(path, firstPage);
    wchar_t shortName[MAX_PATH];
    if (narrow == nullptr) {
        const DWORD length = GetShortPathNameW(path, shortName, MAX_PATH);
        if (length > 0 && length < MAX_PATH)
            narrow = NarrowInSomePage(shortName, firstPage);
    }
    return narrow;
}

} // namespace vtr
