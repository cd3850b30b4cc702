#ifndef VTRUTILS_GALLERY_WIDGETS_LISTVIEW_H
#define VTRUTILS_GALLERY_WIDGETS_LISTVIEW_H

#include "gallery/widgets/Look.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace gallery {

/// A list with columns that asks for a row's texts when it shows them, so its length costs nothing.
/// One row is selected at a time. One thread at a time.
class ListView {
public:
    using TextOfCell = std::function<std::wstring(int row, int column)>;

    /// Titles that are buttons tell when they are clicked.
    enum class Titles { shown, hidden, buttons };
    enum class Align { left, right };

    /// `nameKey` is the key of what screen readers say. False, with `GetLastError`, when it cannot
    /// be made. Keys are not copied.
    bool Create(HWND parent, const char* nameKey, int id, Titles titles, TextOfCell textOfCell);
    HWND Handle() const { return list; }

    void AddColumn(const char* titleKey, Align align = Align::left);
    /// Columns with these titles, which are in no string file, in place of all others.
    void SetColumns(const std::vector<std::wstring>& titles);
    /// Sets name and titles in the language that is chosen now, and asks for the cells again.
    void UpdateTexts();
    void SetLook(const Look& look);
    /// A column that the user made wider or narrower keeps the user's width.
    void SetColumnWidth(int column, int pixels);
    /// Makes columns as wide as titles and texts of the first rows; the column with index
    /// `stretched` takes what is left of a list of that width, or is cut where there is too little.
    void FitColumns(const Look& look, int listWidth, int stretched);

    /// What the user chose, in units of 1/96 inch, 0 for a column that fits itself.
    const std::vector<int>& OwnWidths() const { return ownWidths; }
    void SetOwnWidths(const std::vector<int>& widths) { ownWidths = widths; }
    /// True when the notification says that the user chose the width of a column, or with a double
    /// click gave it back.
    bool WidthChosen(const NMHDR& header);
    /// What is left for the columns of a list of that width that has, or may get, a scroll bar.
    static int RoomForColumns(int listWidth);

    /// Shows that many rows, the first one selected without a notification.
    void SetRows(int count);
    void RedrawRows();

    /// Rows that stand above others as their title; they can be selected all the same.
    void SetHeadings(std::function<bool(int row)> isHeadingRow) {
        isHeading = std::move(isHeadingRow);
    }

    /// The texts of the selected row, with tabs between them; "" for none.
    std::wstring SelectedText() const;

    /// -1 for none.
    int Selected() const;
    /// Selects the row and scrolls to it; tells the parent when the selection changes. Does nothing
    /// for -1.
    void Select(int row);

    /// Answers the list's questions. True when `result` is the answer to its parent's WM_NOTIFY.
    bool Notified(const NMHDR& header, LRESULT& result);

    /// The key that the notification says was pressed in a list, or 0.
    static WORD KeyPressed(const NMHDR& header);

    /// True when the notification says that another row is selected.
    static bool SelectionMoved(const NMHDR& header);
    static bool DoubleClicked(const NMHDR& header);
    /// The column of the cell that was clicked, once or twice, or -1.
    static int ColumnClicked(const NMHDR& header);
    /// The column whose title was clicked, or -1.
    static int TitleClicked(const NMHDR& header);

private:
    void InsertColumn(int index, std::wstring title, Align align);
    int NaturalWidth(const Look& look, int column) const;
    int ColumnCount() const;
    LRESULT Draw(NMLVCUSTOMDRAW& draw) const;
    LRESULT FindRow(const NMLVFINDITEMW& wanted) const;

    HWND list = nullptr;
    vtr::ImageList rowHeight; ///< of empty images: rows are as high as these
    const char* name = nullptr;
    std::vector<const char*> columns; ///< the keys of their titles
    std::vector<int> ownWidths;
    unsigned dpi = 96;
    std::function<bool(int row)> isHeading;
    bool quiet = false;
    TextOfCell cell;
    std::wstring shown; ///< the text handed out last
};

} // namespace gallery

#endif
