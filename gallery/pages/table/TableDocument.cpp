#include "gallery/pages/table/TableDocument.h"

#include "gallery/text/Text.h"

#include <unordered_map>
#include <utility>

namespace gallery {

std::string TableDocument::FieldText(int row, int column) const {
    const char* text = GetField(static_cast<unsigned>(row), static_cast<unsigned>(column));
    return text != nullptr ? text : "";
}

std::vector<std::string> TableDocument::RowTexts(int row) const {
    std::vector<std::string> texts;
    for (int column = 0; column < Columns(); ++column)
        texts.push_back(FieldText(row, column));
    return texts;
}

bool TableDocument::SetFieldText(int row, int column, const std::string& text) {
    EditField(static_cast<unsigned>(row), static_cast<unsigned>(column), text.c_str());
    // An edit that changes nothing is none, but no failure.
    return FieldText(row, column) == text;
}

bool TableDocument::InsertRow(int row, const std::vector<std::string>& texts) {
    const int made = AddNewRow();
    if (made < 0)
        return false;
    MoveRow(made, row);
    for (std::size_t column = 0; column < texts.size(); ++column) {
        if (!SetFieldText(row, static_cast<int>(column), texts[column])) {
            DeleteRow(static_cast<unsigned>(row));
            return false;
        }
    }
    return true;
}

void TableDocument::MoveRow(int from, int to) {
    if (from == to)
        return;
    const std::vector<std::string> moved = RowTexts(from);
    const int step = from < to ? 1 : -1;
    for (int row = from; row != to; row += step) {
        for (int column = 0; column < Columns(); ++column)
            SetFieldText(row, column, FieldText(row + step, column));
    }
    for (int column = 0; column < Columns(); ++column)
        SetFieldText(to, column, moved[static_cast<std::size_t>(column)]);
}

/// Each circle of rows that take each other's places is gone through once.
void TableDocument::Reorder(const Order& order) {
    std::vector<bool> done(order.size());
    for (unsigned start = 0; start < order.size(); ++start) {
        if (done[start] || order[start] == start)
            continue;
        const std::vector<std::string> first = RowTexts(static_cast<int>(start));
        unsigned row = start;
        for (; order[row] != start; row = order[row]) {
            for (int column = 0; column < Columns(); ++column)
                SetFieldText(static_cast<int>(row), column,
                             FieldText(static_cast<int>(order[row]), column));
            done[row] = true;
        }
        for (int column = 0; column < Columns(); ++column)
            SetFieldText(static_cast<int>(row), column, first[static_cast<std::size_t>(column)]);
        done[row] = true;
    }
}

TableDocument::Order TableDocument::Inverse(const Order& order) {
    Order inverse(order.size());
    for (unsigned row = 0; row < order.size(); ++row)
        inverse[order[row]] = row;
    return inverse;
}

TableDocument::Order TableDocument::SortFirstColumn() {
    const std::vector<const char*> marks = Marks();
    SetSortBatchMode(false);
    SetMaintainSorted(true, /*column=*/0);
    SetSortBatchMode(true);
    return OrderSince(marks);
}

TableDocument::Order TableDocument::SortAgain() {
    const std::vector<const char*> marks = Marks();
    SetSortBatchMode(false);
    SetSortBatchMode(true);
    return OrderSince(marks);
}

void TableDocument::MarkSorted(bool sorted) {
    // In batch mode the library puts sorting off.
    SetSortBatchMode(true);
    SetMaintainSorted(sorted, /*column=*/0);
    if (!sorted)
        SetSortBatchMode(false);
}

/// A text of each row, which the row keeps when it is moved; null for an empty row.
std::vector<const char*> TableDocument::Marks() const {
    std::vector<const char*> marks(static_cast<std::size_t>(Rows()));
    for (int row = 0; row < Rows(); ++row) {
        const char*& mark = marks[static_cast<std::size_t>(row)];
        for (int column = 0; mark == nullptr && column < Columns(); ++column)
            mark = GetField(static_cast<unsigned>(row), static_cast<unsigned>(column));
    }
    return marks;
}

/// Rows without any text are all the same: they are taken in turn.
TableDocument::Order TableDocument::OrderSince(const std::vector<const char*>& marks) const {
    std::unordered_map<const char*, unsigned> rowOfMark;
    std::vector<unsigned> emptyRows;
    for (unsigned row = 0; row < marks.size(); ++row) {
        if (marks[row] != nullptr)
            rowOfMark[marks[row]] = row;
        else
            emptyRows.push_back(row);
    }
    Order order;
    std::size_t empty = 0;
    for (const char* mark : Marks())
        order.push_back(mark != nullptr ? rowOfMark[mark] : emptyRows[empty++]);
    return order;
}

int TableDocument::PlaceFor(int row, const std::string& text) const {
    int low = 0;
    int high = Rows() - 1;
    while (low < high) {
        const int middle = (low + high) / 2;
        const int other = middle < row ? middle : middle + 1;
        if (CompareNarrow(FieldText(other, 0), text) <= 0)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

void TableDocument::OnRowAdded(unsigned int row) {
    constexpr unsigned often = 4096;
    if (watch != nullptr && row % often == often - 1 && !watch(static_cast<int>(row + 1)))
        Clear();
}

} // namespace gallery
