#include "gallery/pages/table/TableModel.h"

#include "gallery/pages/table/TableLosses.h"
#include "gallery/text/Text.h"

#include <algorithm>
#include <cwchar>
#include <numeric>
#include <tuple>
#include <utility>
#include <vector>

namespace gallery {

namespace {

constexpr char quote = '"';

/// Null, with the text in `narrow`, for one that a saved table reads back.
const char* WhyNotAField(const std::wstring& text, std::string& narrow) {
    if (text.find_first_of(L"\r\n") != std::wstring::npos)
        return "ValueWithLineBreak";
    if (text.find(L'"') != std::wstring::npos)
        return "FieldWithQuote";
    return Narrow(text, narrow) ? nullptr : "ValueNotNarrow";
}

/// What a row is sorted by.
struct SortKey {
    explicit SortKey(const std::wstring& field) : kind(field.empty() ? 0 : 2) {
        wchar_t* end = nullptr;
        number = std::wcstod(field.c_str(), &end);
        if (kind == 2 && *end == L'\0') {
            kind = 1;
        } else {
            number = 0;
            text = LowerCase(field);
        }
    }
    bool operator<(const SortKey& other) const {
        return std::tie(kind, number, text) < std::tie(other.kind, other.number, other.text);
    }

    int kind; ///< empty, number, text
    double number;
    std::wstring text;
};

} // namespace

bool TableModel::Read(const std::string& path) {
    auto fresh = std::make_unique<TableDocument>();
    const char used = wanted != 0 ? wanted : Facts().delimiter;
    fresh->Watch([this](int rows) { return Progress(rows, Facts().lines); });
    if (!fresh->Open(path.c_str(), used, /*firstLineIsHeader=*/true, quote))
        return false;
    fresh->Watch(nullptr);
    table = std::move(fresh);
    touched = {};
    delimiter = used;
    leftOut = std::max(0, Facts().lines - 1 - Rows());
    return true;
}

bool TableModel::ReadAs(char newDelimiter) {
    wanted = newDelimiter;
    const bool done = Load(std::wstring(Path()), IsCopy());
    wanted = 0;
    return done;
}

bool TableModel::Write(const std::string& path) {
    const bool saved = table->Save(path.c_str(), delimiter, /*writeHeader=*/true, quote);
    if (saved)
        leftOut = 0;
    return saved;
}

void TableModel::AddLosses(const std::string& text, Losses& losses) const {
    int quoted = 0;
    int empty = 0;
    int unnamed = 0;
    for (int row = 0; row < Rows(); ++row) {
        for (int column = 0; column < Columns(); ++column) {
            const std::string field = table->FieldText(row, column);
            quoted += field.find(quote) != std::string::npos ? 1 : 0;
            empty += Columns() == 1 && field.empty() ? 1 : 0;
        }
    }
    for (int column = 0; column < Columns(); ++column)
        unnamed += table->FieldName(static_cast<unsigned>(column)) == nullptr ? 1 : 0;
    for (const Loss& loss :
         {Loss{"LossLines", LinesLeftOut(text, delimiter)}, Loss{"LossFieldQuotes", quoted},
          Loss{"LossEmptyLines", empty}, Loss{"LossTitles", unnamed}}) {
        if (loss.count > 0)
            losses.push_back(loss);
    }
}

std::wstring TableModel::Title(int column) const {
    return Widen(table->FieldName(static_cast<unsigned>(column)));
}

std::wstring TableModel::Field(Place place) const {
    return Widen(
        table->GetField(static_cast<unsigned>(place.row), static_cast<unsigned>(place.column)));
}

TableModel::Match TableModel::FindValue(int column, const std::wstring& value, int after) const {
    Match match;
    match.bisected = Sorted() && column == 0;
    match.place.column = column;
    std::string narrow;
    const int first =
        Narrow(value, narrow) ? table->FindRecordWithValue(column, narrow.c_str()) : -1;
    if (first < 0)
        return match;
    const auto has = [&](int row) {
        return row >= 0 && row < Rows() &&
               CompareNarrow(table->FieldText(row, column), narrow) == 0;
    };
    // Of a sorted column, rows with one value stand together: the one after this has it, or none.
    int row = after + 1;
    while (!match.bisected && row < Rows() && !has(row))
        ++row;
    if (has(row) && (!match.bisected || has(after))) {
        match.place.row = row;
        return match;
    }
    match.place.row = first;
    while (has(match.place.row - 1))
        --match.place.row;
    return match;
}

TableModel::Match TableModel::FindPart(const std::wstring& text, Place after) const {
    const std::wstring lower = LowerCase(text);
    Match match;
    const long long fields = static_cast<long long>(Rows()) * Columns();
    const long long start = static_cast<long long>(after.row) * Columns() + after.column + 1;
    for (long long i = 0; i < fields && match.place.row < 0; ++i) {
        const long long field = (start + i + fields) % fields;
        const Place place{static_cast<int>(field / Columns()), static_cast<int>(field % Columns())};
        if (LowerCase(Field(place)).find(lower) != std::wstring::npos)
            match.place = place;
    }
    return match;
}

template <class Change, class... Values>
const char* TableModel::Do(const char* name, Place place, Values&&... values) {
    return History().Do(name, std::make_unique<Change>(*table, place, touched,
                                                       std::forward<Values>(values)...))
               ? nullptr
               : "NoMemory";
}

const char* TableModel::SetField(Place place, const std::wstring& text) {
    if (place.row < 0 || place.row >= Rows())
        return "SelectRow";
    if (text == Field(place))
        return nullptr;
    std::string narrow;
    const char* reason = WhyNotAField(text, narrow);
    return reason != nullptr ? reason : Do<FieldChange>("ChangeSet", place, narrow);
}

const char* TableModel::AddRow() {
    return Do<RowChange>("ChangeAddRow", {Sorted() ? 0 : Rows(), 0}, /*adding=*/true);
}

const char* TableModel::DeleteRow(int row) {
    if (row < 0 || row >= Rows())
        return "SelectRow";
    return Do<RowChange>("ChangeDeleteRow", {row, 0}, /*adding=*/false);
}

const char* TableModel::KeepSorted(bool on, Place selected) {
    if (on)
        return Do<OrderChange>("ChangeSort", selected);
    return Do<OrderChange>("ChangeKeepOrder", selected, TableDocument::Order());
}

const char* TableModel::Sort(int column, bool descending, Place selected) {
    if (column < 0 || column >= Columns())
        return "SelectRow";
    std::vector<SortKey> keys;
    keys.reserve(static_cast<std::size_t>(Rows()));
    for (int row = 0; row < Rows(); ++row)
        keys.emplace_back(Field({row, column}));
    TableDocument::Order order(keys.size());
    std::iota(order.begin(), order.end(), 0u);
    std::stable_sort(order.begin(), order.end(), [&](unsigned a, unsigned b) {
        return descending ? keys[b] < keys[a] : keys[a] < keys[b];
    });
    if (!Sorted() && std::is_sorted(order.begin(), order.end()))
        return nullptr;
    return Do<OrderChange>("ChangeSort", selected, std::move(order));
}

const char* TableModel::ReplaceAll(const std::wstring& text, const std::wstring& replacement,
                                   int& fields, Place selected) {
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
    return Do<ReplaceChange>("ChangeReplace", selected, find, with);
}

} // namespace gallery
