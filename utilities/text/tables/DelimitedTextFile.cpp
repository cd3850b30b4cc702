#include "utilities/text/tables/DelimitedTextFile.h"

#include "common/Require.h"
#include "common/WidePath.h"
#include "utilities/base/BlockText.h"
#include "utilities/base/ByteSearch.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/ReplacingFile.h"
#include "utilities/base/SameText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/base/TextFile.h"
#include "utilities/base/TextFinder.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/text/strings/StringFunctions.h"
#include "utilities/text/tables/DelimitedParser.h"
#include "utilities/text/tables/DelimitedTextFileInternals.h"
#include "utilities/text/tables/DelimitedWriter.h"
#include "utilities/text/tables/FieldRow.h"
#include "utilities/text/tables/SortKeys.h"

#include <climits>
#include <cstring>
#include <new>

using vtr::IsEmptyText;
using Internals = vtr::Internals<CDelimitedTextFile>;
using Row = vtr::FieldRow;

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
    return Internals::Open(*this, wide.Get(), ownPath, delimiter, firstLineIsHeader, quote);
}

bool Internals::Open(Table& table, const wchar_t* path, const char* narrowPath, char delimiter,
                     bool firstLineIsHeader, char quote) {
    table.Clear();
    vtr::TextBlock text;
    if (table.hookDepth == deepestHook || *path == L'\0' || !text.Read(path) || text.Length() == 0)
        return false;
    Reading own{vtr::DelimitedParser(text.Text(), text.Length(), delimiter, quote),
                /*ended=*/false, /*text=*/nullptr};
    table.loaded = text.Release(table.loadedSize).release();
    const bool batchModeWasOn = table.sortBatchMode;
    table.sortBatchMode = true;
    table.reading = &own;
    const bool good = Load(table, own, firstLineIsHeader);
    if (!own.ended) {
        table.reading = nullptr;
        if (!good)
            table.Clear();
        else if (narrowPath != nullptr)
            vtr::StoreWhole(narrowPath, table.filePath);
    }
    if (!batchModeWasOn)
        table.SetSortBatchMode(false);
    if (good && table.maintainSorted && table.sortColumn >= 0)
        Sort(table);
    return good;
}

bool Internals::Load(Table& table, Reading& own, bool firstLineIsHeader) {
    vtr::DelimitedParser& parser = own.parser;
    if (!parser.NextLine())
        return false;
    for (const char* name : parser.Fields()) {
        if (!AppendColumn(table, name))
            return false;
    }
    bool more = !firstLineIsHeader || parser.NextLine();
    for (; more; more = parser.NextLine()) {
        if (firstLineIsHeader && parser.Fields().Count() != table.columns.count)
            continue;
        if (!InsertRow(table, table.rows.count,
                       Row::Make(parser.Fields().Data(), parser.Fields().Count())))
            return false;
        TellRowAdded(table, table.rows.count - 1);
        if (own.ended)
            return false;
    }
    return !parser.OutOfMemory();
}

void Internals::TellRowAdded(Table& table, unsigned int row) {
    ++table.hookDepth;
    table.OnRowAdded(row);
    --table.hookDepth;
}

const char* CDelimitedTextFile::GetField(unsigned int row, const char* columnName) const {
    const int column = GetFieldIndex(columnName);
    return column >= 0 ? GetField(row, static_cast<unsigned>(column)) : nullptr;
}

const char* CDelimitedTextFile::GetField(unsigned int row, unsigned int column) const {
    return Internals::FieldAt(*this, row, column);
}

bool CDelimitedTextFile::EditField(unsigned int row, unsigned int column, const char* text) {
    Row* fields = rows.At(row);
    if (fields == nullptr || column >= fields->Count() || IsSameExactly(fields->At(column), text))
        return false;
    vtr::OwnedText copy = vtr::CopyText(text);
    if (copy == nullptr && !IsEmptyText(text))
        return false;
    Internals::FreeText(*this, fields->Replace(column, copy.release()));
    Internals::UpdateSortKey(*this, row, column);
    if (maintainSorted && static_cast<int>(column) == sortColumn)
        Internals::Sort(*this);
    return true;
}

int CDelimitedTextFile::AddNewRow() {
    const unsigned index = maintainSorted && sortColumn >= 0 ? 0 : rows.count;
    if (hookDepth == Internals::deepestHook ||
        !Internals::InsertRow(*this, index, Row::Make(nullptr, columns.count)))
        return -1;
    Internals::TellRowAdded(*this, index);
    return static_cast<int>(index);
}

void CDelimitedTextFile::OnRowAdded(unsigned int /*row*/) {}

