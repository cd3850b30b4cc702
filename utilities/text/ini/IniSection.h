#ifndef VTRUTILS_TEXT_INI_INISECTION_H
#define VTRUTILS_TEXT_INI_INISECTION_H

#include "utilities/Export.h"
#include "utilities/Fields.h"
#include "utilities/text/ini/IniValue.h"

#include <cstddef>
#include <cstdio>

/// A named list of pairs of an INI document, in file order until sorted. Keys may repeat. Names and
/// keys compare without regard to case in the current multibyte code page.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CIniSection {
public:
    CIniSection() noexcept;
    /// As `SetName`.
    explicit CIniSection(const char* newName) noexcept;
    CIniSection(const CIniSection&) = delete;
    CIniSection& operator=(const CIniSection&) = delete;
    ~CIniSection();

    /// At most 63 bytes. "" is the name of the section of pairs that come before the first header.
    VTRUTILS_INLINE const char* Name() const noexcept { return name; }

    /// Cuts the name to 63 bytes; null gives "". Sort a sorted document again after this.
    void SetName(const char* newName) noexcept;

    /// Does nothing if the name has 63 bytes already.
    void AppendToName(char c) noexcept;

    /// Inherited pairs count.
    VTRUTILS_INLINE unsigned int NumValues() const noexcept { return values.count; }

    /// Null when out of range. The pair stays the section's.
    VTRUTILS_INLINE CIniValue* GetValue(unsigned int index) noexcept { return values.At(index); }
    VTRUTILS_INLINE const CIniValue* GetValue(unsigned int index) const noexcept {
        return values.At(index);
    }

    /// Appends a pair, without looking for the key or sorting. False, with nothing appended, for a
    /// null or empty key and when memory runs out.
    bool AddValue(const char* key, const char* value) noexcept;

    /// Appends a copy. False, with nothing appended, when memory runs out.
    bool AddValue(CIniValue& value) noexcept;

    /// Appends a pair that was made with `new`, and owns it from then on. False, with the caller
    /// still the owner, for null and when memory runs out.
    bool AddValue(CIniValue* value) noexcept;

    /// Gives the first pair with that key the new value. The pair is always found by a scan from
    /// the start. Adds a pair if there is none, and then sorts again if `KeepSorted()`. False for a
    /// null or empty key, and when memory runs out; the value of a pair that was there is then
    /// null.
    bool SetValue(const char* key, const char* value) noexcept;

    /// False when the index is out of range. When memory runs out, false, with the value null.
    bool SetValue(int index, const char* value) noexcept;

    /// Writes the value of the first pair with that key (in a sorted section, of any of them), cut
    /// to `bufferSize` - 1 bytes. If there is none, or its value is empty, the whole buffer is
    /// zeroed, and the default, if any, is written in the same way. Does nothing for a null buffer
    /// or a size of 0.
    void GetString(const char* key, const char* defaultValue, char* buffer,
                   unsigned int bufferSize) const noexcept;

    /// True if `GetString` would find a value that is not empty.
    bool HasValue(const char* key) const noexcept;

    /// Does nothing when out of range.
    void RemoveKey(unsigned int index) noexcept;

    /// Removes every pair with that key. Does nothing for null and "", and when memory runs out.
    void RemoveKey(const char* key) noexcept;

    /// Removes every pair.
    void Clear() noexcept;

    /// Parents are the sections that the header names, until the document has resolved them. Null
    /// and "" are not added, and nothing is when memory runs out.
    void AddParent(const char* parent) noexcept;
    VTRUTILS_INLINE int NumParents() const noexcept { return static_cast<int>(parents.count); }
    /// Null when out of range; valid until the parents are removed.
    const char* GetParent(int index) const noexcept;
    void RemoveParents() noexcept;

    /// Sorts by key and sets `KeepSorted()`. Each sort reverses the order of equal keys. When
    /// memory runs out, the order stays as it is, and `KeepSorted()` is false.
    void Sort() noexcept;

    /// If true, keys are looked up by binary search, and a pair that `SetValue` adds is sorted in.
    VTRUTILS_INLINE bool KeepSorted() const noexcept { return keepSorted; }

    /// Set it only while the keys are in order: the search relies on that.
    VTRUTILS_INLINE void SetKeepSorted(bool sorted) noexcept { keepSorted = sorted; }

    /// Writes the header and one line per pair, each with CR LF. A value that begins or ends with a
    /// space is put in double quotes. Pairs without a key are left out. False, with nothing
    /// written, for a null stream, for a section without a name and when memory runs out; false
    /// also when writing fails.
    bool Save(std::FILE* stream) const noexcept;

private:
    friend struct vtr::Internals<CIniSection>;

    static constexpr unsigned nameSize = 64;

    char name[nameSize];
    vtr::PointerFields<CIniValue> values;
    bool keepSorted;
    bool keysDiffer;             ///< no two keys are the same: known by sorting
    mutable unsigned afterFound; ///< where a look-up in order continues; may be out of range
    vtr::PointerFields<char> parents;
};

#endif
