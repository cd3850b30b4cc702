#include "utilities/base/Subclassing.h"

namespace vtr {

namespace {

LONG_PTR SetProcedure(HWND window, WNDPROC procedure) {
    const LONG_PTR value = reinterpret_cast<LONG_PTR>(procedure);
    return IsWindowUnicode(window) != FALSE ? SetWindowLongPtrW(window, GWLP_WNDPROC, value)
                                            : SetWindowLongPtrA(window, GWLP_WNDPROC, value);
}

/// Null for a window that is gone.
WNDPROC ProcedureOf(HWND window) {
    return reinterpret_cast<WNDPROC>(IsWindowUnicode(window) != FALSE
                                         ? GetWindowLongPtrW(window, GWLP_WNDPROC)
                                         : GetWindowLongPtrA(window, GWLP_WNDPROC));
}

} // namespace

void* ObjectInChain(const SubclassKind& kind, HWND window) {
    return GetPropW(window, kind.objectName);
}

WNDPROC PutProcedureBefore(const SubclassKind& kind, HWND window, void* object) {
    auto previous = reinterpret_cast<WNDPROC>(GetPropW(window, kind.previousName));
    const bool isInChain = previous != nullptr;
    if (!isInChain)
        previous = ProcedureOf(window);
    if (previous == nullptr || SetPropW(window, kind.objectName, object) == FALSE)
        return nullptr;
    if (!isInChain &&
        (SetPropW(window, kind.previousName, reinterpret_cast<HANDLE>(previous)) == FALSE ||
         SetProcedure(window, kind.procedure) == 0)) {
        RemovePropW(window, kind.previousName);
        RemovePropW(window, kind.objectName);
        return nullptr;
    }
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    return previous;
}

void TakeProcedureBack(const SubclassKind& kind, HWND window, const void* object) {
    if (ObjectInChain(kind, window) != object)
        return;
    RemovePropW(window, kind.objectName);
    if (GetWindowLongPtrW(window, GWLP_USERDATA) == reinterpret_cast<LONG_PTR>(object))
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    if (ProcedureOf(window) == kind.procedure)
        SetProcedure(window, reinterpret_cast<WNDPROC>(RemovePropW(window, kind.previousName)));
}

LRESULT CallPrevious(WNDPROC previous, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isWide = IsWindowUnicode(window) != FALSE;
    if (previous != nullptr)
        return (isWide ? CallWindowProcW : CallWindowProcA)(previous, window, message, wParam,
                                                            lParam);
    return (isWide ? DefWindowProcW : DefWindowProcA)(window, message, wParam, lParam);
}

LRESULT PassOn(const SubclassKind& kind, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto previous = reinterpret_cast<WNDPROC>(GetPropW(window, kind.previousName));
    if (message == WM_NCDESTROY)
        RemovePropW(window, kind.previousName);
    return CallPrevious(previous, window, message, wParam, lParam);
}

} // namespace vtr
