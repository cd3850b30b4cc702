#include "utilities/text/tables/DelimitedTextFile.h"

#include "common/Require.h"
#include "common/WidePath.h"
#include "utilities/base/ByteSearch.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/MergeSort.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/ReplacingFile.h"
#include "utilities/base/SameText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/base/TextFile.h"
#include "utilities/base/TextFinder.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/text/strings/StringFunctions.h"
#include "utilities/text/tables/DelimitedParser.h"
#include "utilities/text/tables/DelimitedWriter.h"
#include "utilities/text/tables/FieldRow.h"
#include "utilities/text/tables/SortKeys.h"

#include <climits>
#include <cstring>
#include <functional>
#include <new>

using vtr::IsEmptyText;
using vtr::SortKeys;

struct CDelimitedTextFile::Column {
    vtr::OwnedText name;
    bool serializable = true;
};

/// One `Open` that is under way. What `OnRowAdded` calls may end it; the parser still needs its
/// text until the hook has returned.
struct CDelimitedTextFile::Reading {
    vtr::DelimitedParser parser;
    bool ended;
    vtr::OwnedText text; ///< null until it has ended
};

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<CDelimitedTextFile> {
    using Table = CDelimitedTextFile;
    static_assert(offsetof(Table, filePath) == 8);
    static_assert(offsetof(Table, columns) == 272);
    static_assert(offsetof(Table, rows) == 288);
    static_assert(offsetof(Table, sortColumn) == 304);
    static_assert(offsetof(Table, maintainSorted) == 308);
    static_assert(offsetof(Table, sortBatchMode) == 309);
    static_assert(offsetof(Table, sortPending) == 310);
};

namespace {

bool IsSameExactly(const char* a, const char* b) {
    return std::strcmp(a != nullptr ? a : "", b != nullptr ? b : "") == 0;
}

/// How many occurrences can stand side by side.
std::size_t CountOccurrences(const char* text, const char* find) {
    const vtr::TextFinder finder(find, /*exactCase=*/true, vtr::Characters::singleBytes);
    const std::size_t length = vtr::TextLength(text);
    return finder.Count(text, text + length, length);
}

} // namespace

CDelimitedTextFile::CDelimitedTextFile() noexcept
    : filePath{}, sortColumn(-1), maintainSorted(false), sortBatchMode(false), sortPending(false),
      loaded(nullptr), loadedSize(0), reading(nullptr), sortKeys(nullptr), hookDepth(0) {}

CDelimitedTextFile::~CDelimitedTextFile() {
    Clear();
}

bool CDelimitedTextFile::Open(const char* path, char delimiter, bool firstLineIsHeader,
                              char quote) {
    char ownPath[pathSize];
    const bool fits =
        vtr::StoreWhole(path, ownPath); // it may be a text of the table that is cleared
    const vtr::WidePath wide(fits ? ownPath : nullptr, vtr::CurrentCodePage());
    return vtr::OpenTable(*this, wide.Get(), ownPath, delimiter, firstLineIsHeader, quote);
}

bool vtr::OpenTable(CDelimitedTextFile& table, const wchar_t* path, const char* narrowPath,
                    char delimiter, bool firstLineIsHeader, char quote) {
    table.Clear();
    TextBlock text;
    if (table.hookDepth == CDelimitedTextFile::deepestHook || *path == L'\0' || !text.Read(path) ||
        text.Length() == 0)
        return false;
    CDelimitedTextFile::Reading own{DelimitedParser(text.Text(), text.Length(), delimiter, quote),
                                    /*ended=*/false, /*text=*/nullptr};
    table.loaded = text.Release(table.loadedSize).release();
    const bool batchModeWasOn = table.sortBatchMode;
    table.sortBatchMode = true;
    table.reading = &own;
    const bool good = table.Load(own, firstLineIsHeader);
    if (!own.ended) {
        table.reading = nullptr;
        if (!good)
            table.Clear();
        else if (narrowPath != nullptr)
            StoreWhole(narrowPath, table.filePath);
    }
    if (!batchModeWasOn)
        table.SetSortBatchMode(false);
    if (good && table.maintainSorted && table.sortColumn >= 0)
        table.Sort();
    return good;
}

