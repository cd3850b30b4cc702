#ifndef VTRUTILS_CONTAINERS_STRINGDYNARRAY_H
#define VTRUTILS_CONTAINERS_STRINGDYNARRAY_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

/// An array of texts, each a copy of its own, kept either as UTF-16 or in single bytes, and sorted
/// if wanted. A text of the other kind is converted with the system's ANSI code page. Texts compare
/// without regard to case, by `_wcsicmp` or `_stricmp`. An empty text is kept as a null entry,
/// which is below all others and the same as a null or empty text.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CStringDynArray {
public:
    CStringDynArray() noexcept;
    /// Keeps UTF-16 if `keepWide`; else, and by default, single bytes.
    explicit CStringDynArray(bool keepWide) noexcept;
    /// Has copies of the texts and the settings; without texts when memory runs out.
    CStringDynArray(const CStringDynArray& other) noexcept;
    CStringDynArray& operator=(const CStringDynArray& other) noexcept;
    ~CStringDynArray();

    /// Adds the text at the end or, while the array is kept sorted, in order and after equal ones.
    /// False, with nothing changed, when memory runs out. The flag of the second form tells the two
    /// apart where the text is a literal null, and has no effect.
    bool AddString(const wchar_t* text) noexcept;
    bool AddString(const char* text, bool) noexcept;

    /// The index of the first text that is the same, or -1. Bisects while the array is sorted.
    int FindString(const char* text) noexcept;
    int FindString(const wchar_t* text) noexcept;

    /// The index of the first text that contains this one at any place, without regard to case; -1
    /// when there is none, for null or empty, and when memory runs out.
    int FindSubString(const char* text) noexcept;

    /// Null for a null entry, out of range, and in an array of the other kind.
    const wchar_t* GetWCString(unsigned int index) const noexcept;
    const char* GetChString(unsigned int index) const noexcept;
    const char* GetString(unsigned int index) const noexcept;

    /// Null entries count.
    unsigned int NumStrings() const noexcept;

    /// False when out of range. Those after it move up.
    bool RemoveString(unsigned int index) noexcept;
    void Clear() noexcept;

    /// On: sorts the array, unless it is sorted, and later texts are inserted in order. Off: they
    /// are appended.
    void SetMaintainSorted(bool on) noexcept;

    /// Equal texts keep their order. The array counts as sorted until a text is appended.
    void Sort() noexcept;

private:
    friend struct vtr::Internals<CStringDynArray>;

    bool wide;
    vtr::PointerFields<wchar_t> wideTexts;
    vtr::PointerFields<char> narrowTexts;
    bool sorted;
    bool maintainSorted;
};

#endif
