#ifndef VTRUTILS_GALLERY_PAGES_TABLE_TABLECHANGES_H
#define VTRUTILS_GALLERY_PAGES_TABLE_TABLECHANGES_H

#include "gallery/app/DocumentHistory.h"
#include "gallery/pages/table/TableDocument.h"

#include <string>
#include <utility>
#include <vector>

/// What can be done to a table, and taken back. The table outlives the changes. One thread at a
/// time.

namespace gallery {

struct TablePlace {
    int row = -1;
    int column = 0;
};

class TableChange : public DocumentChange {
protected:
    /// `newTouched` is where the last change was, and outlives the change. A row of -1: everywhere.
    TableChange(TableDocument& changed, TablePlace newPlace, TablePlace& newTouched)
        : table(changed), place(newPlace), touched(newTouched) {}

    TableDocument& table;
    TablePlace place;
    TablePlace& touched;
};

/// Sets a field, and moves its row to where it belongs.
class FieldChange final : public TableChange {
public:
    FieldChange(TableDocument& changed, TablePlace at, TablePlace& touchedPlace,
                std::string newText);
    bool Apply(bool make) override;

private:
    std::string before;
    std::string after;
    int rowAfter;
};

/// Adds an empty row, or deletes the one that is there.
class RowChange final : public TableChange {
public:
    RowChange(TableDocument& changed, TablePlace at, TablePlace& touchedPlace, bool adding)
        : TableChange(changed, at, touchedPlace), adds(adding) {
        if (!adds)
            texts = changed.RowTexts(at.row);
    }
    bool Apply(bool make) override;

private:
    std::vector<std::string> texts;
    bool adds;
};

/// Gives the rows another order, or only says whether they are kept sorted from now on.
class OrderChange final : public TableChange {
public:
    /// Has the library sort and keep sorted.
    OrderChange(TableDocument& changed, TablePlace at, TablePlace& touchedPlace)
        : TableChange(changed, at, touchedPlace), wasSorted(changed.KeepSorted()), isSorted(true) {}
    /// An empty order leaves the rows where they are.
    OrderChange(TableDocument& changed, TablePlace at, TablePlace& touchedPlace,
                TableDocument::Order newOrder)
        : TableChange(changed, at, touchedPlace), order(std::move(newOrder)),
          wasSorted(changed.KeepSorted()), isSorted(false), known(true) {}
    bool Apply(bool make) override;

private:
    TableDocument::Order order;
    bool wasSorted;
    bool isSorted;
    bool known = false; ///< the order
};

class ReplaceChange final : public TableChange {
public:
    ReplaceChange(TableDocument& changed, TablePlace at, TablePlace& touchedPlace,
                  std::string newFind, std::string newReplacement)
        : TableChange(changed, at, touchedPlace), find(std::move(newFind)),
          replacement(std::move(newReplacement)) {}
    bool Apply(bool make) override;

private:
    struct Field {
        TablePlace place;
        std::string before;
        std::string after;
    };
    void ReplaceFirst();

    std::string find;
    std::string replacement;
    std::vector<Field> fields;
    TableDocument::Order order; ///< that sorting again gave; empty when it was not sorted
    bool known = false;         ///< the fields and the order
};

} // namespace gallery

#endif
