#ifndef VTRUTILS_TEXT_TABLES_DELIMITEDTEXTFILEINTERNALS_H
#define VTRUTILS_TEXT_TABLES_DELIMITEDTEXTFILEINTERNALS_H

#include "utilities/base/Layout.h"
#include "utilities/base/PtrArray.h"
#include "utilities/text/tables/DelimitedTextFile.h"

/// What the library itself may do to a table beyond its public functions. Private to the library.
/// One thread at a time.
template <>
struct vtr::Internals<CDelimitedTextFile> {
    using Table = CDelimitedTextFile;
    using Column = Table::Column;
    using Reading = Table::Reading;

    VTR_FIELD_AT(Table, filePath, 8, 4);
    VTR_FIELD_AT(Table, columns, 272, 264);
    VTR_FIELD_AT(Table, rows, 288, 276);
    VTR_FIELD_AT(Table, sortColumn, 304, 288);
    VTR_FIELD_AT(Table, maintainSorted, 308, 292);
    VTR_FIELD_AT(Table, sortBatchMode, 309, 293);
    VTR_FIELD_AT(Table, sortPending, 310, 294);

    static constexpr std::size_t pathSize = Table::pathSize;
    static constexpr unsigned deepestHook = 250;

    static Pointers<Column> Columns(Table& table) { return Pointers(table.columns); }
    static Pointers<FieldRow> Rows(Table& table) { return Pointers(table.rows); }

    /// `Open` for a path that the system gave. `FilePath` becomes `narrowPath`; if that is null, it
    /// stays as it was.
    static bool Open(Table& table, const wchar_t* path, const char* narrowPath, char delimiter,
                     bool firstLineIsHeader, char quote);
    /// False, with nothing more done, also once the reading has been ended.
    static bool Load(Table& table, Reading& own, bool firstLineIsHeader);
    static void TellRowAdded(Table& table, unsigned row);

    static bool AppendColumn(Table& table, const char* name);
    /// Null when out of range.
    static Column* ColumnAt(const Table& table, int column);
    /// Owns the row, and frees it when memory runs out. False for null.
    static bool InsertRow(Table& table, unsigned index, FieldRow* row);
    /// Null when out of range.
    static const char* FieldAt(const Table& table, unsigned row, unsigned column);
    static void ReplaceInField(Table& table, unsigned row, unsigned column, const char* find,
                               const char* replacement);
    static void FreeText(const Table& table, char* text);
    static void FreeRow(const Table& table, FieldRow* row);

    /// False when the rows keep their order.
    static bool Sort(Table& table);
    /// The row that bisection finds, or -1.
    static int Bisect(const Table& table, unsigned column, const char* value);
    static void MakeSortKeys(Table& table);
    static void DropSortKeys(Table& table);
    static void UpdateSortKey(Table& table, unsigned row, unsigned column);
};

#endif
