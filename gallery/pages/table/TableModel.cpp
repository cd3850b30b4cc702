#include "gallery/pages/table/TableModel.h"

#include "gallery/text/Text.h"

#include <string_view>
#include <utility>
#include <vector>

namespace gallery {

namespace {

constexpr char delimiter = ',';
constexpr char quote = '"';

/// Null, with the text in `narrow`, for one that a saved table reads back.
const char* WhyNotAField(const std::wstring& text, std::string& narrow) {
    if (text.find_first_of(L"\r\n") != std::wstring::npos)
        return "ValueWithLineBreak";
    if (text.find(L'"') != std::wstring::npos)
        return "FieldWithQuote";
    return Narrow(text, narrow) ? nullptr : "ValueNotNarrow";
}

std::string_view FieldOf(const CDelimitedTextFile& table, int row, int column) {
    const char* field = table.GetField(static_cast<unsigned>(row), static_cast<unsigned>(column));
    return field != nullptr ? field : "";
}

} // namespace

bool TableModel::Read(const std::string& path) {
    auto fresh = std::make_unique<CDelimitedTextFile>();
    fresh->SetMaintainSorted(Sorted(), 0);
    if (!fresh->Open(path.c_str(), delimiter, /*firstLineIsHeader=*/true, quote))
        return false;
    table = std::move(fresh);
    return true;
}

bool TableModel::Write(const std::string& path) {
    return table->Save(path.c_str(), delimiter, /*writeHeader=*/true, quote);
}

std::wstring TableModel::Title(int column) const {
    return Widen(table->FieldName(static_cast<unsigned>(column)));
}

std::wstring TableModel::Field(Place place) const {
    return Widen(
        table->GetField(static_cast<unsigned>(place.row), static_cast<unsigned>(place.column)));
}

TableModel::Match TableModel::Find(int column, const std::wstring& value) const {
    Match match;
    match.bisected = Sorted() && column == 0;
    std::string narrow;
    if (Narrow(value, narrow))
        match.row = table->FindRecordWithValue(column, narrow.c_str());
    return match;
}

const char* TableModel::SetField(Place& place, const std::wstring& text) {
    if (place.row < 0)
        return "SelectRow";
    std::string narrow;
    const char* reason = WhyNotAField(text, narrow);
    if (reason != nullptr || text == Field(place))
        return reason;
    const auto row = static_cast<unsigned>(place.row);
    const auto column = static_cast<unsigned>(place.column);
    const bool moves = Sorted() && place.column == 0;
    // Sorting waits, so that the row can be looked at before it moves.
    table->SetSortBatchMode(moves);
    const bool done = table->EditField(row, column, narrow.c_str());
    if (moves)
        place.row = RowAfter(place.row, [&] { table->SetSortBatchMode(false); });
    if (!done)
        return "NoMemory";
    Touch();
    return nullptr;
}

int TableModel::AddRow() {
    const int row = table->AddNewRow();
    if (row >= 0)
        Touch();
    return row;
}

bool TableModel::DeleteRow(int row) {
    const bool done = row >= 0 && table->DeleteRow(static_cast<unsigned>(row));
    if (done)
        Touch();
    return done;
}

int TableModel::KeepSorted(bool on, int row) {
    if (on && !Sorted())
        Touch();
    return RowAfter(row, [&] { table->SetMaintainSorted(on, 0); });
}

const char* TableModel::ReplaceAll(const std::wstring& text, const std::wstring& replacement,
                                   int& fields) {
    fields = 0;
    std::string find;
    std::string with;
    const char* reason = WhyNotAField(replacement, with);
    if (reason != nullptr || text.empty() || !Narrow(text, find))
        return reason;
    for (Place place{0, 0}; place.row < Rows(); ++place.row) {
        for (place.column = 0; place.column < Columns(); ++place.column)
            fields += Field(place).find(text) != std::wstring::npos ? 1 : 0;
    }
    if (fields == 0 || text == replacement)
        return nullptr;
    table->ReplaceAll(find.c_str(), with.c_str());
    Touch();
    return nullptr;
}

template <typename Change>
int TableModel::RowAfter(int row, Change change) {
    std::vector<std::string> fields;
    for (int column = 0; row >= 0 && column < Columns(); ++column)
        fields.emplace_back(FieldOf(*table, row, column));
    change();
    const auto same = [&](int candidate) {
        for (int column = 0; column < Columns(); ++column) {
            if (FieldOf(*table, candidate, column) != fields[static_cast<std::size_t>(column)])
                return false;
        }
        return true;
    };
    for (int candidate = 0; row >= 0 && candidate < Rows(); ++candidate) {
        if (same(candidate))
            return candidate;
    }
    return row;
}

} // namespace gallery
