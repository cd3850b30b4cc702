#include "utilities/ui/LongOperationDlg.h"

#include "utilities/base/Layout.h"
#include "utilities/base/StoreCut.h"
#include "utilities/base/Subclassing.h"
#include "utilities/base/WindowText.h"
#include "utilities/ui/DialogIds.h"
#include "utilities/ui/DialogWindow.h"
#include "utilities/ui/WindowGeometry.h"

#include <algorithm>
#include <atomic>
#include <cwchar>
#include <iterator>

#include <commctrl.h>

namespace {

constexpr UINT_PTR updateTimer = 12392;
constexpr UINT updateMilliseconds = 100;

using Internals = vtr::Internals<CLongOperationDlg>;

/// A field that other threads may set in timer mode.
template <class Value>
void Store(Value& field, Value value) {
    std::atomic_ref<Value>(field).store(value, std::memory_order_release);
}
template <class Value>
Value Read(const Value& field) {
    return std::atomic_ref<Value>(const_cast<Value&>(field)).load(std::memory_order_acquire);
}

int Percentage(int progress, int maximum) {
    if (maximum <= 0)
        return 0;
    return static_cast<int>(std::max(progress, 0) * 100LL / maximum);
}

} // namespace

template <>
struct vtr::Internals<CLongOperationDlg> {
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;
    static void Initialise(CLongOperationDlg& operation, HWND window);
    static void Changed(CLongOperationDlg& operation);
    static void Update(CLongOperationDlg& operation);
    static void Display(CLongOperationDlg& operation, HWND window);

    static_assert(sizeof(CLongOperationDlg) == vtr::ByPointer(1056, 1048));
    VTR_FIELD_AT(CLongOperationDlg, cancelPressed, 8, 4);
    VTR_FIELD_AT(CLongOperationDlg, maximum, 12, 8);
    VTR_FIELD_AT(CLongOperationDlg, progress, 16, 12);
    VTR_FIELD_AT(CLongOperationDlg, title, 20, 16);
    VTR_FIELD_AT(CLongOperationDlg, progressText, 532, 528);
    VTR_FIELD_AT(CLongOperationDlg, dirty, 1044, 1040);
    VTR_FIELD_AT(CLongOperationDlg, useTimer, 1045, 1041);
    VTR_FIELD_AT(CLongOperationDlg, dialog, 1048, 1044);
};

INT_PTR CALLBACK Internals::Procedure(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        GiveLanguageFont(window);
        SetWindowLongPtrW(window, GWLP_USERDATA, lParam);
        reinterpret_cast<CLongOperationDlg*>(lParam)->dialog = window;
    }
    if (message == WM_NCDESTROY)
        FreeLanguageFont(window);
    auto* operation = ObjectOf<CLongOperationDlg>(window);
    if (operation == nullptr)
        return FALSE;
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        if (operation->dialog == window)
            operation->dialog = nullptr;
    }
    return operation->DlgProc(window, message, wParam, lParam);
}

void Internals::Initialise(CLongOperationDlg& operation, HWND window) {
    if (operation.useTimer)
        SetTimer(window, updateTimer, updateMilliseconds, /*lpTimerFunc=*/nullptr);
    ShowLibraryText(GetDlgItem(window, IDCANCEL), "Cancel");
    Display(operation, window);
    BringForward(window);
    CenterWindow(window, GetParent(window), /*horizontally=*/true, /*vertically=*/true,
                 /*redraw=*/false,
                 /*onMonitor=*/false);
}

void Internals::Changed(CLongOperationDlg& operation) {
    Store(operation.dirty, true);
    if (!operation.useTimer)
        Update(operation);
}

void Internals::Update(CLongOperationDlg& operation) {
    const HWND window = operation.dialog;
    if (IsWindow(window) == FALSE)
        return;
    const bool dispatches = !operation.useTimer;
    Display(operation, window);
    if (dispatches)
        DispatchPending(window, window);
}

