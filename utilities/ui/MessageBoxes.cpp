#include "utilities/ui/MessageBoxes.h"

#include "common/Handles.h"
#include "utilities/base/LibraryModule.h"
#include "utilities/base/StoreCut.h"
#include "utilities/base/Subclassing.h"
#include "utilities/base/WindowText.h"
#include "utilities/text/html/HtmlText.h"
#include "utilities/text/language/LanguageStrings.h"
#include "utilities/text/language/LibraryText.h"
#include "utilities/ui/DialogIds.h"
#include "utilities/ui/DialogWindow.h"
#include "utilities/ui/WindowGeometry.h"

#include <algorithm>
#include <atomic>

namespace {

constexpr int messageSize = 2048;
constexpr int titleSize = 512;
constexpr UINT showsCheckBox = 0x10000;

std::atomic<int> doNotAskAgain{0};

constexpr int allButtons[] = {IDYES, IDNO, IDOK, IDCANCEL};

struct ButtonSet {
    UINT flags;
    int first; ///< has the focus
    bool Has(int id) const { return id == first || id == others[0] || id == others[1]; }
    int others[2];
};

constexpr ButtonSet buttonSets[] = {
    {.flags = MB_OKCANCEL, .first = IDOK, .others = {IDCANCEL, 0}},
    {.flags = MB_YESNOCANCEL, .first = IDYES, .others = {IDNO, IDCANCEL}},
    {.flags = MB_YESNO, .first = IDYES, .others = {IDNO, 0}},
    {.flags = MB_OK, .first = IDOK, .others = {0, 0}},
};

const ButtonSet& ButtonsOf(UINT flags) {
    const auto* last = std::end(buttonSets) - 1;
    return *std::find_if(std::begin(buttonSets), last, [flags](const ButtonSet& set) {
        return set.flags == (flags & MB_TYPEMASK);
    });
}

/// Of the icon's control in the template, in dialog units; it takes the size of what it shows.
constexpr int iconHeight = 20;

int HeightOf(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return area.bottom - area.top;
}

/// In the coordinates of the parent.
RECT PlaceOf(HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(HWND_DESKTOP, GetParent(control), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void MoveDown(HWND control, int distance) {
    const RECT place = PlaceOf(control);
    SetWindowPos(control, /*hWndInsertAfter=*/nullptr, place.left, place.top + distance, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void SetHeight(HWND window, int height) {
    RECT area{};
    GetWindowRect(window, &area);
    SetWindowPos(window, /*hWndInsertAfter=*/nullptr, 0, 0, area.right - area.left, height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// As far as there is room: translations may be longer than the template expects.
void WidenToTheRight(HWND control) {
    const RECT place = PlaceOf(control);
    RECT client{};
    GetClientRect(GetParent(control), &client);
    SetWindowPos(control, /*hWndInsertAfter=*/nullptr, 0, 0, client.right - 2 * place.left,
                 place.bottom - place.top, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// One box, from its call to its answer.
class Box {
public:
    Box(const char* text, UINT boxFlags, const char* boxTitle, UINT icon)
        : message(text), title(boxTitle), flags(boxFlags), iconId(icon),
          buttons(ButtonsOf(boxFlags)) {}

    int Show(HWND parent) {
        owner = parent;
        const INT_PTR answer =
            DialogBoxParamW(vtr::LibraryModule(), MAKEINTRESOURCEW(IDD_MESSAGE_BOX), parent,
                            &Procedure, reinterpret_cast<LPARAM>(this));
        return answer > 0 ? static_cast<int>(answer) : 0;
    }

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;

    HWND Control(int id) const { return GetDlgItem(dialog, id); }
    void Fill();
    void LayOut();
    int TextHeight() const;
    int RoomBelow() const;
    void KeepAboveScreenEnd() const;
    void ShowIcon() const;
    void ShowButtons() const;

    vtr::WindowText<messageSize> message;
    vtr::WindowText<titleSize> title;
    UINT flags;
    UINT iconId;
    const ButtonSet& buttons;
    HWND owner = nullptr;
    HWND dialog = nullptr;
    bool hasLanguageFont = false;
};

INT_PTR CALLBACK Box::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
    case WM_INITDIALOG: {
        auto& box = *reinterpret_cast<Box*>(lParam);
        box.dialog = dialog;
        doNotAskAgain = 1;
        box.hasLanguageFont = vtr::GiveLanguageFont(dialog);
        CenterWindow(dialog, box.owner, /*horizontally=*/true, /*vertically=*/true,
                     /*redraw=*/false,
                     /*onMonitor=*/false);
        box.Fill();
        box.LayOut();
        box.ShowIcon();
        box.ShowButtons();
        vtr::BringForward(dialog);
        return FALSE; // the focus is set
    }
    case WM_COMMAND: {
        const int id = LOWORD(wParam);
        if (std::find(std::begin(allButtons), std::end(allButtons), id) == std::end(allButtons))
            return FALSE;
        doNotAskAgain = IsDlgButtonChecked(dialog, IDC_DO_NOT_ASK) == BST_CHECKED ? 1 : 0;
        EndDialog(dialog, id);
        return TRUE;
    }
    case WM_CLOSE:
        // A box over this one may have been answered meanwhile.
        doNotAskAgain = 1;
        EndDialog(dialog, IDCANCEL);
        return TRUE;
    case WM_NCDESTROY:
        vtr::FreeLanguageFont(dialog);
        return FALSE;
    default:
        return FALSE;
    }
}

void Box::Fill() {
    vtr::ShowText(dialog, title.Get());
    vtr::ShowText(Control(IDC_MESSAGE), message.Get());
    vtr::ShowLibraryText(Control(IDCANCEL), "Cancel");
    vtr::ShowLibraryText(Control(IDYES), "Yes");
    vtr::ShowLibraryText(Control(IDNO), "No");
    vtr::ShowLibraryText(Control(IDC_DO_NOT_ASK), "DoNotAsk");
}

/// In the width of the message control.
int Box::TextHeight() const {
    const HWND control = Control(IDC_MESSAGE);
    RECT area{};
    GetClientRect(control, &area);
    const vtr::WindowDc dc(GetDC(control));
    const HGDIOBJ shown = hasLanguageFont
                              ? reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0))
                              : GetStockObject(ANSI_VAR_FONT);
    const vtr::SelectedObject font(dc.Get(), shown);
    return DrawTextW(dc.Get(), message.Get(), message.Length(), &area,
                     DT_WORDBREAK | DT_CALCRECT | DT_EDITCONTROL | DT_EXPANDTABS | DT_NOPREFIX);
}

/// How much the box may grow before its buttons leave the screen.
int Box::RoomBelow() const {
    const RECT screen = GetMonitorRectFromWindow(dialog);
    return std::max<int>(screen.bottom - screen.top - HeightOf(dialog), 0);
}

void Box::LayOut() {
    const HWND text = Control(IDC_MESSAGE);
    const HWND checkBox = Control(IDC_DO_NOT_ASK);
    const bool hasCheckBox = (flags & showsCheckBox) != 0;
    const int saved = hasCheckBox ? 0 : HeightOf(checkBox);
    RECT icon{0, 0, 0, iconHeight};
    MapDialogRect(dialog, &icon);
    const int wanted = std::max(TextHeight(), 2 * static_cast<int>(icon.bottom));
    const int growth = std::min(wanted - HeightOf(text), RoomBelow() + saved);
    SetHeight(text, HeightOf(text) + growth);
    for (const int id : allButtons)
        MoveDown(Control(id), growth);
    if (hasCheckBox) {
        MoveDown(checkBox, growth);
        WidenToTheRight(checkBox);
    } else {
        ShowWindow(checkBox, SW_HIDE);
    }
    SetHeight(dialog, HeightOf(dialog) + growth - saved);
    KeepAboveScreenEnd();
}

void Box::KeepAboveScreenEnd() const {
    RECT place{};
    GetWindowRect(dialog, &place);
    const RECT screen = GetMonitorRectFromWindow(dialog);
    if (place.bottom <= screen.bottom)
        return;
    const LONG top = std::max(screen.top, screen.bottom - (place.bottom - place.top));
    SetWindowPos(dialog, /*hWndInsertAfter=*/nullptr, place.left, top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Box::ShowIcon() const {
    HICON icon = nullptr;
    if (iconId != 0)
        icon = LoadIconW(vtr::LibraryModule(), MAKEINTRESOURCEW(iconId));
    else if ((flags & MB_ICONEXCLAMATION) != 0)
        icon = LoadIconA(/*hInstance=*/nullptr, IDI_EXCLAMATION);
    else if ((flags & MB_ICONINFORMATION) != 0)
        icon = LoadIconA(/*hInstance=*/nullptr, IDI_INFORMATION);
    SendMessageW(Control(IDC_MESSAGE_ICON), STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
}

void Box::ShowButtons() const {
    for (const int id : allButtons)
        ShowWindow(Control(id), buttons.Has(id) ? SW_SHOW : SW_HIDE);
    // Enter in the check box means the first button, and OK may be hidden.
    SendMessageW(dialog, DM_SETDEFID, static_cast<WPARAM>(buttons.first), 0);
    SetFocus(Control(buttons.first));
}

} // namespace

int UT_MyMessageStr(HWND parent, char* message, UINT flags, char* title, UINT iconId) {
    char broken[messageSize] = "";
    if (message != nullptr)
        vtr::StoreCut(message, broken, sizeof broken);
    ParseCarriageReturns(broken, broken, sizeof broken);
    return Box(broken, flags, title, iconId).Show(parent);
}

int UT_MyMessageBox(HWND parent, char* messageKey, UINT flags, char* title, UINT iconId,
                    char* defaultText) {
    char message[messageSize] = "";
    if (!vtr::LanguageText(messageKey, message, sizeof message) && defaultText != nullptr)
        vtr::StoreCut(defaultText, message, sizeof message);
    return UT_MyMessageStr(parent, message, flags, title, iconId);
}

int UT_MyDialog(HWND parent, char* messageKey, char* titleKey, UINT flags, char* defaultText) {
    char title[titleSize] = "";
    MyLoadString(titleKey, title, sizeof title, /*file=*/nullptr, /*processEscapes=*/true);
    return UT_MyMessageBox(parent, messageKey, flags, title, /*iconId=*/0, defaultText);
}

int UT_DoNotAskLastMessageAgain() {
    return doNotAskAgain;
}
