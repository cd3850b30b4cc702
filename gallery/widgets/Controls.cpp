#include "gallery/widgets/Controls.h"

#include <algorithm>
#include <commctrl.h>
#include <cstring>

namespace gallery {

namespace {

/// Fields with lines ask for every key; in one that is only read, Tab, Enter and Esc are the
/// window's.
LRESULT CALLBACK LeaveDialogKeys(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                 DWORD_PTR) noexcept {
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    return message == WM_GETDLGCODE ? result & ~LRESULT{DLGC_WANTALLKEYS} : result;
}

/// The same in one that is written, but for Enter. What is there is not selected by Tab: the next
/// letter would replace it all.
LRESULT CALLBACK KeepEnter(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                           DWORD_PTR) noexcept {
    LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message != WM_GETDLGCODE)
        return result;
    const auto* asked = reinterpret_cast<const MSG*>(lParam);
    if (asked == nullptr || asked->wParam != VK_RETURN)
        result &= ~LRESULT{DLGC_WANTALLKEYS};
    return result & ~LRESULT{DLGC_HASSETSEL};
}

} // namespace

HWND MakeControl(HWND parent, const wchar_t* className, const wchar_t* text, DWORD style, int id) {
    const bool sunken = (style & WS_BORDER) != 0;
    return CreateWindowExW(sunken ? WS_EX_CLIENTEDGE : 0, className, text,
                           WS_CHILD | WS_VISIBLE | (style & ~DWORD{WS_BORDER}), 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                           GetModuleHandleW(nullptr), /*lpParam=*/nullptr);
}

HWND MakeButton(HWND parent, const wchar_t* text, int id) {
    return MakeControl(parent, WC_BUTTONW, text, WS_TABSTOP | BS_PUSHBUTTON, id);
}

HWND MakeEdit(HWND parent, int id) {
    return MakeControl(parent, WC_EDITW, L"", WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, id);
}

HWND MakeReader(HWND parent, int id) {
    const HWND reader = MakeControl(
        parent, WC_EDITW, L"",
        WS_TABSTOP | WS_BORDER | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, id);
    SetWindowSubclass(reader, LeaveDialogKeys, /*uIdSubclass=*/0, /*dwRefData=*/0);
    return reader;
}

HWND MakeEditor(HWND parent, int id) {
    const HWND editor =
        MakeControl(parent, WC_EDITW, L"",
                    WS_TABSTOP | WS_BORDER | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                        ES_WANTRETURN | ES_AUTOVSCROLL | ES_AUTOHSCROLL,
                    id);
    SendMessageW(editor, EM_SETLIMITTEXT, /*longest=*/1'000'000, 0);
    SetWindowSubclass(editor, KeepEnter, /*uIdSubclass=*/0, /*dwRefData=*/0);
    return editor;
}

HWND MakeCheckBox(HWND parent, int id) {
    return MakeControl(parent, WC_BUTTONW, L"", WS_TABSTOP | BS_AUTOCHECKBOX, id);
}

HWND MakeChoice(HWND parent, int id) {
    return MakeControl(parent, WC_COMBOBOXW, L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, id);
}

HWND MakeLabel(HWND parent, const wchar_t* text, int id) {
    return MakeControl(parent, WC_STATICW, text, SS_LEFT | SS_CENTERIMAGE, id);
}

HWND MakeTextLine(HWND parent, DWORD style, int id) {
    return MakeControl(parent, WC_STATICW, L"", SS_NOPREFIX | SS_CENTERIMAGE | style, id);
}

HWND MakeWrappedText(HWND parent, int id) {
    return MakeControl(parent, WC_STATICW, L"", SS_NOPREFIX | SS_OWNERDRAW, id);
}

std::wstring TextOf(HWND control) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
    const int length = GetWindowTextW(control, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void SetText(HWND control, const std::wstring& text) {
    if (TextOf(control) != text)
        SetWindowTextW(control, text.c_str());
}

void SetHint(HWND edit, const std::wstring& hint) {
    SendMessageW(edit, EM_SETCUEBANNER, /*wParam=*/FALSE, reinterpret_cast<LPARAM>(hint.c_str()));
}

void FocusAndSelect(HWND edit) {
    SetFocus(edit);
    SendMessageW(edit, EM_SETSEL, 0, -1);
}

bool IsField(HWND control) {
    wchar_t name[16] = L"";
    GetClassNameW(control, name, 16);
    return lstrcmpiW(name, WC_EDITW) == 0;
}

bool IsButton(HWND control) {
    return (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) != 0;
}

bool IsCheckBox(HWND button) {
    return (GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK) == BS_AUTOCHECKBOX;
}

bool IsChecked(HWND checkBox) {
    return SendMessageW(checkBox, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void EnableControls(HWND next, std::initializer_list<Enabling> changes) {
    const HWND focus = GetFocus();
    bool losesFocus = false;
    for (const Enabling& change : changes) {
        EnableWindow(change.control, change.enabled);
        losesFocus = losesFocus || (!change.enabled && change.control == focus);
    }
    if (losesFocus)
        SetFocus(next);
}

void SetChoices(HWND choice, const std::vector<std::wstring>& texts, int chosen) {
    SendMessageW(choice, CB_RESETCONTENT, 0, 0);
    for (const std::wstring& text : texts)
        SendMessageW(choice, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageW(choice, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
}

int Chosen(HWND choice) {
    return static_cast<int>(SendMessageW(choice, CB_GETCURSEL, 0, 0));
}

void CopyToClipboard(HWND window, const std::wstring& text) {
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
    void* room = memory != nullptr ? GlobalLock(memory) : nullptr;
    if (room != nullptr) {
        std::memcpy(room, text.c_str(), bytes);
        GlobalUnlock(memory);
    }
    bool taken = false;
    if (room != nullptr && OpenClipboard(window)) {
        taken = EmptyClipboard() && SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
        CloseClipboard();
    }
    if (!taken)
        GlobalFree(memory);
}

void SetFontOfChildren(HWND parent, HFONT font) {
    for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), /*redraw=*/TRUE);
}

Placement::~Placement() {
    if (positions != nullptr)
        EndDeferWindowPos(positions);
}

void Placement::Put(HWND child, int x, int y, int width, int height) {
    if (positions != nullptr)
        positions =
            DeferWindowPos(positions, child, /*hWndInsertAfter=*/nullptr, x, y, std::max(width, 0),
                           std::max(height, 0), SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

} // namespace gallery
