#ifndef VTRUTILS_TEXT_TABLES_DELIMITEDTEXTFILE_H
#define VTRUTILS_TEXT_TABLES_DELIMITEDTEXTFILE_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

#include <cstddef>

namespace vtr {
class FieldRow;
class SortKeys;
} // namespace vtr

/// A table of texts in memory, read from and saved to a delimited text file: columns named by the
/// first line, and rows of fields. To be derived from: a derived table can react to what is read,
/// edited, added and deleted.
///
/// The file may be single-byte text or UTF-16 little-endian, with or without a byte-order mark;
/// each unit is reduced to its low byte. Any bytes open or are refused without harm.
///
/// Between quotes a delimiter is part of the field; a line end never is. One quote is taken off at
/// the front and one at the end of a field; quotes within stay as they are. An empty field is null,
/// and so is the name of a column whose header is empty. A delimiter or quote of 0 stands for none.
/// Names and values compare without regard to case in the current multibyte code page.
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

    /// Replaces the table. The first line names the columns; it is the first row too unless it is a
    /// header. Below a header, lines with another number of fields are dropped. Blank lines are
    /// skipped, but for one that begins the file: it is a line of one empty field. With
    /// `KeepSorted()` the table is sorted at the end. False, with an empty table, for a null or
    /// empty path or one of 260 bytes or more, a missing, unreadable or empty file, one of 2 GB or
    /// more, and when memory runs out.
    virtual bool Open(const char* path, char delimiter, bool firstLineIsHeader, char quote);

    /// Null when an index is out of range, for an empty field, and for a null, empty or unknown
    /// name. Valid until the field is changed or its row goes.
    virtual const char* GetField(unsigned int row, const char* columnName) const;
    virtual const char* GetField(unsigned int row, unsigned int column) const;

    /// Sets the field, and sorts the table when it is kept sorted on this column; null or "" clears
    /// it. False, with nothing changed, when an index is out of range, the field has exactly this
    /// text already, or memory runs out.
    virtual bool EditField(unsigned int row, unsigned int column, const char* text);

    /// Adds a row of empty fields and returns its index: 0 when the table is kept sorted, else the
    /// last. The table is not sorted. -1 when memory runs out.
    virtual int AddNewRow();

protected:
    /// Called after each row that was read or added. Does nothing here. It may call all that the
    /// table has, also while `Open` runs, but not destroy it:
    ///
    /// | call                         | result                                                  |
    /// |------------------------------|---------------------------------------------------------|
    /// | `Open`, `Clear`              | an `Open` under way ends, is false, and leaves the table|
    /// | `RemoveAllRows`, `DeleteRow` | an `Open` under way goes on with the next line          |
    /// | `AddNewRow`                  | calls the hook for that row before it returns           |
    /// | `AddNewCol`                  | the lines of a file with a header need a field more     |
    /// | what would sort              | is put off to the end of `Open`, as in batch mode       |
    ///
    /// `AddNewRow` returns the index that the hook was told, wherever the row is then. 250 calls of
    /// the hook within each other are the most: in the last, `AddNewRow` is -1 and `Open` false.
    virtual void OnRowAdded(unsigned int row);

public:
    /// False when out of range.
    virtual bool DeleteRow(unsigned int row);

    virtual ~CDelimitedTextFile();

    /// Writes the serializable columns, with CR LF after each line; missing folders of the path are
    /// made. Each field that is not empty stands in quotes, and where these are double quotes, each
    /// of its own double quotes is written as "?". The header leaves out columns without a name.
    /// The new text takes the file's place as in `CIniFileReader::Save`: false leaves the previous
    /// file as it was, unless a log line says otherwise. False also for a null or empty path and
    /// one of 260 bytes or more.
    ///
    /// What was written reads back the same, except where texts hold line ends or the quote, a
    /// header line lacks names, a line has a single field and that is empty, or an unquoted text
    /// holds the delimiter or begins with FF FE.
    bool Save(const char* path, char delimiter, bool writeHeader, char quote) noexcept;

    /// The first column of that name; -1 when there is none, for null and for "".
    int GetFieldIndex(const char* columnName) const noexcept;

    /// Null when out of range or unnamed.
    const char* FieldName(unsigned int column) const noexcept;

    VTRUTILS_INLINE unsigned int NumFields() const noexcept { return columns.count; }
    VTRUTILS_INLINE unsigned int NumRecords() const noexcept { return rows.count; }

    /// Of the last successful `Open`, before the first of them that of the first `Save`; else "".
    VTRUTILS_INLINE const char* FilePath() const noexcept { return filePath; }

    VTRUTILS_INLINE bool KeepSorted() const noexcept { return maintainSorted; }

    /// The first row with this value, by a scan; a row with it, by bisection, when the table is
    /// kept sorted on this column. Bisection takes the rows for sorted, which only column 0 makes
    /// them. -1 when there is none, for null and "", and for a column out of range.
    int FindRecordWithValue(int column, const char* value) const noexcept;

    /// Appends a serializable column, and to every row a field with a copy of the value. Returns
    /// the index of the column; -1, with nothing changed, when memory runs out. Rows whose number
    /// of fields is not that of the columns, which only a file without header has, keep the
    /// difference. Requires: `defaultValue` is not null.
    int AddNewCol(const char* name, const char* defaultValue) noexcept;

    /// The columns stay.
    void RemoveAllRows() noexcept;
    /// Path and sorting state stay.
    void Clear() noexcept;

    /// False, or nothing done, when out of range.
    bool ColumnIsSerializable(int column) const noexcept;
    void SetColumnSerializable(int column, bool serializable) noexcept;

    /// Replaces every occurrence in every field, exact in case, by the rules of
    /// `SearchAndReplaceAll`, and sorts a table that is kept sorted once at the end. Fields that
    /// grow are set through `EditField`, an override of which may call all that the table has; what
    /// it adds is not searched. A field that memory does not suffice for stays as it was. Does
    /// nothing for a null or empty `find` or a null replacement.
    void ReplaceAll(const char* find, const char* replacement);

    /// Keeps the table sorted on this column, or, with false, on none. Only column 0 is ever
    /// sorted: on others rows keep their order. Ascending, empty fields first; each sort reverses
    /// the order of rows that compare equal.
    void SetMaintainSorted(bool on, int column) noexcept;

    /// While on, the table is not sorted; switching it off sorts once if that was asked for.
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

    // Fields that have not been changed since the table was opened lie in one block.
    char* loaded;
    std::size_t loadedSize;

    Reading* reading;        ///< null unless `Open` runs
    vtr::SortKeys* sortKeys; ///< of the column that the table is kept sorted on; null for none
    unsigned hookDepth;
};

#endif