/// False, with nothing more done, too, once the reading has been ended.
bool CDelimitedTextFile::Load(Reading& own, bool firstLineIsHeader) {
    vtr::DelimitedParser& parser = own.parser;
    if (!parser.NextLine())
        return false;
    for (const char* name : parser.Fields()) {
        if (!AppendColumn(name))
            return false;
    }
    bool more = !firstLineIsHeader || parser.NextLine();
    for (; more; more = parser.NextLine()) {
        if (firstLineIsHeader && parser.Fields().Count() != columns.Count())
            continue;
        if (!InsertRow(rows.Count(), Row::Make(parser.Fields().Data(), parser.Fields().Count())))
            return false;
        TellRowAdded(rows.Count() - 1);
        if (own.ended)
            return false;
    }
    return !parser.OutOfMemory();
}

void CDelimitedTextFile::TellRowAdded(unsigned int row) {
    ++hookDepth;
    OnRowAdded(row);
    --hookDepth;
}

const char* CDelimitedTextFile::GetField(unsigned int row, const char* columnName) const {
    const int column = GetFieldIndex(columnName);
    return column >= 0 ? GetField(row, static_cast<unsigned>(column)) : nullptr;
}

const char* CDelimitedTextFile::GetField(unsigned int row, unsigned int column) const {
    return FieldAt(row, column);
}

bool CDelimitedTextFile::EditField(unsigned int row, unsigned int column, const char* text) {
    Row* fields = rows.At(row);
    if (fields == nullptr || column >= fields->Count() || IsSameExactly(fields->At(column), text))
        return false;
    vtr::OwnedText copy = vtr::CopyText(text);
    if (copy == nullptr && !IsEmptyText(text))
        return false;
    FreeText(fields->Replace(column, copy.release()));
    UpdateSortKey(row, column);
    if (maintainSorted && static_cast<int>(column) == sortColumn)
        Sort();
    return true;
}

int CDelimitedTextFile::AddNewRow() {
    const unsigned index = maintainSorted && sortColumn >= 0 ? 0 : rows.Count();
    if (hookDepth == deepestHook || !InsertRow(index, Row::Make(nullptr, columns.Count())))
        return -1;
    TellRowAdded(index);
    return static_cast<int>(index);
}

void CDelimitedTextFile::OnRowAdded(unsigned int /*row*/) {}

bool CDelimitedTextFile::DeleteRow(unsigned int row) {
    if (row >= rows.Count())
        return false;
    FreeRow(rows.Remove(row));
    if (sortKeys != nullptr)
        sortKeys->Remove(row);
    return true;
}

bool CDelimitedTextFile::Save(const char* path, char delimiter, bool writeHeader,
                              char quote) noexcept {
    char ownPath[pathSize];
    if (!vtr::StoreWhole(path, ownPath) || ownPath[0] == '\0')
        return false;
    CreateMultiLevelDir(ownPath);
    vtr::ReplacingFile file(ownPath);
    if (!file.Open())
        return false;
    vtr::DelimitedWriter writer(file.Stream(), delimiter, quote);
    const unsigned count = columns.Count();
    if (writeHeader) {
        for (unsigned i = 0; i < count; ++i) {
            if (!columns[i]->serializable || columns[i]->name == nullptr)
                continue;
            writer.Name(columns[i]->name.get());
            if (i + 1 < count)
                writer.Delimiter();
        }
        writer.EndLine();
    }
    for (const Row* row : rows) {
        for (unsigned i = 0; i < count; ++i) {
            if (!columns[i]->serializable)
                continue;
            if (row->At(i) != nullptr)
                writer.Field(row->At(i));
            if (i + 1 < count)
                writer.Delimiter();
        }
        writer.EndLine();
    }
    if (!writer.Flush() || !file.Commit())
        return false;
    if (filePath[0] == '\0')
        vtr::StoreWhole(ownPath, filePath);
    return true;
}

int CDelimitedTextFile::GetFieldIndex(const char* columnName) const noexcept {
    for (unsigned i = 0; !IsEmptyText(columnName) && i < columns.Count(); ++i) {
        if (vtr::SameText(columns[i]->name.get(), columnName))
            return static_cast<int>(i);
    }
    return -1;
}

const char* CDelimitedTextFile::FieldName(unsigned int column) const noexcept {
    const Column* found = columns.At(column);
    return found != nullptr ? found->name.get() : nullptr;
}

int CDelimitedTextFile::FindRecordWithValue(int column, const char* value) const noexcept {
    if (ColumnAt(column) == nullptr || IsEmptyText(value) || rows.Count() == 0)
        return -1;
    const unsigned index = static_cast<unsigned>(column);
    if (maintainSorted && column == sortColumn)
        return Bisect(index, value);
    for (unsigned i = 0; i < rows.Count(); ++i) {
        if (vtr::SameText(FieldAt(i, index), value))
            return static_cast<int>(i);
    }
    return -1;
}

