#ifndef VTRUTILS_UI_MESSAGEBOXES_H
#define VTRUTILS_UI_MESSAGEBOXES_H

#include "utilities/Export.h"

#include <windows.h>

/// Message boxes in the language of the application: message and title by key from its string
/// files, the buttons from the library's own texts.
///
/// `flags` are those of Windows' own message boxes. MB_OKCANCEL, MB_YESNOCANCEL and MB_YESNO choose
/// the buttons, anything else shows OK alone; the first of them has the focus. MB_ICONINFORMATION
/// shows its icon, all other icon flags show the exclamation mark. The flag 0x10000 shows the check
/// box "Do not ask this again.".
///
/// Each function shows one box over `parent`, which may be null, waits until the user has answered
/// and returns the number of the button: IDOK, IDCANCEL, IDYES or IDNO. Esc and the close button
/// give IDCANCEL, whatever buttons there are. 0 when the box cannot be shown.
///
/// A message is cut to 2047 bytes, a title to 511; `\n` and `\r` in a message break the line. A box
/// grows with its message as far as the screen allows. Null texts count as "".
/// Thread-safety: locked by itself. Boxes may be open on several threads, and one over another.

/// The message is the text of the key; `defaultText` when the key has none, and the key itself when
/// that is null. A number other than 0 in `iconId` shows that icon of the library instead, or none
/// if the library does not have it.
VTRUTILS_API int UT_MyMessageBox(HWND parent, char* messageKey, UINT flags, char* title,
                                 UINT iconId, char* defaultText);

/// The message itself is given.
VTRUTILS_API int UT_MyMessageStr(HWND parent, char* message, UINT flags, char* title, UINT iconId);

/// As `UT_MyMessageBox` without icon of the library; the title, too, is the text of a key.
VTRUTILS_API int UT_MyDialog(HWND parent, char* messageKey, char* titleKey, UINT flags,
                             char* defaultText);

/// Whether the check box was set in the box that was answered last: 1 or 0. It is 1 while a box is
/// open, and after one that was closed without a button. 0 before the first box.
VTRUTILS_API int UT_DoNotAskLastMessageAgain();

#endif
