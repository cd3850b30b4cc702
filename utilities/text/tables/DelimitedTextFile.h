#ifndef VTRUTILS_TEXT_TABLES_DELIMITEDTEXTFILE_H
#define VTRUTILS_TEXT_TABLES_DELIMITEDTEXTFILE_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

#include <cstddef>

namespace vtr {
class FieldRow;
class SortKeys;
} // namespace vtr

/// A table of texts in memory, read from and saved to a delimited text file. It has columns, named
/// by the first line, and rows of fields. A derived table can react to what is read, edited, added
/// and deleted.
///
/// The file is single-byte text or UTF-16 little-endian, with or without a byte-order mark. Each
/// UTF-16 unit is reduced to its low byte. Any bytes open or are refused without harm.
///
/// Between quotes, a delimiter is part of the field; a line end never is. One quote is taken off at
/// the front of a field and one at its end; quotes inside stay as they are. An empty field is null,
/// and so is the name of a column whose header is empty. A delimiter or quote of 0 means that there
/// is none. Names and values compare without regard to case in the current multibyte code page.
///
/// | line                | fields with "," and a double quote |
/// |---------------------|------------------------------------|
/// | `a,,"b,c"`          | `a`, null, `b,c`                   |
/// | `"say ""hi""",x`    | `say ""hi""`, `x`                  |
/// | `"a,b`              | `a,b`                              |
/// | `a,` at a line end  | `a`, null                          |
/// | `a,` at the text end| `a`                                |
/// Thread-safety: one thread at a time.
class VTRUTILS_API CDelimitedTextFile {
public:
    CDelimitedTextFile() noexcept;
    CDelimitedTextFile(const CDelimitedTextFile&) = delete;
    CDelimitedTextFile& operator=(const CDelimitedTextFile&) = delete;

    /// Replaces the table. The first line names the columns; unless it is a header, it is the first
    /// row too. Below a header, lines with another number of fields are dropped. Blank lines are
    /// skipped, except one that begins the file: that is a line of one empty field. If
    /// `KeepSorted()`, the table is sorted at the end. False, with an empty table, for a null or
    /// empty path or one of 260 bytes or more, a missing, unreadable or empty file, one of 2 GB or
    /// more, and when memory runs out.
    virtual bool Open(const char* path, char delimiter, bool firstLineIsHeader, char quote);

    /// Null when an index is out of range, for an empty field, and for a null, empty or unknown
    /// name. Valid until the field is changed or its row is deleted.
    virtual const char* GetField(unsigned int row, const char* columnName) const;
    virtual const char* GetField(unsigned int row, unsigned int column) const;

    /// Sets the field; null or "" clears it. Sorts the table if it is kept sorted on this column.
    /// False, with nothing changed, when an index is out of range, the field has exactly this text
    /// already, or memory runs out.
    virtual bool EditField(unsigned int row, unsigned int column, const char* text);

    /// Adds a row of empty fields and returns its index: 0 if the table is kept sorted, else the
    /// last. Does not sort the table. -1 when memory runs out.
    virtual int AddNewRow();

protected:
    /// Called after each row that was read or added. Does nothing here. It may call every function
    /// of the table, also while `Open` runs, but not destroy the table:
    ///
    /// | call                         | result                                                  |
    /// |------------------------------|---------------------------------------------------------|
    /// | `Open`, `Clear`              | an `Open` under way ends, is false, and leaves the table|
    /// | `RemoveAllRows`, `DeleteRow` | an `Open` under way continues with the next line        |
    /// | `AddNewRow`                  | calls the hook for that row before it returns           |
    /// | `AddNewCol`                  | the lines of a file with a header need a field more     |
    /// | what would sort              | is put off to the end of `Open`, as in batch mode       |
    ///
    /// `AddNewRow` returns the index that the hook was given, wherever the row is by then. At most
    /// 250 calls of the hook are within each other: in the last, `AddNewRow` is -1 and `Open`
    /// false.
    virtual void OnRowAdded(unsigned int row);

public:
    /// Deletes the row and its texts. False when out of range.
    virtual bool DeleteRow(unsigned int row);

    virtual ~CDelimitedTextFile();

