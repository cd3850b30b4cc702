#ifndef VTRUTILS_GALLERY_PAGES_TABLE_TABLEDOCUMENT_H
#define VTRUTILS_GALLERY_PAGES_TABLE_TABLEDOCUMENT_H

#include "utilities/text/tables/DelimitedTextFile.h"

#include <functional>
#include <string>
#include <vector>

namespace gallery {

/// A table of the library's whose rows have places that a host may choose, so that what is deleted
/// or sorted can come back where it was. The library sorts once, when the table begins to be kept
/// sorted; from then on a row is moved to its place, as each sort would swap equal rows. One thread
/// at a time.
class TableDocument : public CDelimitedTextFile {
public:
    /// For each row the row that it was before.
    using Order = std::vector<unsigned>;

    int Rows() const { return static_cast<int>(NumRecords()); }
    int Columns() const { return static_cast<int>(NumFields()); }
    std::string FieldText(int row, int column) const;
    std::vector<std::string> RowTexts(int row) const;

    /// False when memory runs out.
    bool SetFieldText(int row, int column, const std::string& text);
    bool InsertRow(int row, const std::vector<std::string>& texts);
    void MoveRow(int from, int to);
    void Reorder(const Order& order);
    static Order Inverse(const Order& order);

    /// Has the library sort, and tells what that did.
    Order SortFirstColumn();
    /// Whether the table counts as sorted, without sorting it.
    void MarkSorted(bool sorted);
    /// The same after `ReplaceAll` in a sorted table.
    Order SortAgain();

    /// Where a row with this text in the first column belongs in a sorted table.
    int PlaceFor(int row, const std::string& text) const;

    /// Told how many rows have been read; false ends the reading.
    void Watch(std::function<bool(int rows)> newWatch) { watch = std::move(newWatch); }

protected:
    void OnRowAdded(unsigned int row) override;

private:
    std::vector<const char*> Marks() const;
    Order OrderSince(const std::vector<const char*>& marks) const;

    std::function<bool(int)> watch;
};

} // namespace gallery

#endif
