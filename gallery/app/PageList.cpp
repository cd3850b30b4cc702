#include "gallery/app/PageList.h"

#include "gallery/text/Language.h"

#include <algorithm>

namespace gallery {

PageList::PageList(std::span<const PageEntry> newPages) {
    int index = 0;
    for (const PageEntry& page : newPages) {
        if (page.groupKey != nullptr)
            rows.push_back({page.groupKey, -1});
        rows.push_back({page.titleKey, index++});
    }
}

std::wstring PageList::TextOf(int row) const {
    const std::wstring text = Text(rows[static_cast<std::size_t>(row)].key);
    return IsTitle(row) ? text : L"   " + text;
}

bool PageList::Create(HWND parent, int id) {
    if (!list.Create(parent, "Pages", id, ListView::Titles::hidden,
                     [this](int row, int) { return TextOf(row); }))
        return false;
    list.SetHeadings([this](int row) { return IsTitle(row); });
    list.AddColumn("Pages");
    list.SetRows(static_cast<int>(rows.size()));
    return true;
}

int PageList::Width(const Look& look) const {
    int width = 0;
    for (std::size_t row = 0; row < rows.size(); ++row)
        width = std::max(width, look.TextWidth(TextOf(static_cast<int>(row))));
    return width + look.Pixels(12) + GetSystemMetrics(SM_CXVSCROLL);
}

void PageList::SetWidth(int width) {
    list.SetColumnWidth(0, ListView::RoomForColumns(width));
}

void PageList::Select(int page) {
    const auto row =
        std::find_if(rows.begin(), rows.end(), [page](const Row& one) { return one.page == page; });
    last = static_cast<int>(row - rows.begin());
    if (list.Selected() != last)
        list.Select(last);
}

bool PageList::Notified(const NMHDR& header, LRESULT& result, int& chosen) {
    chosen = -1;
    if (header.hwndFrom != Handle() || list.Notified(header, result))
        return header.hwndFrom == Handle();
    if (!ListView::SelectionMoved(header))
        return true;
    const int row = list.Selected();
    if (!IsTitle(row)) {
        last = row;
        chosen = rows[static_cast<std::size_t>(row)].page;
        return true;
    }
    // On in the direction that the user came from; the first row is a title.
    list.Select(row > last || row == 0 ? row + 1 : row - 1);
    return true;
}

} // namespace gallery
