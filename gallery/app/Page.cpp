#include "gallery/app/Page.h"

#include "gallery/app/ControlIds.h"
#include "gallery/app/Settings.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Drawing.h"

#include <algorithm>
#include <utility>
#include <windowsx.h>

namespace gallery {

namespace {

constexpr char widthSetting[] = "Columns.";

} // namespace

bool Page::Create(HWND parent, PageHost& newHost) {
    host = &newHost;
    return CreateAs(GALLERY_PAGE_CLASS, L"", WS_EX_CONTROLPARENT, WS_CHILD | WS_CLIPCHILDREN,
                    SIZE{0, 0}, parent) &&
           status.Create(Handle(), ID_PAGE_MESSAGE, ID_PAGE_STATE) && MakeControls();
}

bool Page::AddList(ListView& list, const char* nameKey, int id, ListView::Titles titles,
                   ListView::TextOfCell textOfCell) {
    lists.push_back(&list);
    list.SetOwnWidths(host->Remembered().Numbers(widthSetting + std::to_string(id)));
    return list.Create(Handle(), nameKey, id, titles, std::move(textOfCell));
}

bool Page::AddLink(Link& link, int id, const char* tipKey) {
    if (!link.Create(Handle(), id))
        return false;
    links.push_back(&link);
    tips.Add(link.Handle(), tipKey);
    return true;
}

void Page::SetLook(const Look& newLook) {
    look = &newLook;
    SetFontOfChildren(Handle(), look->Font());
    for (ListView* list : lists)
        list->SetLook(*look);
    for (Link* link : links)
        link->Update();
    Restyle();
    Rearrange();
}

void Page::UpdateTexts() {
    captions.Update();
    for (ListView* list : lists)
        list->UpdateTexts();
    Retext();
    Rearrange();
}

void Page::Rearrange() {
    if (look == nullptr)
        return;
    RECT area{};
    GetClientRect(Handle(), &area);
    const int statusHeight = status.Arrange(*look, area.right, area.bottom);
    Arrange(area.right, area.bottom - statusHeight - look->Pixels(4));
}

void Page::Tell(const std::wstring& text, Tone tone) {
    told = host->Inputs();
    if (status.Tell(text, tone))
        Rearrange();
}

void Page::Warn(const std::wstring& text) {
    MessageBeep(MB_ICONWARNING);
    Tell(text, Tone::error);
}

void Page::TellState(const std::wstring& text, Tone tone) {
    if (status.TellState(text, tone))
        Rearrange();
}

void Page::ForgetMessage() {
    if (told != host->Inputs())
        Tell(L"", Tone::note);
}

std::vector<PageCommand> Page::Commands() const {
    std::vector<PageCommand> commands;
    for (HWND child = GetWindow(Handle(), GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsButton(child))
            commands.push_back({GetDlgCtrlID(child), TextOf(child), IsWindowEnabled(child) != FALSE,
                                IsChecked(child)});
    }
    return commands;
}

const ListView* Page::FocusedList() const {
    const HWND focus = GetFocus();
    const auto found = std::find_if(lists.begin(), lists.end(), [focus](const ListView* list) {
        return list->Handle() == focus;
    });
    return found != lists.end() ? *found : nullptr;
}

std::wstring Page::TextToCopy() const {
    const ListView* list = FocusedList();
    return list != nullptr && list->Selected() >= 0 ? list->SelectedText() : L"";
}

bool Page::Offers(int command) const {
    if (command == ID_COPY)
        return !TextToCopy().empty();
    const HWND button = GetDlgItem(Handle(), command);
    return button != nullptr && IsWindowEnabled(button) != FALSE;
}

void Page::Give(int command) {
    if (command == ID_COPY) {
        if (const std::wstring text = TextToCopy(); !text.empty())
            CopyToClipboard(Handle(), text);
        return;
    }
    const HWND button = GetDlgItem(Handle(), command);
    // A click would take the focus to a button, and a box must change.
    if (button != nullptr && IsCheckBox(button))
        SendMessageW(button, BM_CLICK, 0, 0);
    else
        Command(command, BN_CLICKED);
}

void Page::RememberWidths(const ListView& list) {
    host->Remembered().SetNumbers(widthSetting + std::to_string(GetDlgCtrlID(list.Handle())),
                                  list.OwnWidths());
    Rearrange();
}

LRESULT Page::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_DRAWITEM:
        Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    case WM_COMMAND:
        if (HIWORD(wParam) == EN_CHANGE || HIWORD(wParam) == BN_CLICKED ||
            HIWORD(wParam) == CBN_SELCHANGE)
            ForgetMessage();
        break;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(look != nullptr ? look->Font() : nullptr);
    case WM_SETCURSOR: {
        POINT point{};
        if (LOWORD(lParam) != HTCLIENT || !GetCursorPos(&point) ||
            !ScreenToClient(Handle(), &point) || LinkAt(point) == nullptr)
            break;
        SetCursor(LoadCursorW(nullptr, IDC_HAND));
        return TRUE;
    }
    case WM_LBUTTONDOWN:
        pressed = LinkAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        return 0;
    case WM_LBUTTONUP:
        Click(LinkAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}));
        return 0;
    default:
        break;
    }
    return Window::OnMessage(message, wParam, lParam);
}

const Link* Page::LinkAt(POINT point) const {
    const auto found = std::find_if(links.begin(), links.end(),
                                    [point](const Link* link) { return link->IsUnder(point); });
    return found != links.end() ? *found : nullptr;
}

void Page::Click(const Link* link) {
    const bool clicked = link != nullptr && link == pressed;
    pressed = nullptr;
    if (clicked)
        Command(GetDlgCtrlID(link->Handle()), STN_CLICKED);
}

void Page::Draw(const DRAWITEMSTRUCT& item) const {
    if (look != nullptr && !status.Draw(*look, item))
        DrawWrapped(item, *look, TextOf(item.hwndItem), GetSysColor(COLOR_BTNFACE));
}

LRESULT Page::Notify(const NMHDR& header) {
    LRESULT result = 0;
    for (ListView* list : lists) {
        if (list->Notified(header, result))
            return result;
        if (list->WidthChosen(header))
            RememberWidths(*list);
    }
    if (ListView::SelectionMoved(header))
        ForgetMessage();
    Noticed(header);
    return 0;
}

} // namespace gallery
