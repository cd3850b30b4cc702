#include "utilities/base/MergeSort.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/SameText.h"
#include "utilities/text/tables/DelimitedTextFileInternals.h"
#include "utilities/text/tables/FieldRow.h"
#include "utilities/text/tables/SortKeys.h"

using Internals = vtr::Internals<CDelimitedTextFile>;
using Row = vtr::FieldRow;

int CDelimitedTextFile::FindRecordWithValue(int column, const char* value) const noexcept {
    if (Internals::ColumnAt(*this, column) == nullptr || vtr::IsEmptyText(value) || rows.count == 0)
        return -1;
    const unsigned index = static_cast<unsigned>(column);
    if (maintainSorted && column == sortColumn)
        return Internals::Bisect(*this, index, value);
    for (unsigned i = 0; i < rows.count; ++i) {
        if (vtr::SameText(Internals::FieldAt(*this, i, index), value))
            return static_cast<int>(i);
    }
    return -1;
}

/// Which of several equal rows is found, and what is found where the rows are in another order,
/// follows from these steps.
int Internals::Bisect(const Table& table, unsigned int column, const char* value) {
    const SortKeys::Key wanted(value);
    unsigned low = 0;
    unsigned high = table.rows.count - 1;
    unsigned probe = table.rows.count / 2;
    for (;;) {
        if (table.sortKeys != nullptr) {
            table.sortKeys->Prefetch(low + (probe - low) / 2);
            table.sortKeys->Prefetch(probe + (high - probe) / 2);
        }
        const int order = table.sortKeys != nullptr
                              ? table.sortKeys->Compare(probe, wanted)
                              : vtr::CompareText(FieldAt(table, probe, column), value);
        if (order == 0)
            return static_cast<int>(probe);
        if (low >= high)
            return -1;
        (order < 0 ? low : high) = probe;
        const unsigned last = probe;
        probe = low + (high - low) / 2;
        if (probe != last)
            continue;
        if (++low > high)
            return -1;
        probe = last + 1;
    }
}

void CDelimitedTextFile::SetMaintainSorted(bool on, int column) noexcept {
    maintainSorted = on;
    sortColumn = on ? column : -1;
    Internals::DropSortKeys(*this);
    if (on)
        Internals::Sort(*this);
}

void CDelimitedTextFile::SetSortBatchMode(bool on) noexcept {
    sortBatchMode = on;
    if (on)
        return;
    if (sortPending && maintainSorted && sortColumn >= 0)
        Internals::Sort(*this);
    sortPending = false;
}

bool Internals::Sort(Table& table) {
    if (!table.maintainSorted)
        return false;
    if (table.sortBatchMode) {
        table.sortPending = true;
        return false;
    }
    if (table.sortKeys == nullptr && table.sortColumn >= 0)
        MakeSortKeys(table);
    if (table.sortColumn != 0)
        return false;
    if (table.sortKeys != nullptr && table.sortKeys->Sort(table.rows.slots))
        return true;
    DropSortKeys(table);
    // The empty field, null, sorts before any text.
    return vtr::MergeSort(table.rows.slots, table.rows.count, [](const Row* a, const Row* b) {
        return vtr::CompareText(a->At(0), b->At(0)) < 0;
    });
}

void Internals::MakeSortKeys(Table& table) {
    DropSortKeys(table);
    table.sortKeys = SortKeys::Make(table.rows.count);
    for (unsigned i = 0; table.sortKeys != nullptr && i < table.rows.count; ++i)
        UpdateSortKey(table, i, static_cast<unsigned>(table.sortColumn));
}

void Internals::DropSortKeys(Table& table) {
    delete table.sortKeys;
    table.sortKeys = nullptr;
}

void Internals::UpdateSortKey(Table& table, unsigned int row, unsigned int column) {
    if (table.sortKeys != nullptr && static_cast<int>(column) == table.sortColumn)
        table.sortKeys->Set(row, SortKeys::Key(FieldAt(table, row, column)));
}