/// Touches no field once the first message was sent: the object may be gone by then.
void Internals::Display(CLongOperationDlg& operation, HWND window) {
    Store(operation.dirty, false);
    const int maximum = std::max(Read(operation.maximum), 0);
    const int progress = std::min(Read(operation.progress), maximum);
    const WindowText<sizeof operation.title> title(operation.title);
    const WindowText<sizeof operation.progressText> text(operation.progressText);
    wchar_t percent[16];
    std::swprintf(percent, std::size(percent), L"%d%%", Percentage(progress, maximum));

    ShowText(window, title.Get());
    ShowText(GetDlgItem(window, IDC_OPERATION_TEXT), text.Get());
    ShowText(GetDlgItem(window, IDC_OPERATION_PERCENT), percent);
    const HWND bar = GetDlgItem(window, IDC_OPERATION_BAR);
    SendMessageW(bar, PBM_SETRANGE32, 0, maximum);
    SendMessageW(bar, PBM_SETPOS, static_cast<WPARAM>(progress), 0);
}

CLongOperationDlg::CLongOperationDlg() noexcept
    : cancelPressed(false), maximum(0), progress(0), title(), progressText(), dirty(false),
      useTimer(false), dialog(nullptr) {}

CLongOperationDlg::~CLongOperationDlg() {
    const HWND window = dialog;
    End();
    // Only its own thread can destroy a window; left behind by another, it has no object.
    if (IsWindow(window) != FALSE)
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
}

bool CLongOperationDlg::Go(HINSTANCE /*instance*/, HWND parent) noexcept {
    End();
    Store(cancelPressed, false);
    Store(progress, 0);
    const HWND window =
        vtr::CreateLibraryDialog(IDD_LONG_OPERATION, parent, &Internals::Procedure, this);
    if (window == nullptr)
        return false;
    ShowWindow(window, SW_SHOW);
    return true;
}

void CLongOperationDlg::SetTitle(char* newTitle) noexcept {
    vtr::StoreCut(newTitle != nullptr ? newTitle : "", title, sizeof title);
    Internals::Changed(*this);
}

void CLongOperationDlg::SetProgressText(char* text) noexcept {
    vtr::StoreCut(text != nullptr ? text : "", progressText, sizeof progressText);
    Internals::Changed(*this);
}

void CLongOperationDlg::SetMaxProgress(int newMaximum) noexcept {
    Store(maximum, newMaximum);
    Internals::Changed(*this);
}

void CLongOperationDlg::SetProgress(int newProgress) noexcept {
    Store(progress, std::min(newProgress, Read(maximum)));
    Internals::Changed(*this);
}

void CLongOperationDlg::UseTimerToUpdate(bool use) noexcept {
    useTimer = use;
    if (IsWindow(dialog) == FALSE)
        return;
    if (use)
        SetTimer(dialog, updateTimer, updateMilliseconds, /*lpTimerFunc=*/nullptr);
    else
        KillTimer(dialog, updateTimer);
}

bool CLongOperationDlg::Showing() const noexcept {
    return IsWindow(dialog) != FALSE;
}

bool CLongOperationDlg::UserPushedCancel() const noexcept {
    return Read(cancelPressed);
}

void CLongOperationDlg::ClearCancelButton() noexcept {
    Store(cancelPressed, false);
}

void CLongOperationDlg::End() noexcept {
    const HWND window = dialog;
    dialog = nullptr;
    if (IsWindow(window) == FALSE)
        return;
    KillTimer(window, updateTimer);
    DestroyWindow(window);
}

INT_PTR CLongOperationDlg::DlgProc(HWND window, UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
    case WM_INITDIALOG:
        Internals::Initialise(*this, window);
        return TRUE;
    case WM_TIMER:
        if (wParam != updateTimer)
            return FALSE;
        if (Read(dirty))
            Internals::Update(*this);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) != IDCANCEL)
            return FALSE;
        Store(cancelPressed, true);
        End();
        return TRUE;
    case WM_CLOSE:
        End();
        return TRUE;
    default:
        return FALSE;
    }
}
