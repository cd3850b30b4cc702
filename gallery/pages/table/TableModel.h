#ifndef VTRUTILS_GALLERY_PAGES_TABLE_TABLEMODEL_H
#define VTRUTILS_GALLERY_PAGES_TABLE_TABLEMODEL_H

#include "gallery/app/Document.h"
#include "utilities/text/tables/DelimitedTextFile.h"

#include <memory>
#include <string>

namespace gallery {

/// The table that the page "Table" shows, in the wide texts that windows want: a file with commas,
/// double quotes and a line of titles. One thread at a time.
class TableModel final : public Document {
public:
    struct Place {
        int row = -1;
        int column = 0;
    };

    struct Match {
        int row = -1; ///< -1: there is none
        bool bisected = false;
    };

    /// 0 and "" for what is not there.
    int Rows() const { return static_cast<int>(table->NumRecords()); }
    int Columns() const { return static_cast<int>(table->NumFields()); }
    std::wstring Title(int column) const;
    std::wstring Field(Place place) const;

    /// The first row that has this value, ignoring case; bisection finds any that has it.
    Match Find(int column, const std::wstring& value) const;

    /// Null when the field was set, else why it was not, as the key of a sentence for the user.
    /// `place.row` goes where sorting takes the row.
    const char* SetField(Place& place, const std::wstring& text);

    /// Where the new row is; -1 when memory ran out.
    int AddRow();
    bool DeleteRow(int row);

    /// On the first column, the only one that is ever sorted. Returns where the row is then.
    int KeepSorted(bool on, int row);
    bool Sorted() const { return table->KeepSorted(); }

    /// In every field, exact in case. `fields` is how many had the text. Otherwise as `SetField`.
    const char* ReplaceAll(const std::wstring& text, const std::wstring& replacement, int& fields);

private:
    bool Read(const std::string& path) override;
    bool Write(const std::string& path) override;

    /// Where the row is after the change; another one with the same fields is as good.
    template <typename Change>
    int RowAfter(int row, Change change);

    std::unique_ptr<CDelimitedTextFile> table = std::make_unique<CDelimitedTextFile>();
};

} // namespace gallery

#endif
