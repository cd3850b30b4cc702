#ifndef VTRUTILS_GALLERY_APP_PAGELIST_H
#define VTRUTILS_GALLERY_APP_PAGELIST_H

#include "gallery/app/Page.h"

#include <span>
#include <vector>

namespace gallery {

/// The list of pages, in groups with a title each, which cannot be chosen. One thread at a time.
class PageList {
public:
    /// `newPages` outlives the list.
    explicit PageList(std::span<const PageEntry> newPages);

    /// False, with `GetLastError`, when the list cannot be made.
    bool Create(HWND parent, int id);
    HWND Handle() const { return list.Handle(); }
    void UpdateTexts() { list.UpdateTexts(); }
    void SetLook(const Look& look) { list.SetLook(look); }

    /// What its longest title takes, and the column made for that.
    int Width(const Look& look) const;
    void SetWidth(int width);

    void Select(int page);

    /// True when `result` answers the notification; `chosen` is the page that the user went to, or
    /// -1.
    bool Notified(const NMHDR& header, LRESULT& result, int& chosen);

private:
    struct Row {
        const char* key;
        int page; ///< -1 for the title of a group
    };
    std::wstring TextOf(int row) const;
    bool IsTitle(int row) const { return rows[static_cast<std::size_t>(row)].page < 0; }

    std::vector<Row> rows;
    ListView list;
    int last = 0; ///< the row of the page that was chosen last
};

} // namespace gallery

#endif