/// Which of several equal rows is found, and what is found where the rows are in another order,
/// follows from these steps.
int CDelimitedTextFile::Bisect(unsigned int column, const char* value) const noexcept {
    const SortKeys::Key wanted(value);
    unsigned low = 0;
    unsigned high = rows.Count() - 1;
    unsigned probe = rows.Count() / 2;
    for (;;) {
        if (sortKeys != nullptr) {
            sortKeys->Prefetch(low + (probe - low) / 2);
            sortKeys->Prefetch(probe + (high - probe) / 2);
        }
        const int order = sortKeys != nullptr ? sortKeys->Compare(probe, wanted)
                                              : vtr::CompareText(FieldAt(probe, column), value);
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

int CDelimitedTextFile::AddNewCol(const char* name, const char* defaultValue) noexcept {
    VTR_REQUIRE(defaultValue != nullptr);
    if (!AppendColumn(name))
        return -1;
    for (unsigned i = 0; i < rows.Count(); ++i) {
        vtr::OwnedText copy = vtr::CopyText(defaultValue);
        Row* row = copy != nullptr || IsEmptyText(defaultValue) ? Row::Append(rows[i], copy.get())
                                                                : nullptr;
        if (row != nullptr) {
            static_cast<void>(copy.release());
            rows.Replace(i, row);
            continue;
        }
        while (i-- > 0)
            FreeText(rows[i]->RemoveLast());
        delete columns.Remove(columns.Count() - 1);
        return -1;
    }
    if (sortKeys != nullptr)
        MakeSortKeys();
    return static_cast<int>(columns.Count() - 1);
}

void CDelimitedTextFile::RemoveAllRows() noexcept {
    rows.Clear([this](Row* row) { FreeRow(row); });
    DropSortKeys();
    if (reading != nullptr)
        return;
    std::free(loaded);
    loaded = nullptr;
    loadedSize = 0;
}

void CDelimitedTextFile::Clear() noexcept {
    RemoveAllRows();
    columns.Clear([](Column* column) { delete column; });
    if (reading == nullptr)
        return;
    reading->text.reset(loaded);
    reading->ended = true;
    reading = nullptr;
    loaded = nullptr;
    loadedSize = 0;
}

bool CDelimitedTextFile::ColumnIsSerializable(int column) const noexcept {
    const Column* found = ColumnAt(column);
    return found != nullptr && found->serializable;
}

void CDelimitedTextFile::SetColumnSerializable(int column, bool serializable) noexcept {
    Column* found = ColumnAt(column);
    if (found != nullptr)
        found->serializable = serializable;
}

void CDelimitedTextFile::ReplaceAll(const char* find, const char* replacement) {
    if (IsEmptyText(find) || replacement == nullptr)
        return;
    // They may be texts of this table.
    const vtr::OwnedText ownFind = vtr::CopyText(find);
    const vtr::OwnedText ownReplacement = vtr::CopyText(replacement);
    if (ownFind == nullptr || (ownReplacement == nullptr && !IsEmptyText(replacement)))
        return;
    // Sorting under way would move rows that are still to be seen behind those that have been.
    const bool batchModeWasOn = sortBatchMode;
    const bool pendingBefore = sortPending;
    sortBatchMode = true;
    // An override of `EditField` may add more; these are not searched, or it could go on for ever.
    const unsigned count = rows.Count();
    for (unsigned r = 0; r < count && r < rows.Count(); ++r) {
        const unsigned fields = rows[r]->Count();
        for (unsigned c = 0; c < fields && r < rows.Count(); ++c)
            ReplaceInField(r, c, ownFind.get(),
                           ownReplacement != nullptr ? ownReplacement.get() : "");
    }
    sortBatchMode = batchModeWasOn;
    sortPending = pendingBefore;
    if (maintainSorted && sortColumn >= 0)
        Sort();
}

void CDelimitedTextFile::ReplaceInField(unsigned int row, unsigned int column, const char* find,
                                        const char* replacement) {
    char* text = rows[row]->At(column);
    const std::size_t replacementLength = std::strlen(replacement);
    const std::size_t hits = text != nullptr ? CountOccurrences(text, find) : 0;
    if (hits == 0)
        return;
    const std::size_t length = std::strlen(text);
    if (replacementLength <= std::strlen(find)) {
        SearchAndReplaceAll(text, find, replacement, static_cast<unsigned>(length + 1),
                            /*caseSensitive=*/true);
        if (*text == '\0')
            FreeText(rows[row]->Replace(column, nullptr));
        UpdateSortKey(row, column);
        return;
    }
    if (replacementLength > (UINT_MAX - length - 1) / hits)
        return;
    const std::size_t size = length + hits * replacementLength + 1;
    const vtr::OwnedText grown(static_cast<char*>(std::malloc(size)));
    if (grown == nullptr)
        return;
    std::memcpy(grown.get(), text, length + 1);
    SearchAndReplaceAll(grown.get(), find, replacement, static_cast<unsigned>(size),
                        /*caseSensitive=*/true);
    EditField(row, column, grown.get());
}

void CDelimitedTextFile::SetMaintainSorted(bool on, int column) noexcept {
    maintainSorted = on;
    sortColumn = on ? column : -1;
    DropSortKeys();
    if (on)
        Sort();
}

void CDelimitedTextFile::SetSortBatchMode(bool on) noexcept {
    sortBatchMode = on;
    if (on)
        return;
    if (sortPending && maintainSorted && sortColumn >= 0)
        Sort();
    sortPending = false;
}

/// False when the rows keep their order.
bool CDelimitedTextFile::Sort() noexcept {
    if (!maintainSorted)
        return false;
    if (sortBatchMode) {
        sortPending = true;
        return false;
    }
    if (sortKeys == nullptr && sortColumn >= 0)
        MakeSortKeys();
    if (sortColumn != 0)
        return false;
    if (sortKeys != nullptr && sortKeys->Sort(rows.Data()))
        return true;
    DropSortKeys();
    // The empty field, null, sorts before any text.
    return vtr::MergeSort(rows.Data(), rows.Count(), [](const Row* a, const Row* b) {
        return vtr::CompareText(a->At(0), b->At(0)) < 0;
    });
}

void CDelimitedTextFile::MakeSortKeys() noexcept {
    DropSortKeys();
    sortKeys = SortKeys::Make(rows.Count());
    for (unsigned i = 0; sortKeys != nullptr && i < rows.Count(); ++i)
        UpdateSortKey(i, static_cast<unsigned>(sortColumn));
}

void CDelimitedTextFile::DropSortKeys() noexcept {
    delete sortKeys;
    sortKeys = nullptr;
}

void CDelimitedTextFile::UpdateSortKey(unsigned int row, unsigned int column) noexcept {
    if (sortKeys != nullptr && static_cast<int>(column) == sortColumn)
        sortKeys->Set(row, SortKeys::Key(FieldAt(row, column)));
}

bool CDelimitedTextFile::AppendColumn(const char* name) noexcept {
    Column* column = new (std::nothrow) Column;
    if (column == nullptr)
        return false;
    column->name = vtr::CopyText(name);
    if ((column->name != nullptr || IsEmptyText(name)) && columns.Append(column))
        return true;
    delete column;
    return false;
}

CDelimitedTextFile::Column* CDelimitedTextFile::ColumnAt(int column) const noexcept {
    return column < 0 ? nullptr : columns.At(static_cast<unsigned>(column));
}

/// Owns the row, and frees it when memory runs out. Null is false.
bool CDelimitedTextFile::InsertRow(unsigned int index, Row* row) noexcept {
    const bool inserted = row != nullptr && rows.Count() < INT_MAX && rows.Insert(index, row);
    if (!inserted)
        Row::Free(row);
    else if (sortKeys != nullptr &&
             !sortKeys->Insert(index,
                               SortKeys::Key(FieldAt(index, static_cast<unsigned>(sortColumn)))))
        DropSortKeys();
    return inserted;
}

const char* CDelimitedTextFile::FieldAt(unsigned int row, unsigned int column) const noexcept {
    const Row* fields = rows.At(row);
    return fields != nullptr ? fields->At(column) : nullptr;
}

void CDelimitedTextFile::FreeText(char* text) const noexcept {
    const std::less<const char*> before;
    if (loaded == nullptr || before(text, loaded) || !before(text, loaded + loadedSize))
        std::free(text);
}

void CDelimitedTextFile::FreeRow(Row* row) const noexcept {
    while (row->Count() > 0)
        FreeText(row->RemoveLast());
    Row::Free(row);
}
