#ifndef VTRUTILS_BASE_SUBCLASSING_H
#define VTRUTILS_BASE_SUBCLASSING_H

#include <windows.h>

/// Window procedures of the library put before those of windows that hosts made. The window's user
/// data names the object for as long as there is one. A window keeps its kind: one of ANSI messages
/// stays one. Private to the library. One thread at a time: that of the window.

namespace vtr {

/// In the way of the window's kind. Null for a window that is gone.
WNDPROC ProcedureOf(HWND window);

/// Returns the procedure that was there before; null, with nothing changed, for a window that is
/// gone or belongs to another process. Requires: `ours` is not in the window's chain.
WNDPROC PutProcedureBefore(HWND window, WNDPROC ours, void* object);

/// The procedure before ours in a window where ours had to stay without an object; null elsewhere.
/// An object that comes there later only sets the user data: ours is in the chain already.
WNDPROC PreviousWhereLeft(HWND window);

/// Ends the object's part. Where somebody put another procedure before ours meanwhile, ours has to
/// stay; it finds no object from then on and calls `PassOn`. Does nothing for a window that is
/// gone.
void TakeProcedureBack(HWND window, WNDPROC ours, WNDPROC previous);

/// Calls the procedure that was there before ours in the way of the window's kind.
LRESULT CallPrevious(WNDPROC previous, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// For a message that finds no object.
LRESULT PassOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Null when there is none.
template <class Object>
Object* ObjectOf(HWND window) {
    return reinterpret_cast<Object*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

} // namespace vtr

#endif
