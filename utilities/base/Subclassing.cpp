#include "utilities/base/Subclassing.h"

namespace vtr {

namespace {

/// A property of windows where our procedure had to stay: the procedure before it.
constexpr wchar_t previousName[] = L"vtrutils.PreviousProcedure";

LONG_PTR SetProcedure(HWND window, WNDPROC procedure) {
    const LONG_PTR value = reinterpret_cast<LONG_PTR>(procedure);
    return IsWindowUnicode(window) != FALSE ? SetWindowLongPtrW(window, GWLP_WNDPROC, value)
                                            : SetWindowLongPtrA(window, GWLP_WNDPROC, value);
}

} // namespace

WNDPROC ProcedureOf(HWND window) {
    return reinterpret_cast<WNDPROC>(IsWindowUnicode(window) != FALSE
                                         ? GetWindowLongPtrW(window, GWLP_WNDPROC)
                                         : GetWindowLongPtrA(window, GWLP_WNDPROC));
}

WNDPROC PutProcedureBefore(HWND window, WNDPROC ours, void* object) {
    const LONG_PTR oldData = GetWindowLongPtrW(window, GWLP_USERDATA);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    const WNDPROC previous = reinterpret_cast<WNDPROC>(SetProcedure(window, ours));
    if (previous == nullptr)
        SetWindowLongPtrW(window, GWLP_USERDATA, oldData);
    return previous;
}

WNDPROC PreviousWhereLeft(HWND window) {
    return reinterpret_cast<WNDPROC>(GetPropW(window, previousName));
}

void TakeProcedureBack(HWND window, WNDPROC ours, WNDPROC previous) {
    if (IsWindow(window) == FALSE)
        return;
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    if (ProcedureOf(window) == ours) {
        SetProcedure(window, previous);
        RemovePropW(window, previousName);
    } else {
        SetPropW(window, previousName, reinterpret_cast<HANDLE>(previous));
    }
}

LRESULT CallPrevious(WNDPROC previous, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return IsWindowUnicode(window) != FALSE
               ? CallWindowProcW(previous, window, message, wParam, lParam)
               : CallWindowProcA(previous, window, message, wParam, lParam);
}

LRESULT PassOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto previous = reinterpret_cast<WNDPROC>(GetPropW(window, previousName));
    if (message == WM_NCDESTROY)
        RemovePropW(window, previousName);
    if (previous != nullptr)
        return CallPrevious(previous, window, message, wParam, lParam);
    return IsWindowUnicode(window) != FALSE ? DefWindowProcW(window, message, wParam, lParam)
                                            : DefWindowProcA(window, message, wParam, lParam);
}

} // namespace vtr
