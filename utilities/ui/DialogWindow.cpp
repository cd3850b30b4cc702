#include "utilities/ui/DialogWindow.h"

#include "common/Handles.h"
#include "utilities/base/LibraryModule.h"
#include "utilities/base/WindowText.h"
#include "utilities/text/language/LanguageState.h"
#include "utilities/text/language/LibraryText.h"

#include <cwchar>
#include <iterator>

#include <commctrl.h>

namespace vtr {

namespace {

/// A property of dialogs.
constexpr wchar_t fontName[] = L"vtrutils.LanguageFont";

BOOL CALLBACK SetFont(HWND control, LPARAM font) {
    SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(font), /*redraw=*/TRUE);
    return TRUE;
}

} // namespace

bool GiveLanguageFont(HWND dialog) {
    LOGFONTW description{};
    const auto present = reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
    const BYTE charset = Language().currentCharset;
    if (charset == ANSI_CHARSET || charset == DEFAULT_CHARSET ||
        GetObjectW(present, sizeof description, &description) == 0)
        return false;
    description.lfCharSet = charset;
    FontHandle font(CreateFontIndirectW(&description));
    if (!font || SetPropW(dialog, fontName, font.Get()) == FALSE)
        return false;
    EnumChildWindows(dialog, &SetFont, reinterpret_cast<LPARAM>(font.Release()));
    return true;
}

void FreeLanguageFont(HWND dialog) {
    FontHandle(static_cast<HFONT>(RemovePropW(dialog, fontName))).Close();
}

void ShowText(HWND window, const wchar_t* text) {
    // Longer than any text that the library's dialogs show.
    wchar_t shown[2100];
    const int length = GetWindowTextW(window, shown, static_cast<int>(std::size(shown)));
    if (length != static_cast<int>(std::wcslen(text)) || std::wcscmp(shown, text) != 0)
        SetWindowTextW(window, text);
}

void ShowLibraryText(HWND window, const char* key) {
    char text[256] = "";
    LibraryText(key, text, sizeof text);
    ShowText(window, WindowText<sizeof text>(text).Get());
}

void BringForward(HWND window) {
    SetForegroundWindow(window);
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

void DispatchPending(HWND dialog, HWND filter, int most) {
    MSG message;
    for (; most > 0 && PeekMessageW(&message, filter, 0, 0, PM_REMOVE) != FALSE; --most) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (IsWindow(dialog) == FALSE || IsDialogMessageW(dialog, &message) == FALSE) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

HWND CreateLibraryDialog(int templateId, HWND parent, DLGPROC procedure, void* object) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_PROGRESS_CLASS};
    InitCommonControlsEx(&classes);
    return CreateDialogParamW(LibraryModule(), MAKEINTRESOURCEW(templateId), parent, procedure,
                              reinterpret_cast<LPARAM>(object));
}

} // namespace vtr
