#ifndef VTRUTILS_TEXT_INI_INISECTION_H
#define VTRUTILS_TEXT_INI_INISECTION_H

#include "utilities/Export.h"
#include "utilities/Fields.h"
#include "utilities/text/ini/IniValue.h"

#include <cstddef>
#include <cstdio>

/// A named list of pairs of an INI document, in file order until sorted; keys may repeat. Names and
/// keys compare without regard to case in the current multibyte code page.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CIniSection {
public:
    CIniSection() noexcept;
    explicit CIniSection(const char* newName) noexcept;
    CIniSection(const CIniSection&) = delete;
    CIniSection& operator=(const CIniSection&) = delete;
    ~CIniSection();

    /// At most 63 bytes; "" names the section of the pairs that precede the first header.
    VTRUTILS_INLINE const char* Name() const noexcept { return name; }

    /// Cut to 63 bytes; null gives "". Sort a sorted document again after renaming a section.
    void SetName(const char* newName) noexcept;

    /// Nothing when the name has 63 bytes already.
    void AppendToName(char c) noexcept;

    VTRUTILS_INLINE unsigned int NumValues() const noexcept { return values.count; }

    /// Null when out of range. The section keeps the pair.
    VTRUTILS_INLINE CIniValue* GetValue(unsigned int index) noexcept { return values.At(index); }
    VTRUTILS_INLINE const CIniValue* GetValue(unsigned int index) const noexcept {
        return values.At(index);
    }

    /// Appends a pair; neither looks for the key nor sorts. False, with nothing appended, for a
    /// null or empty key or when memory runs out.
    bool AddValue(const char* key, const char* value) noexcept;

    /// Appends a copy. False when memory runs out.
    bool AddValue(CIniValue& value) noexcept;

    /// Appends a pair made with `new` and owns it from then on. False, with the caller still the
    /// owner, for null or when memory runs out.
    bool AddValue(CIniValue* value) noexcept;

    /// Gives the first pair with that key, always found by a scan from the start, the new value;
    /// adds a pair when there is none, and then sorts again if `KeepSorted()`. False for a null or
    /// empty key or when memory runs out.
    bool SetValue(const char* key, const char* value) noexcept;

    /// False when the index is out of range or memory runs out.
    bool SetValue(int index, const char* value) noexcept;

    /// Writes the value of the first pair with that key (in a sorted section, of any), cut to
    /// `bufferSize` - 1 bytes. When there is none or its value is empty, the whole buffer is zeroed
    /// and the default, if any, written the same way. Nothing for a null buffer or a size of 0.
    void GetString(const char* key, const char* defaultValue, char* buffer,
                   unsigned int bufferSize) const noexcept;

    /// True when `GetString` would find a value that is not empty.
    bool HasValue(const char* key) const noexcept;

    /// Nothing when out of range.
    void RemoveKey(unsigned int index) noexcept;

    /// Removes every pair with that key. Nothing for null or "".
    void RemoveKey(const char* key) noexcept;

    void Clear() noexcept;

    /// The sections named in the header as parents, until the document has resolved them. Null and
    /// "" are not added.
    void AddParent(const char* parent) noexcept;
    VTRUTILS_INLINE int NumParents() const noexcept { return static_cast<int>(parents.count); }
    /// Null when out of range.
    const char* GetParent(int index) const noexcept;
    void RemoveParents() noexcept;

    /// Sorts by key and sets `KeepSorted()`; each sort reverses the order of equal keys. When
    /// memory runs out the order stays as it is and `KeepSorted()` is false.
    void Sort() noexcept;

    /// True: keys are looked up by binary search, and a pair that `SetValue` adds is sorted in.
    VTRUTILS_INLINE bool KeepSorted() const noexcept { return keepSorted; }

    /// Set it only while the keys are in order: the search relies on that.
    VTRUTILS_INLINE void SetKeepSorted(bool sorted) noexcept { keepSorted = sorted; }

    /// Writes the header and a line a pair, with CR LF; a value that begins or ends with a space is
    /// put in double quotes. Pairs without a key are left out. False, with nothing written, for a
    /// null stream, a section without a name or when memory runs out; false when writing fails.
    bool Save(std::FILE* stream) const noexcept;

private:
    friend struct vtr::Internals<CIniSection>;

    static constexpr unsigned nameSize = 64;

    char name[nameSize];
    vtr::PointerFields<CIniValue> values;
    bool keepSorted;
    bool keysDiffer;             ///< no two keys are the same: known by sorting
    mutable unsigned afterFound; ///< where a look-up in order goes on; may be out of range
    vtr::PointerFields<char> parents;
};

#endif
