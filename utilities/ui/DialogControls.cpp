#include "utilities/ui/WindowGeometry.h"

#include "common/DynamicFunction.h"
#include "common/Handles.h"

#include <algorithm>
#include <iterator>

namespace {

vtr::DynamicFunction<decltype(SetLayeredWindowAttributes)>
    setLayeredAttributes("user32", "SetLayeredWindowAttributes");

template <class Action>
void ForEachControl(HWND dialog, const int* ids, int count, const Action& action) {
    for (int i = 0; ids != nullptr && i < count; ++i) {
        if (const HWND control = GetDlgItem(dialog, ids[i]))
            action(control);
    }
}

/// In pixels. 0 for an item that does not count.
LONG WidthOfItem(HWND listBox, HDC dc, WPARAM item) {
    wchar_t text[1024];
    const LRESULT length = SendMessageW(listBox, LB_GETTEXTLEN, item, /*lParam=*/0);
    if (length < 1 || length >= static_cast<LRESULT>(std::size(text)))
        return 0;
    const LRESULT copied = SendMessageW(listBox, LB_GETTEXT, item, reinterpret_cast<LPARAM>(text));
    SIZE size{};
    if (copied < 1 || copied >= static_cast<LRESULT>(std::size(text)) ||
        !GetTextExtentPoint32W(dc, text, static_cast<int>(copied), &size))
        return 0;
    return size.cx;
}

LONG WidestItem(HWND listBox) {
    const vtr::WindowDc dc(GetDC(listBox));
    if (!dc)
        return 0;
    SetMapMode(dc.Get(), MM_TEXT);
    auto* font = reinterpret_cast<HGDIOBJ>(SendMessageW(listBox, WM_GETFONT, 0, 0));
    const vtr::SelectedObject selected(dc.Get(),
                                       font != nullptr ? font : GetStockObject(SYSTEM_FONT));
    const LRESULT count = SendMessageW(listBox, LB_GETCOUNT, 0, 0);
    LONG widest = 0;
    for (LRESULT i = 0; i < count; ++i)
        widest = std::max(widest, WidthOfItem(listBox, dc.Get(), static_cast<WPARAM>(i)));
    return widest;
}

} // namespace

void EnableZeControls(HWND dialog, int ids[], int count, BOOL enable) {
    ForEachControl(dialog, ids, count, [enable](HWND control) { EnableWindow(control, enable); });
}

void ShowZeControls(HWND dialog, int ids[], int count, BOOL show) {
    ForEachControl(dialog, ids, count,
                   [show](HWND control) { ShowWindow(control, show ? SW_SHOW : SW_HIDE); });
}

void SetWindowTransparency(HWND window, BYTE alpha) {
    auto* setAttributes = setLayeredAttributes.Get();
    if (setAttributes == nullptr || !IsWindow(window))
        return;
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_EXSTYLE);
    SetWindowLongPtrW(window, GWL_EXSTYLE, style | WS_EX_LAYERED);
    setAttributes(window, /*crKey=*/0, alpha, LWA_ALPHA);
}

void SetListBoxHorzScroll(HWND listBox) {
    RECT client{};
    if (!GetClientRect(listBox, &client))
        return;
    const LONG extent = WidestItem(listBox) + 4 * GetSystemMetrics(SM_CXEDGE);
    const LRESULT present = SendMessageW(listBox, LB_GETHORIZONTALEXTENT, 0, 0);
    if (extent > client.right - client.left && extent > present)
        SendMessageW(listBox, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(extent), /*lParam=*/0);
}