    /// Writes the serializable columns, with CR LF after each line. Makes missing folders of the
    /// path. Each field that is not empty is written in quotes. If these are double quotes, each of
    /// its own double quotes becomes "?". The header leaves out columns without a name. The new
    /// text takes the file's place as in `CIniFileReader::Save`: false leaves the previous file as
    /// it was, unless a log line says otherwise. False also for a null or empty path and for one of
    /// 260 bytes or more.
    ///
    /// What was written reads back the same, except if texts hold line ends or the quote, a header
    /// line lacks names, a line has a single field and that is empty, or an unquoted text
    /// holds the delimiter or begins with FF FE.
    bool Save(const char* path, char delimiter, bool writeHeader, char quote) noexcept;

    /// The first column of that name; -1 if there is none, for null and for "".
    int GetFieldIndex(const char* columnName) const noexcept;

    /// Null when out of range or unnamed; valid until the column is removed.
    const char* FieldName(unsigned int column) const noexcept;

    /// Columns and rows.
    VTRUTILS_INLINE unsigned int NumFields() const noexcept { return columns.count; }
    VTRUTILS_INLINE unsigned int NumRecords() const noexcept { return rows.count; }

    /// The path of the last successful `Open`; before the first of these, that of the first
    /// successful `Save`, else "".
    VTRUTILS_INLINE const char* FilePath() const noexcept { return filePath; }

    /// What `SetMaintainSorted` was told last; false at the start.
    VTRUTILS_INLINE bool KeepSorted() const noexcept { return maintainSorted; }

    /// The first row with this value, found by a scan. If the table is kept sorted on this column,
    /// any row with it, found by bisection. Bisection takes the rows for sorted, but only on column
    /// 0 are they ever sorted. -1 if there is none, for null and "", and for a column out of range.
    int FindRecordWithValue(int column, const char* value) const noexcept;

    /// Appends a serializable column, and to every row a field with a copy of the value. Returns
    /// the index of the column; -1, with nothing changed, when memory runs out. A row of a file
    /// without a header may have more or fewer fields than there are columns; it keeps that
    /// difference. Requires: `defaultValue` is not null.
    int AddNewCol(const char* name, const char* defaultValue) noexcept;

    /// Removes the rows; the columns stay.
    void RemoveAllRows() noexcept;
    /// Removes rows and columns; path and sorting state stay.
    void Clear() noexcept;

    /// A column that is not serializable is not saved. When out of range, the first is false, and
    /// the second does nothing.
    bool ColumnIsSerializable(int column) const noexcept;
    void SetColumnSerializable(int column, bool serializable) noexcept;

    /// Replaces every occurrence in every field, exact in case, by the rules of
    /// `SearchAndReplaceAll`. A table that is kept sorted is sorted once, at the end. Fields that
    /// grow are set through `EditField`. An override of it may call every function of the table;
    /// what it adds is not searched. A field stays as it was if there is no memory for the new
    /// text. Does nothing for a null or empty `find` and for a null replacement.
    void ReplaceAll(const char* find, const char* replacement);

    /// Keeps the table sorted on this column, or, with false, on none, and sorts it now. Only
    /// column 0 is ever sorted on; for others the rows keep their order. Rows are in ascending
    /// order, empty fields first. Each sort reverses the order of rows that compare equal.
    void SetMaintainSorted(bool on, int column) noexcept;

    /// While on, the table is not sorted. Switching it off sorts the table once if that was asked
    /// for meanwhile.
    void SetSortBatchMode(bool on) noexcept;

private:
    friend struct vtr::Internals<CDelimitedTextFile>;

    struct Column;
    struct Reading;

    static constexpr std::size_t pathSize = 260;

    char filePath[pathSize];
    vtr::PointerFields<Column> columns;
    vtr::PointerFields<vtr::FieldRow> rows;
    int sortColumn; ///< -1: none
    bool maintainSorted;
    bool sortBatchMode;
    bool sortPending; ///< asked for in batch mode

    // Fields that have not been changed since the table was opened are in one block.
    char* loaded;
    std::size_t loadedSize;

    Reading* reading;        ///< null unless `Open` runs
    vtr::SortKeys* sortKeys; ///< of the column that the table is kept sorted on; null for none
    unsigned hookDepth;
};

#endif
