#ifndef VTRUTILS_TEXT_INI_INIFILEREADER_H
#define VTRUTILS_TEXT_INI_INIFILEREADER_H

#include "utilities/Export.h"
#include "utilities/Fields.h"
#include "utilities/text/ini/IniSection.h"
#include "utilities/text/ini/IniValue.h"

/// An INI document in memory: read from a file or a buffer, looked up, changed, sorted and saved.
///
/// The text is single-byte text or UTF-16 little-endian, with or without a byte-order mark. Each
/// UTF-16 unit is reduced to its low byte. Any bytes load or are refused without harm. Keys and
/// values of 8,191 bytes or more, values without a key ("=x") and documents of 2 GB or more are
/// refused; the sections and pairs before the fault stay in the document. Names and keys compare
/// without regard to case in the current multibyte code page.
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

    /// Parses `length` bytes and, if asked, sorts the document. Parents stay in the sections,
    /// unresolved, and `Initialized()` stays false. False for null, for a refused document and when
    /// memory runs out.
    bool InitFromBuffer(const unsigned char* data, unsigned int length, bool sort) noexcept;

    /// True only after `Init` succeeded.
    VTRUTILS_INLINE bool Initialized() const noexcept { return initialized; }

    /// Null until set; valid until set again.
    VTRUTILS_INLINE const char* FileName() const noexcept { return fileName; }

    /// Null or "" clears the name, with the result true. False, with no name, when memory runs out.
    bool SetFileName(const char* path) noexcept;

    /// The unnamed section counts.
    VTRUTILS_INLINE unsigned int NumSections() const noexcept { return sections.count; }

    /// If true, sections are looked up by binary search. Set it only while names are in order.
    VTRUTILS_INLINE bool KeepSorted() const noexcept { return keepSorted; }
    VTRUTILS_INLINE void SetKeepSorted(bool sorted) noexcept { keepSorted = sorted; }

    /// Writes the value as `CIniSection::GetString` does. True if the section was found, even if
    /// the key was not. Otherwise the buffer is zeroed, the default, if any, is written, and the
    /// result is false. False, with nothing written, for a null key, a null buffer or a size of 0.
    /// The section that was read last and the one after it are found by one comparison each.
    bool GetString(const char* section, const char* key, const char* defaultValue, char* buffer,
                   unsigned int bufferSize) const noexcept;

    /// False if the value is empty or "NOPE_NO_KEY".
    bool KeyExists(const char* section, const char* key) const noexcept;

    /// As `GetSection` finds it.
    bool SectionExists(const char* name) const noexcept;

    /// The first section of that name; in a sorted document, any of them. Null if there is none,
    /// and for null and "". The section stays the document's.
    CIniSection* GetSection(const char* name) noexcept;

    /// Null when out of range. Index 0 is the unnamed section if pairs come before the first header
    /// (in a sorted document too: its name sorts first).
    CIniSection* GetSection(int index) noexcept;
    const char* SectionName(unsigned int index) const noexcept;

    /// 0 when out of range.
    int GetNumValues(int sectionIndex) const noexcept;

    /// Null when either is out of range.
    const CIniValue* GetValue(int sectionIndex, int valueIndex) const noexcept;

    /// False when an index is out of range. When memory runs out, false, with the value null.
    bool SetValue(int sectionIndex, int valueIndex, const char* value) noexcept;

    /// Sets the value in the first section of that name, and adds the section if there is none. A
    /// sorted document stays sorted. False for a null or empty section or key, which is logged, and
    /// when memory runs out.
    bool SetValue(const char* section, const char* key, const char* value) noexcept;

    /// Sorts sections by name and all pairs by key; look-ups are binary searches from then on. Each
    /// sort reverses the order of equal names. `KeepSorted()` stays false when memory runs out.
    void Sort() noexcept;

    /// Writes every named section, each followed by two CR LF, to the file of that name. For the
    /// unnamed section only the two CR LF are written. A sorted document is sorted again first. The
    /// new text takes the file's place only when it is complete and closed: false leaves the
    /// previous file as it was. The file keeps its attributes. A symbolic link stays, and the file
    /// that it names is written. A file that another program has open, or that has permissions of
    /// its own, is written over. Only if that fails half-way is the previous text lost; a log line
    /// then names the file that has the new one. False also if there is no file name, if the file
    /// may not be written, and if a new file cannot be made in that folder.
    bool Save() noexcept;

    /// Frees all sections. The file name stays.
    void Reset() noexcept;
    void ClearValues() noexcept;

protected:
    /// As `GetSection`. `indexOut` may be null, and is set on success only.
    CIniSection* FindSection(const char* sectionName, int* indexOut) const noexcept;

    /// Adds to the section the parents that the rest of a header line names, from `position` to the
    /// end of the line or of the text, which has `length` bytes.
    void ScanForParents(const char* text, int position, int length, CIniSection* section) noexcept;

    /// Gives each section what it inherits, and forgets all parents. False, as `Init` says, if that
    /// is too much.
    bool ProcessInheritance() noexcept;

    /// Gives one section what it inherits, as if it were `depth` levels down, of which ten are
    /// followed. False if something may have been left out.
    bool ProcessParentage(CIniSection* section, int depth) noexcept;

    /// True if the last character of the line that is neither space nor tab is a double quote.
    /// Raises `innerQuotes` by the number of quotes before that character. Both from `position` on.
    bool CheckForClosingQuote(const char* text, unsigned long position, unsigned long length,
                              int& innerQuotes) const noexcept;

    char* fileName;                           ///< from `malloc`, or null
    vtr::PointerFields<CIniSection> sections; ///< made with `new`
    mutable int lastSectionIndex;             ///< that the last `GetString` found; -1: none
    bool keepSorted;                          ///< as `KeepSorted` says
    bool initialized;                         ///< as `Initialized` says

private:
    friend struct vtr::Internals<CIniFileReader>;
};

#endif
