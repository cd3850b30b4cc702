#include "gallery/pages/table/TableChanges.h"

namespace gallery {

FieldChange::FieldChange(TableDocument& changed, TablePlace at, TablePlace& touchedPlace,
                         std::string newText)
    : TableChange(changed, at, touchedPlace), before(changed.FieldText(at.row, at.column)),
      after(std::move(newText)),
      rowAfter(changed.KeepSorted() && at.column == 0 ? changed.PlaceFor(at.row, after) : at.row) {}

bool FieldChange::Apply(bool make) {
    if (!make)
        table.MoveRow(rowAfter, place.row);
    if (!table.SetFieldText(place.row, place.column, make ? after : before))
        return false;
    if (make)
        table.MoveRow(place.row, rowAfter);
    touched = {make ? rowAfter : place.row, place.column};
    return true;
}

bool RowChange::Apply(bool make) {
    touched = place;
    if (make == adds)
        return table.InsertRow(place.row, texts);
    return table.DeleteRow(static_cast<unsigned>(place.row));
}

bool OrderChange::Apply(bool make) {
    touched = place;
    if (!known) {
        order = table.SortFirstColumn();
        return known = true;
    }
    table.MarkSorted(false);
    if (!order.empty())
        table.Reorder(make ? order : TableDocument::Inverse(order));
    table.MarkSorted(make ? isSorted : wasSorted);
    return true;
}

void ReplaceChange::ReplaceFirst() {
    for (int row = 0; row < table.Rows(); ++row) {
        for (int column = 0; column < table.Columns(); ++column) {
            std::string text = table.FieldText(row, column);
            if (text.find(find) != std::string::npos)
                fields.push_back({{row, column}, std::move(text), {}});
        }
    }
    table.ReplaceAll(find.c_str(), replacement.c_str());
    for (Field& field : fields)
        field.after = table.FieldText(field.place.row, field.place.column);
    if (table.KeepSorted())
        order = table.SortAgain();
    known = true;
}

bool ReplaceChange::Apply(bool make) {
    touched = place;
    if (!known) {
        ReplaceFirst();
        return true;
    }
    if (!make && !order.empty())
        table.Reorder(TableDocument::Inverse(order));
    for (const Field& field : fields)
        table.SetFieldText(field.place.row, field.place.column, make ? field.after : field.before);
    if (make && !order.empty())
        table.Reorder(order);
    return true;
}

} // namespace gallery