bool CDelimitedTextFile::DeleteRow(unsigned int row) {
    if (row >= rows.count)
        return false;
    Internals::FreeRow(*this, Internals::Rows(*this).Remove(row));
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
    const unsigned count = columns.count;
    if (writeHeader) {
        for (unsigned i = 0; i < count; ++i) {
            if (!columns.slots[i]->serializable || columns.slots[i]->name == nullptr)
                continue;
            writer.Name(columns.slots[i]->name.get());
            if (i + 1 < count)
                writer.Delimiter();
        }
        writer.EndLine();
    }
    for (const Row* row : Internals::Rows(*this)) {
        for (unsigned i = 0; i < count; ++i) {
            if (!columns.slots[i]->serializable)
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
    for (unsigned i = 0; !IsEmptyText(columnName) && i < columns.count; ++i) {
        if (vtr::SameText(columns.slots[i]->name.get(), columnName))
            return static_cast<int>(i);
    }
    return -1;
}

const char* CDelimitedTextFile::FieldName(unsigned int column) const noexcept {
    const Column* found = columns.At(column);
    return found != nullptr ? found->name.get() : nullptr;
}

int CDelimitedTextFile::AddNewCol(const char* name, const char* defaultValue) noexcept {
    VTR_REQUIRE(defaultValue != nullptr);
    if (!Internals::AppendColumn(*this, name))
        return -1;
    for (unsigned i = 0; i < rows.count; ++i) {
        vtr::OwnedText copy = vtr::CopyText(defaultValue);
        Row* row = copy != nullptr || IsEmptyText(defaultValue)
                       ? Row::Append(rows.slots[i], copy.get())
                       : nullptr;
        if (row != nullptr) {
            static_cast<void>(copy.release());
            Internals::Rows(*this).Replace(i, row);
            continue;
        }
        while (i-- > 0)
            Internals::FreeText(*this, rows.slots[i]->RemoveLast());
        delete Internals::Columns(*this).Remove(columns.count - 1);
        return -1;
    }
    if (sortKeys != nullptr)
        Internals::MakeSortKeys(*this);
    return static_cast<int>(columns.count - 1);
}

void CDelimitedTextFile::RemoveAllRows() noexcept {
    Internals::Rows(*this).Clear([this](Row* row) { Internals::FreeRow(*this, row); });
    Internals::DropSortKeys(*this);
    if (reading != nullptr)
        return;
    std::free(loaded);
    loaded = nullptr;
    loadedSize = 0;
}

void CDelimitedTextFile::Clear() noexcept {
    RemoveAllRows();
    Internals::Columns(*this).Clear([](Column* column) { delete column; });
    if (reading == nullptr)
        return;
    reading->text.reset(loaded);
    reading->ended = true;
    reading = nullptr;
    loaded = nullptr;
    loadedSize = 0;
}

bool CDelimitedTextFile::ColumnIsSerializable(int column) const noexcept {
    const Column* found = Internals::ColumnAt(*this, column);
    return found != nullptr && found->serializable;
}

void CDelimitedTextFile::SetColumnSerializable(int column, bool serializable) noexcept {
    Column* found = Internals::ColumnAt(*this, column);
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
    // Sorting under way would move rows that are still to be seen past those that have been.
    const bool batchModeWasOn = sortBatchMode;
    const bool pendingBefore = sortPending;
    sortBatchMode = true;
    // An override of `EditField` may add more; these are not searched, or it could go on for ever.
    const unsigned count = rows.count;
    for (unsigned r = 0; r < count && r < rows.count; ++r) {
        const unsigned fields = rows.slots[r]->Count();
        for (unsigned c = 0; c < fields && r < rows.count; ++c)
            Internals::ReplaceInField(*this, r, c, ownFind.get(),
                                      ownReplacement != nullptr ? ownReplacement.get() : "");
    }
    sortBatchMode = batchModeWasOn;
    sortPending = pendingBefore;
    if (maintainSorted && sortColumn >= 0)
        Internals::Sort(*this);
}

void Internals::ReplaceInField(Table& table, unsigned int row, unsigned int column,
                               const char* find, const char* replacement) {
    char* text = table.rows.slots[row]->At(column);
    const std::size_t replacementLength = std::strlen(replacement);
    const std::size_t hits = text != nullptr ? CountOccurrences(text, find) : 0;
    if (hits == 0)
        return;
    const std::size_t length = std::strlen(text);
    if (replacementLength <= std::strlen(find)) {
        SearchAndReplaceAll(text, find, replacement, static_cast<unsigned>(length + 1),
                            /*caseSensitive=*/true);
        if (*text == '\0')
            FreeText(table, table.rows.slots[row]->Replace(column, nullptr));
        UpdateSortKey(table, row, column);
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
    table.EditField(row, column, grown.get());
}

bool Internals::AppendColumn(Table& table, const char* name) {
    Column* column = new (std::nothrow) Column;
    if (column == nullptr)
        return false;
    column->name = vtr::CopyText(name);
    if ((column->name != nullptr || IsEmptyText(name)) && Columns(table).Append(column))
        return true;
    delete column;
    return false;
}

Internals::Column* Internals::ColumnAt(const Table& table, int column) {
    return column < 0 ? nullptr : table.columns.At(static_cast<unsigned>(column));
}

bool Internals::InsertRow(Table& table, unsigned int index, Row* row) {
    const bool inserted =
        row != nullptr && table.rows.count < INT_MAX && Rows(table).Insert(index, row);
    if (!inserted)
        Row::Free(row);
    else if (table.sortKeys != nullptr &&
             !table.sortKeys->Insert(
                 index,
                 SortKeys::Key(FieldAt(table, index, static_cast<unsigned>(table.sortColumn)))))
        DropSortKeys(table);
    return inserted;
}

const char* Internals::FieldAt(const Table& table, unsigned int row, unsigned int column) {
    const Row* fields = table.rows.At(row);
    return fields != nullptr ? fields->At(column) : nullptr;
}

void Internals::FreeText(const Table& table, char* text) {
    vtr::FreeText(text, vtr::LiesIn(table.loaded, table.loadedSize, text));
}

void Internals::FreeRow(const Table& table, Row* row) {
    while (row->Count() > 0)
        FreeText(table, row->RemoveLast());
    Row::Free(row);
}
