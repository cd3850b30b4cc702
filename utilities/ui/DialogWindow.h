#ifndef VTRUTILS_UI_DIALOGWINDOW_H
#define VTRUTILS_UI_DIALOGWINDOW_H

#include <climits>
#include <windows.h>

/// What the library's own dialogs share. Private to the library. One thread at a time: that of the
/// dialog.

namespace vtr {

/// Sets the text of a window that shows another one, so that what stays does not flicker.
void ShowText(HWND window, const wchar_t* text);

/// The same with one of the library's own texts.
void ShowLibraryText(HWND window, const char* key);

/// Gives the controls of a dialog a font for the character set of the language, in place of the
/// template's, which may lack its letters. False, with nothing changed, for a language without a
/// set of its own.
bool GiveLanguageFont(HWND dialog);

/// For WM_NCDESTROY: frees the font, if there is one.
void FreeLanguageFont(HWND dialog);

/// To the foreground, if the system allows, and to the top.
void BringForward(HWND window);

/// Dispatches pending messages of the calling thread, at most `most`: those of `filter` and its
/// children, or all when it is null. Each is offered to the dialog first. Messages that come while
/// this runs count too. A request to quit is posted again and ends this. A dialog that is destroyed
/// meanwhile is left out; no object is touched.
void DispatchPending(HWND dialog, HWND filter, int most = INT_MAX);

/// Makes a modeless dialog from a template of the library, hidden. Null on failure.
HWND CreateLibraryDialog(int templateId, HWND parent, DLGPROC procedure, void* object);

} // namespace vtr

#endif
