#ifndef VTRUTILS_TEXT_INI_INIFILEREADER_H
#define VTRUTILS_TEXT_INI_INIFILEREADER_H

#include "utilities/Export.h"
#include "utilities/Fields.h"
#include "utilities/text/ini/IniSection.h"
#include "utilities/text/ini/IniValue.h"

/// An INI document in memory: read from a file or a buffer, looked up, changed, sorted and saved.
///
/// It may be single-byte text or UTF-16 little-endian, with or without a byte-order mark; each unit
/// is reduced to its low byte. Any bytes load or are refused without harm. Refused are keys and
/// values of 8,191 bytes or more, values without a key ("=x") and documents of 2 GB or more; what
/// precedes the fault stays in the document. Names and keys compare without regard to case in the
/// current multibyte code page.
/// Thread-safety: one thread at a time, reading included: a look-up changes what is remembered.
class VTRUTILS_API CIniFileReader {
public:
    CIniFileReader() noexcept;
    CIniFileReader(const CIniFileReader&) = delete;
    CIniFileReader& operator=(const CIniFileReader&) = delete;
    ~CIniFileReader();

    /// Loads a file, sorts it if asked, and gives each section what it inherits from the parents
    /// that its header names ("[Child] : [Base] : [Other]"; earlier parents win, own values
    /// always). False for a null or empty path, a missing, unreadable or empty file, a refused
    /// document, and one whose sections inherit too much: more than 16 million pairs, more than
    /// there is memory for, or by so many ways that 300 million steps do not find what (ordinary
    /// documents take a few per pair). That is logged, and the document is empty.
    bool Init(const char* path, bool sort) noexcept;

    /// Parses `length` bytes. Parents stay in the sections, unresolved, and `Initialized()` false.
    /// False for null and for a refused document.
    bool InitFromBuffer(const unsigned char* data, unsigned int length, bool sort) noexcept;

    /// True only after `Init` succeeded.
    VTRUTILS_INLINE bool Initialized() const noexcept { return initialized; }

    /// Null until set.
    VTRUTILS_INLINE const char* FileName() const noexcept { return fileName; }

    /// Null or "" clears the name and is true. False when memory runs out.
    bool SetFileName(const char* path) noexcept;

    VTRUTILS_INLINE unsigned int NumSections() const noexcept { return sections.count; }

    /// True: sections are looked up by binary search. Set it only while their names are in order.
    VTRUTILS_INLINE bool KeepSorted() const noexcept { return keepSorted; }
    VTRUTILS_INLINE void SetKeepSorted(bool sorted) noexcept { keepSorted = sorted; }

    /// Writes the value as `CIniSection::GetString` does. True when the section was found, also
    /// where the key was not. Otherwise the buffer is zeroed, the default written, and the result
    /// false. False with nothing written for a null key or buffer or a size of 0. The section read
    /// last and the one behind it are found by one comparison each.
    bool GetString(const char* section, const char* key, const char* defaultValue, char* buffer,
                   unsigned int bufferSize) const noexcept;

    /// False for a key whose value is empty, and for the value "NOPE_NO_KEY".
    bool KeyExists(const char* section, const char* key) const noexcept;

    bool SectionExists(const char* name) const noexcept;

    /// The first section of that name (in a sorted document, any), null when there is none and for
    /// null and "". The document keeps it.
    CIniSection* GetSection(const char* name) noexcept;

    /// Null when out of range. Index 0 is the unnamed section when pairs precede the first header.
    CIniSection* GetSection(int index) noexcept;
    const char* SectionName(unsigned int index) const noexcept;

    /// 0 when out of range.
    int GetNumValues(int sectionIndex) const noexcept;

    /// Null when either is out of range.
    const CIniValue* GetValue(int sectionIndex, int valueIndex) const noexcept;

    /// False when an index is out of range or memory runs out.
    bool SetValue(int sectionIndex, int valueIndex, const char* value) noexcept;

    /// Sets the value in the first section of that name, which is added when missing; a sorted
    /// document stays sorted. False for a null or empty section or key or when memory runs out.
    bool SetValue(const char* section, const char* key, const char* value) noexcept;

    /// Sorts sections by name and all pairs by key; look-ups are binary searches from then on. Each
    /// sort reverses the order of equal names. `KeepSorted()` stays false when memory runs out.
    void Sort() noexcept;

    /// Writes every named section, each followed by two CR LF, to the file name; a sorted document
    /// is sorted again first. The new text takes the file's place only when it is complete and
    /// closed: false leaves the previous file as it was. Attributes stay, and a symbolic link
    /// stays: what it names is written. A file that another program has open, or that has
    /// permissions of its own, is written over; only if that fails half-way is the previous text
    /// lost, and a log line names the file that has the new one. False also without a file name,
    /// for a file that may not be written and for a new one in a folder where none can be made.
    bool Save() noexcept;

    /// Frees all sections. The file name stays.
    void Reset() noexcept;
    void ClearValues() noexcept;

protected:
    /// `indexOut` may be null and is set on success only.
    CIniSection* FindSection(const char* sectionName, int* indexOut) const noexcept;

    /// Reads the parents in the rest of a header line, from `position` to the line's end.
    void ScanForParents(const char* text, int position, int length, CIniSection* section) noexcept;

    /// False, as `Init` says, when there is too much to inherit.
    bool ProcessInheritance() noexcept;

    /// False when something may have been left out: parents more than ten levels up.
    bool ProcessParentage(CIniSection* section, int depth) noexcept;

    /// True when the last character of the line that is neither space nor tab is a double quote;
    /// `innerQuotes` is raised by the number of quotes that precede it, all from `position` on.
    bool CheckForClosingQuote(const char* text, unsigned long position, unsigned long length,
                              int& innerQuotes) const noexcept;

    char* fileName;
    vtr::PointerFields<CIniSection> sections;
    mutable int lastSectionIndex; ///< found by the last `GetString`; -1: none
    bool keepSorted;
    bool initialized;

private:
    friend struct vtr::Internals<CIniFileReader>;
};

#endif
