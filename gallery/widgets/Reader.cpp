#include "gallery/widgets/Reader.h"

#include "gallery/widgets/Controls.h"
#include "utilities/ui/WindowGeometry.h"

#include <algorithm>

namespace gallery {

namespace {

struct Content {
    const Look& look;
    int textId;
    const std::wstring& title;
    const std::wstring& text;
    const std::wstring& closeText;
};

void Arrange(HWND window, const Content& content) {
    const Look& look = content.look;
    RECT area{};
    GetClientRect(window, &area);
    const int gap = look.Pixels(8);
    const HWND button = GetDlgItem(window, IDOK);
    const int width = look.ButtonWidth(button);
    Placement places(/*expected=*/2);
    places.Put(GetDlgItem(window, content.textId), gap, gap, area.right - 2 * gap,
               area.bottom - look.Row() - 3 * gap);
    places.Put(button, area.right - gap - width, area.bottom - gap - look.Row(), width, look.Row());
}

/// As large as the screen lets it be and the text wants it.
void Prepare(HWND window, const Content& content) {
    const Look& look = content.look;
    SetFontOfChildren(window, look.Font());
    SetText(window, content.title);
    SetText(GetDlgItem(window, IDOK), content.closeText);
    const HWND text = GetDlgItem(window, content.textId);
    SetText(text, content.text);
    const RECT work = GetMonitorRectFromWindow(window);
    const int width = std::min<int>(look.Pixels(640), work.right - work.left);
    const int height =
        std::min<int>(look.WrappedHeight(content.text, width - look.Pixels(64)) + look.Pixels(120),
                      (work.bottom - work.top) * 9 / 10);
    SetWindowPos(window, /*hWndInsertAfter=*/nullptr, 0, 0, width, height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    CenterWindow(window, /*reference=*/nullptr, /*horizontally=*/true, /*vertically=*/true,
                 /*redraw=*/true, /*onMonitor=*/false);
    Arrange(window, content);
    // The whole text is selected at first, and in sight from its end.
    SendMessageW(text, EM_SETSEL, 0, 0);
    SetFocus(GetDlgItem(window, IDOK));
}

INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
    case WM_INITDIALOG:
        SetWindowLongPtrW(window, GWLP_USERDATA, lParam);
        Prepare(window, *reinterpret_cast<const Content*>(lParam));
        return FALSE;
    case WM_SIZE:
        if (const auto* content =
                reinterpret_cast<const Content*>(GetWindowLongPtrW(window, GWLP_USERDATA)))
            Arrange(window, *content);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)
            return FALSE;
        EndDialog(window, IDOK);
        return TRUE;
    default:
        return FALSE;
    }
}

} // namespace

void ShowReader(HWND owner, const Look& look, int dialog, int textId, const std::wstring& title,
                const std::wstring& text, const std::wstring& closeText) {
    const Content content{look, textId, title, text, closeText};
    DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(dialog), owner, Procedure,
                    reinterpret_cast<LPARAM>(&content));
}

} // namespace gallery
