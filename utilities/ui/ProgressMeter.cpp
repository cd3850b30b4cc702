#include "utilities/ui/ProgressMeter.h"

#include "utilities/base/Layout.h"
#include "utilities/base/WindowText.h"
#include "utilities/ui/DialogIds.h"
#include "utilities/ui/DialogWindow.h"
#include "utilities/ui/WindowGeometry.h"

#include <algorithm>
#include <atomic>

#include <commctrl.h>

template <>
struct vtr::Internals<CProgressMeter> {
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;

    static_assert(sizeof(CProgressMeter) == vtr::ByPointer(16, 8));
    VTR_FIELD_AT(CProgressMeter, dialog, 0);
    VTR_FIELD_AT(CProgressMeter, parent, 8, 4);
};

namespace {

constexpr int titleSize = 512;
constexpr int barMaximum = 0xFFFF; ///< bars of the first kind count in 16 bits

std::atomic<bool> userAborted{false};

/// The maximum of a dialog, for the scale of its bar.
void SetMaximum(HWND dialog, int maximum) {
    SetWindowLongPtrW(dialog, DWLP_USER, maximum);
}
int MaximumOf(HWND dialog) {
    return static_cast<int>(GetWindowLongPtrW(dialog, DWLP_USER));
}

int OnBar(int progress, int maximum) {
    progress = std::clamp(progress, 0, maximum);
    if (maximum <= barMaximum)
        return progress;
    return static_cast<int>(static_cast<long long>(progress) * barMaximum / maximum);
}

} // namespace

INT_PTR CALLBACK vtr::Internals<CProgressMeter>::Procedure(HWND dialog, UINT message, WPARAM wParam,
                                                           LPARAM lParam) noexcept {
    switch (message) {
    case WM_INITDIALOG:
        SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        GiveLanguageFont(dialog);
        ShowLibraryText(GetDlgItem(dialog, IDCANCEL), "Cancel");
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) != IDCANCEL)
            return FALSE;
        userAborted = true;
        return TRUE;
    case WM_NCDESTROY: {
        FreeLanguageFont(dialog);
        auto* meter = reinterpret_cast<CProgressMeter*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
        if (meter != nullptr && meter->dialog == dialog)
            meter->dialog = nullptr;
        return FALSE;
    }
    default:
        return FALSE;
    }
}

CProgressMeter::CProgressMeter() noexcept : dialog(nullptr), parent(nullptr) {}

CProgressMeter::~CProgressMeter() {
    Hide();
}

bool CProgressMeter::Show(HWND newParent, int max, char* title) noexcept {
    Hide();
    userAborted = false;
    parent = newParent;
    dialog = vtr::CreateLibraryDialog(IDD_PROGRESS_METER, parent,
                                      &vtr::Internals<CProgressMeter>::Procedure, this);
    if (dialog == nullptr)
        return false;
    const int maximum = std::max(max, 0);
    SetMaximum(dialog, maximum);
    const HWND bar = GetDlgItem(dialog, IDC_METER_BAR);
    SendMessageW(bar, PBM_SETRANGE, 0, MAKELPARAM(0, std::min(maximum, barMaximum)));
    SendMessageW(bar, PBM_SETPOS, 0, 0);
    vtr::ShowText(dialog, vtr::WindowText<titleSize>(title).Get());
    CenterWindow(dialog, parent, /*horizontally=*/true, /*vertically=*/true, /*redraw=*/false,
                 /*onMonitor=*/false);
    ShowWindow(dialog, SW_SHOW);
    return true;
}

void CProgressMeter::SetProgress(int progress) noexcept {
    // The meter may be destroyed by what is dispatched.
    const HWND shown = dialog;
    if (IsWindow(shown) == FALSE)
        return;
    SendDlgItemMessageW(shown, IDC_METER_BAR, PBM_SETPOS,
                        static_cast<WPARAM>(OnBar(progress, MaximumOf(shown))), 0);
    vtr::DispatchPending(shown, /*filter=*/nullptr, /*most=*/2);
}

void CProgressMeter::Hide() noexcept {
    const HWND shown = dialog;
    dialog = nullptr;
    if (IsWindow(shown) == FALSE)
        return;
    SetWindowLongPtrW(shown, GWLP_USERDATA, 0);
    ShowWindow(shown, SW_HIDE);
    DestroyWindow(shown);
}

bool CProgressMeter::IsVisible() const noexcept {
    return IsWindow(dialog) != FALSE;
}

bool CProgressMeter::UserAborted() const noexcept {
    return userAborted;
}
