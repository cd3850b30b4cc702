#ifndef VTRUTILS_TEXT_INI_INIINTERNALS_H
#define VTRUTILS_TEXT_INI_INIINTERNALS_H

#include "utilities/base/Layout.h"
#include "utilities/base/PtrArray.h"
#include "utilities/text/ini/IniFileReader.h"

/// What the library itself may do to INI documents beyond their public functions. Private to the
/// library. One thread at a time.

template <>
struct vtr::Internals<CIniValue> {
    static_assert(sizeof(CIniValue) == vtr::ByPointer(24, 12));
    VTR_FIELD_AT(CIniValue, key, 0);
    VTR_FIELD_AT(CIniValue, value, 8, 4);

    /// Makes a pair in one block with its texts; an empty value is null. Null when memory
    /// runs out.
    static CIniValue* Create(const char* key, std::size_t keyLength, const char* value,
                             std::size_t valueLength);
    static char* Key(CIniValue& pair) { return pair.key; }
};

template <>
struct vtr::Internals<CIniSection> {
    static constexpr unsigned nameSize = CIniSection::nameSize;
    static_assert(sizeof(CIniSection) == vtr::ByPointer(104, 96) && nameSize == 64);
    VTR_FIELD_AT(CIniSection, name, 0);
    VTR_FIELD_AT(CIniSection, values, 64);
    VTR_FIELD_AT(CIniSection, keepSorted, 80, 76);
    VTR_FIELD_AT(CIniSection, parents, 88, 84);

    static ConstPointers<CIniValue> Values(const CIniSection& section) {
        return ConstPointers(section.values);
    }
    /// By binary search when the keys are in order, else the first in order. Null for null and "".
    static CIniValue* Find(const CIniSection& section, const char* key);
    /// The first in order, or null.
    static CIniValue* FindFirst(const CIniSection& section, const char* key);
};

template <>
struct vtr::Internals<CIniFileReader> {
    static_assert(sizeof(CIniFileReader) == vtr::ByPointer(32, 24));
    VTR_FIELD_AT(CIniFileReader, fileName, 0);
    VTR_FIELD_AT(CIniFileReader, sections, 8, 4);
    VTR_FIELD_AT(CIniFileReader, lastSectionIndex, 24, 16);
    VTR_FIELD_AT(CIniFileReader, keepSorted, 28, 20);
    VTR_FIELD_AT(CIniFileReader, initialized, 29, 21);

    static Pointers<CIniSection> Sections(CIniFileReader& document) {
        return Pointers(document.sections);
    }
    /// Appends an empty section. Null when memory runs out.
    static CIniSection* AddSection(CIniFileReader& document, const char* name);
    /// The index of the first section of that name, or -1.
    static int FindFirst(const CIniFileReader& document, const char* name);
    /// The index of the section that a look-up finds, or -1.
    static int Find(const CIniFileReader& document, const char* name);
    /// The same, and remembers it. The section found last and the one after it are tried first:
    /// documents are mostly read in order.
    static CIniSection* FindNear(const CIniFileReader& document, const char* name);
};

#endif
