#include "gallery/widgets/ListView.h"

#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Drawing.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace gallery {

namespace {

COLORREF HeadingColour() {
    return Mix(GetSysColor(COLOR_WINDOWTEXT), GetSysColor(COLOR_HIGHLIGHT), /*part=*/6);
}

/// With a space after it, because some systems cut off the last pixels of a title.
std::wstring Padded(const std::wstring& title) {
    return title + L" ";
}

} // namespace

bool ListView::Create(HWND parent, const char* nameKey, int id, Titles titles,
                      TextOfCell textOfCell) {
    name = nameKey;
    cell = std::move(textOfCell);
    DWORD titleStyle = titles == Titles::hidden ? LVS_NOCOLUMNHEADER : 0;
    if (titles == Titles::shown)
        titleStyle = LVS_NOSORTHEADER;
    list = MakeControl(parent, WC_LISTVIEWW, Text(name).c_str(),
                       WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL |
                           LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | titleStyle,
                       id);
    if (list == nullptr)
        return false;
    ListView_SetExtendedListViewStyle(list,
                                      LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    return true;
}

void ListView::AddColumn(const char* titleKey, Align align) {
    InsertColumn(static_cast<int>(columns.size()), Text(titleKey), align);
    columns.push_back(titleKey);
}

void ListView::SetColumns(const std::vector<std::wstring>& titles) {
    columns.clear();
    ownWidths.clear();
    while (ListView_DeleteColumn(list, 0)) {
    }
    for (std::size_t i = 0; i < titles.size(); ++i)
        InsertColumn(static_cast<int>(i), titles[i], Align::left);
    // The place of the titles of a list without columns stays black on some systems.
    if (titles.empty())
        InsertColumn(0, L"", Align::left);
}

void ListView::InsertColumn(int index, std::wstring title, Align align) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_FMT | LVCF_SUBITEM;
    column.fmt = align == Align::right ? LVCFMT_RIGHT : LVCFMT_LEFT;
    title = Padded(title);
    column.pszText = title.data();
    column.iSubItem = index;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&column));
}

void ListView::UpdateTexts() {
    SetText(list, Text(name));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::wstring title = Padded(Text(columns[i]));
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT;
        column.pszText = title.data();
        SendMessageW(list, LVM_SETCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
    RedrawRows();
}

void ListView::SetLook(const Look& look) {
    dpi = static_cast<unsigned>(look.Pixels(96));
    vtr::ImageList images(ImageList_Create(/*cx=*/1, look.Line() + look.Pixels(6), ILC_COLOR,
                                           /*cInitial=*/1, /*cGrow=*/0));
    ListView_SetImageList(list, images.Get(), LVSIL_SMALL);
    rowHeight = std::move(images);
}

void ListView::SetColumnWidth(int column, int pixels) {
    const auto index = static_cast<std::size_t>(column);
    if (index < ownWidths.size() && ownWidths[index] > 0)
        pixels = MulDiv(ownWidths[index], static_cast<int>(dpi), 96);
    if (ListView_GetColumnWidth(list, column) != pixels)
        ListView_SetColumnWidth(list, column, std::max(pixels, 0));
}

int ListView::ColumnCount() const {
    return Header_GetItemCount(ListView_GetHeader(list));
}

int ListView::NaturalWidth(const Look& look, int column) const {
    constexpr int looked = 60;
    wchar_t title[128] = L"";
    LVCOLUMNW description{};
    description.mask = LVCF_TEXT;
    description.pszText = title;
    description.cchTextMax = static_cast<int>(std::size(title));
    SendMessageW(list, LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&description));
    int widest = look.TextWidth(title) + look.Pixels(4);
    const int rows = std::min(ListView_GetItemCount(list), looked);
    for (int row = 0; row < rows; ++row)
        widest = std::max(widest, look.TextWidth(cell(row, column)));
    return widest + look.Pixels(16);
}

void ListView::FitColumns(const Look& look, int listWidth, int stretched) {
    const int count = ColumnCount();
    const int room = RoomForColumns(listWidth);
    std::vector<int> widths;
    int others = 0;
    for (int column = 0; column < count; ++column) {
        widths.push_back(NaturalWidth(look, column));
        others += column == stretched ? 0 : widths.back();
    }
    // The rest is scrolled to.
    const int most = room * 3 / 4;
    for (int column = 0; column < count; ++column) {
        int& width = widths[static_cast<std::size_t>(column)];
        if (column != stretched && others > most)
            width = MulDiv(width, most, others);
    }
    widths[static_cast<std::size_t>(stretched)] = room - std::min(others, most);
    for (int column = 0; column < count; ++column)
        SetColumnWidth(column, widths[static_cast<std::size_t>(column)]);
}

