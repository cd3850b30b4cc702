#ifndef VTRUTILS_BASE_SUBCLASSING_H
#define VTRUTILS_BASE_SUBCLASSING_H

#include <windows.h>

/// Window procedures of the library put before those of windows that hosts made. A window keeps its
/// kind: one of ANSI messages stays one. Its user data names the object that came last; properties
/// of the window name each, because objects of several classes, and hosts, share the user data.
/// Private to the library. One thread at a time: that of the window.

namespace vtr {

/// A class whose objects do so. Two properties of windows are its own.
struct SubclassKind {
    WNDPROC procedure;
    const wchar_t* objectName;   ///< the object, if there is one
    const wchar_t* previousName; ///< the procedure before ours, for as long as ours is in the chain
};

/// Null when no object of the class has the window, and for a window that is gone.
void* ObjectInChain(const SubclassKind& kind, HWND window);

/// Gives the window to the object. The procedure stays where it is when it is in the chain already,
/// for an earlier object. Returns the procedure before ours; null, with nothing changed, for a
/// window that is gone or belongs to another process, and when memory runs out.
WNDPROC PutProcedureBefore(const SubclassKind& kind, HWND window, void* object);

/// Ends the object's part. Where somebody put another procedure before ours meanwhile, ours has to
/// stay; it finds no object from then on and calls `PassOn`. Does nothing for a window that is
/// gone or has another object.
void TakeProcedureBack(const SubclassKind& kind, HWND window, const void* object);

/// Calls a procedure in the way of the window's kind; for null, the system's own.
LRESULT CallPrevious(WNDPROC previous, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// For a message that finds no object.
LRESULT PassOn(const SubclassKind& kind, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// What the user data of a window of the library's own names. Null when there is none.
template <class Object>
Object* ObjectOf(HWND window) {
    return reinterpret_cast<Object*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

} // namespace vtr

#endif
