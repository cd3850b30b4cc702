#ifndef VTRUTILS_GALLERY_PAGES_TABLE_TABLEMODEL_H
#define VTRUTILS_GALLERY_PAGES_TABLE_TABLEMODEL_H

#include "gallery/app/Document.h"
#include "gallery/pages/table/TableChanges.h"

#include <memory>
#include <string>

namespace gallery {

/// The table that the page "Table" shows, in the wide texts that windows want: a file with double
/// quotes, a line of titles and the delimiter that it seems to have. One thread at a time.
class TableModel final : public Document {
public:
    using Place = TablePlace;

    struct Match {
        Place place; ///< row -1: there is none
        bool bisected = false;
    };

    /// 0 and "" for what is not there.
    int Rows() const { return table->Rows(); }
    int Columns() const { return table->Columns(); }
    std::wstring Title(int column) const;
    std::wstring Field(Place place) const;

    /// Reads the file again with this delimiter. As `Load`.
    bool ReadAs(char newDelimiter);
    char Delimiter() const { return delimiter; }
    int LeftOut() const { return leftOut; } ///< lines of the file

    /// The next row after this one that has this value in the column, ignoring case, and then the
    /// first one. Bisection finds where those are that have it.
    Match FindValue(int column, const std::wstring& value, int after) const;
    /// The next field after this one that holds the text, ignoring case, and then the first one.
    Match FindPart(const std::wstring& text, Place after) const;

    // Each is null when it was done, else the key of a sentence for the user that says why not.
    const char* SetField(Place place, const std::wstring& text);
    const char* AddRow();
    const char* DeleteRow(int row);
    /// Has the library sort on the first column, the only one that it ever sorts, and keep it so.
    const char* KeepSorted(bool on, Place selected);
    /// Sorts the rows once: empty fields first, then numbers, then texts; equal ones stay in their
    /// order. The table is not kept sorted any more.
    const char* Sort(int column, bool descending, Place selected);
    /// In every field, exact in case. `fields` is how many had the text.
    const char* ReplaceAll(const std::wstring& text, const std::wstring& replacement, int& fields,
                           Place selected);

    bool Sorted() const { return table->KeepSorted(); }
    /// Where the last change was made or taken back.
    Place Touched() const { return touched; }

private:
    bool Read(const std::string& path) override;
    bool Write(const std::string& path) override;
    void AddLosses(const std::string& text, Losses& losses) const override;

    template <class Change, class... Values>
    const char* Do(const char* name, Place place, Values&&... values);

    std::unique_ptr<TableDocument> table = std::make_unique<TableDocument>();
    Place touched;
    char delimiter = ',';
    char wanted = 0; ///< the delimiter that the user chose; 0: the file's own
    int leftOut = 0;
};

} // namespace gallery

#endif