bool ListView::WidthChosen(const NMHDR& header) {
    const bool released = header.code == HDN_DIVIDERDBLCLICKW;
    if (header.hwndFrom != ListView_GetHeader(list) || (!released && header.code != HDN_ENDTRACKW))
        return false;
    const auto& change = reinterpret_cast<const NMHEADERW&>(header);
    const bool known = change.pitem != nullptr && (change.pitem->mask & HDI_WIDTH) != 0;
    if (change.iItem < 0 || (!released && !known))
        return false;
    ownWidths.resize(static_cast<std::size_t>(ColumnCount()));
    ownWidths[static_cast<std::size_t>(change.iItem)] =
        released ? 0 : std::max(1, MulDiv(change.pitem->cxy, 96, static_cast<int>(dpi)));
    return true;
}

int ListView::RoomForColumns(int listWidth) {
    return std::max(0,
                    listWidth - 2 * GetSystemMetrics(SM_CXEDGE) - GetSystemMetrics(SM_CXVSCROLL));
}

void ListView::SetRows(int count) {
    quiet = true;
    // A virtual list keeps the selection of a row that stays in range.
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_SetItemCountEx(list, count, /*dwFlags=*/0);
    if (count > 0)
        Select(0);
    quiet = false;
    RedrawRows();
}

void ListView::RedrawRows() {
    InvalidateRect(list, nullptr, /*bErase=*/FALSE);
}

std::wstring ListView::SelectedText() const {
    std::wstring text;
    const int row = Selected();
    for (int column = 0; row >= 0 && column < ColumnCount(); ++column)
        text += (column > 0 ? L"\t" : L"") + cell(row, column);
    return text;
}

int ListView::Selected() const {
    return ListView_GetNextItem(list, -1, LVNI_SELECTED);
}

void ListView::Select(int row) {
    if (row < 0)
        return;
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(list, row, /*fPartialOK=*/FALSE);
}

bool ListView::Notified(const NMHDR& header, LRESULT& result) {
    if (header.hwndFrom != list)
        return false;
    if (header.code == LVN_GETDISPINFOW) {
        LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(const_cast<NMHDR&>(header)).item;
        if ((item.mask & LVIF_TEXT) != 0) {
            shown = cell(item.iItem, item.iSubItem);
            item.pszText = shown.data();
        }
        result = 0;
        return true;
    }
    if (header.code == LVN_ODFINDITEMW) {
        result = FindRow(reinterpret_cast<const NMLVFINDITEMW&>(header));
        return true;
    }
    if (header.code == static_cast<UINT>(NM_CUSTOMDRAW)) {
        result = Draw(reinterpret_cast<NMLVCUSTOMDRAW&>(const_cast<NMHDR&>(header)));
        return true;
    }
    // What a program selects by itself is not news to it.
    return quiet && header.code == LVN_ITEMCHANGED;
}

WORD ListView::KeyPressed(const NMHDR& header) {
    return header.code == LVN_KEYDOWN ? reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey : 0;
}

bool ListView::SelectionMoved(const NMHDR& header) {
    if (header.code != LVN_ITEMCHANGED)
        return false;
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    return (change.uNewState & LVIS_SELECTED) != 0 && (change.uOldState & LVIS_SELECTED) == 0;
}

bool ListView::DoubleClicked(const NMHDR& header) {
    return header.code == static_cast<UINT>(NM_DBLCLK);
}

int ListView::ColumnClicked(const NMHDR& header) {
    if (header.code != static_cast<UINT>(NM_CLICK) && header.code != static_cast<UINT>(NM_DBLCLK))
        return -1;
    return reinterpret_cast<const NMITEMACTIVATE&>(header).iSubItem;
}

int ListView::TitleClicked(const NMHDR& header) {
    return header.code == static_cast<UINT>(LVN_COLUMNCLICK)
               ? reinterpret_cast<const NMLISTVIEW&>(header).iSubItem
               : -1;
}

/// The selected row of a list without the focus stays visible.
LRESULT ListView::Draw(NMLVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYITEMDRAW;
    const int row = static_cast<int>(draw.nmcd.dwItemSpec);
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT)
        return CDRF_DODEFAULT;
    if (isHeading && isHeading(row)) {
        draw.clrText = HeadingColour();
        return CDRF_NEWFONT;
    }
    if (GetFocus() == list || row != Selected())
        return CDRF_DODEFAULT;
    draw.nmcd.uItemState &= ~UINT{CDIS_SELECTED};
    draw.clrTextBk = QuietSelection();
    draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
    return CDRF_NEWFONT;
}

/// Typing letters in the list goes to the next row that begins with them.
LRESULT ListView::FindRow(const NMLVFINDITEMW& wanted) const {
    if ((wanted.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || wanted.lvfi.psz == nullptr)
        return -1;
    const std::wstring start = LowerCase(wanted.lvfi.psz);
    const int count = ListView_GetItemCount(list);
    for (int i = 0; i < count; ++i) {
        const int row = (std::max(wanted.iStart, 0) + i) % count;
        const std::wstring text = LowerCase(cell(row, 0));
        // Rows below a heading are indented.
        const std::size_t begin = std::min(text.find_first_not_of(L' '), text.size());
        if (text.compare(begin, start.size(), start) == 0)
            return row;
    }
    return -1;
}

} // namespace gallery
