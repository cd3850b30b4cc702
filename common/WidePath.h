#ifndef VTR_COMMON_WIDEPATH_H
#define VTR_COMMON_WIDEPATH_H

#include <cstdlib>
#include <cwchar>

/// The one place where a narrow path becomes UTF-16. Private to the two libraries.

namespace vtr {

/// UTF-16 of any length. One thread at a time.
class WideText {
public:
    WideText() = default;
    WideText(const WideText&) = delete;
    WideText& operator=(const WideText&) = delete;
    ~WideText() { std::free(large); }

    /// False, with "" to get, for bytes that the code page does not have, for a code page that the
    /// system does not have, and when memory runs out. Without `strict` such bytes become whatever
    /// the system puts in their place.
    bool Convert(const char* text, unsigned codePage, bool strict);

    wchar_t* Get() { return large != nullptr ? large : small; }
    const wchar_t* Get() const { return large != nullptr ? large : small; }

private:
    int Fill(const char* text, unsigned codePage, unsigned long flags);

    static constexpr int smallUnits = 260;
    wchar_t small[smallUnits] = L"";
    wchar_t* large = nullptr;
};

/// A path of any length as UTF-16. Its text is in `codePage`, that of the language (0: the system's
/// ANSI code page), or in the ANSI page, because hosts have paths in that page from the system. The
/// ANSI page is meant if the path names a file or folder when read in that page, and nothing when
/// read in the other. If it names nothing in either, the page is meant in which more of its folders
/// are found, and the language's if that is equal. A path whose bytes are characters in one of the
/// pages only is in that page. A path of ASCII is the same in all pages, and nothing is looked up
/// for it. One thread at a time.
class WidePath {
public:
    WidePath(const char* path, unsigned codePage);

    /// "" for a null path and when memory runs out: no file has that name, so the call that follows
    /// fails as for a missing file.
    const wchar_t* Get() const { return ansiMeant ? ansi.Get() : text.Get(); }

    /// The code page of the narrow text: 0 for the ANSI page.
    unsigned Page() const { return page; }

private:
    WideText text;
    WideText ansi;
    bool ansiMeant = false;
    unsigned page;
};

/// `WidePath(path, codePage).Page()`, or any other page in which the steps over the path are the
/// same ones.
unsigned PageForSteps(const char* path, unsigned codePage);

} // namespace vtr

#endif
