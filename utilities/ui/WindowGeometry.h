#ifndef VTRUTILS_UI_WINDOWGEOMETRY_H
#define VTRUTILS_UI_WINDOWGEOMETRY_H

#include "utilities/Export.h"

#include <windows.h>

/// Places windows on monitors, tells what is under the mouse, and helps with dialogs, list boxes,
/// file dialogs and dropped files.
///
/// Coordinates are of the screen, in pixels, where a declaration does not say otherwise; those of a
/// monitor to the left of or above the primary one are negative. A work area is what the task bar
/// leaves of a monitor. A handle that is not that of a window is accepted where a contract says
/// what it gives; elsewhere nothing happens. Functions that change a window send it messages, which
/// may call back into the host. Thread-safety: immutable and safe.

// Monitors.

/// The work area of the monitor nearest to the point; the rectangle of the desktop window where
/// Windows knows no monitors.
VTRUTILS_API RECT GetMonitorRectFromPt(POINT point);

/// The work area of the monitor nearest to the window, or else that nearest to its top left corner.
/// Empty (all 0) if it is not a window.
VTRUTILS_API RECT GetMonitorRectFromWindow(HWND window);

/// True if all four edges lie in the work area of the monitor at the top left corner, or on its
/// edges. False for null.
VTRUTILS_API BOOL IsRectOnTheScreen(RECT* rect);

/// True if some of the window's rectangle lies in the work area of the monitor at its top left
/// corner, whether the window is shown or not. False if it is not a window.
VTRUTILS_API bool WindowVisibleOnDesktop(HWND window);

// Placing.

/// Where the top left corner of `window` belongs, so that it is centred on `reference`; null is its
/// parent or owner. Without one, and if `onMonitor`, it is centred on the work area of the monitor
/// under the centre of the reference: without one, that at (0, 0). The window is moved so that it
/// does not begin before this work area or else, if it begins in it, does not end after it.
///
/// Only the axes that are asked for are centred. If that is one, the other coordinate is where the
/// window is now, in client coordinates of the reference (of the desktop without one). `redraw` is
/// not used.
VTRUTILS_API POINT GetCenteredCoordinates(HWND window, HWND reference, bool horizontally,
                                          bool vertically, bool redraw, bool onMonitor);

/// Moves the window to `GetCenteredCoordinates`. It is not activated and keeps its size and its
/// place above and below others; it is not painted anew unless `redraw`.
VTRUTILS_API void CenterWindow(HWND window, HWND reference, bool horizontally, bool vertically,
                               bool redraw, bool onMonitor);

/// Brings a rectangle into the work area of a monitor, less the margins at the left, the top and
/// the bottom. One that sticks out at the left is made narrower, not moved. One that sticks out at
/// the top or bottom is moved, and cut at the bottom if it is too high. The right edge is never
/// looked at. The monitor is that nearest to the point (left, right): the right edge stands for the
/// height of that point.
VTRUTILS_API void AdjustRectToFitOnScreen(RECT& rect, int xMargin, int yMargin);

// Windows and the mouse.

/// True if the window's rectangle holds the point; its right and bottom edges are outside. False if
/// it is not a window.
VTRUTILS_API bool WindowContainsPoint(HWND window, int x, int y);

/// `WindowContainsPoint` of the mouse; false also if its place cannot be read. The window may be
/// hidden by others.
VTRUTILS_API bool IsCursorOverWindow(HWND window);

/// The window under the mouse; null if there is none or the place of the mouse cannot be read.
VTRUTILS_API HWND GetCursorWindow();

/// True if `ancestor` is the parent or owner of `window`, or that of one of these. False for a null
/// ancestor, for the window itself and where owners lead in a circle without the ancestor.
VTRUTILS_API bool IsDescendant(HWND ancestor, HWND window);

/// The window's rectangle in client coordinates of its parent or owner. Empty (all 0) if either is
/// not a window.
VTRUTILS_API RECT GetWindowCoordsRelativeToParent(HWND window);

/// Whether `point`, counted from the left edge of the dialog's window and from the top of its
/// client area, is on the control. The height of what stands above the client area is taken as all
/// the height that the window has more than its client area. 0 if there is no such control.
VTRUTILS_API BOOL MouseOverDialogControl(HWND dialog, UINT id, POINT point);

// Controls. Ids without a control are passed over.

/// Enables or disables these controls of a dialog. `ids` has `count` of them; does nothing if it is
/// null.
VTRUTILS_API void EnableZeControls(HWND dialog, int ids[], int count, BOOL enable);

/// Shows or hides them.
VTRUTILS_API void ShowZeControls(HWND dialog, int ids[], int count, BOOL show);

/// Makes the whole window show what is behind it: `alpha` is 255 for none of it, 0 for nothing
/// else. The window stays layered. Does nothing where Windows has no layered windows.
VTRUTILS_API void SetWindowTransparency(HWND window, BYTE alpha);

/// Makes the widest item of a list box reachable by scrolling: sets its horizontal extent to the
/// width of that item in the list's font, and some space, if this is more than both the client
/// width and the present extent. Items of more than 1,023 characters do not count. The list box has
/// its own strings and the style WS_HSCROLL. Costs two messages for each item.
VTRUTILS_API void SetListBoxHorzScroll(HWND listBox);

// Files.

/// Lets files be dropped on the window, which is then sent WM_DROPFILES, also by programs of fewer
/// rights where Windows filters messages between them. True if those messages are let through:
/// where Windows has no filter for single windows, before Windows 7 only.
VTRUTILS_API bool EnableFileDropping(HWND window);

/// Asks the user for the name of a file to open, or with `open` 0 to save, in Windows' own dialog,
/// centred on `owner` (on the monitor if it is null). All texts are in the system's ANSI code page.
/// What is typed must exist to be opened; the user is asked before an existing file is saved over.
///
/// `file` has the proposed name or "", and receives the path; `fileTitle`, which may be null,
/// receives the name without the folder. Both hold `maxFile` bytes. `filter` is pairs of a name and
/// patterns ("*.a;*.b"), each terminated, with another terminator at the end. `filterIndex` tells
/// which pair is chosen at first, from 1 on, and receives which one was chosen at last; null counts
/// as 0, the first. `defExt` is the extension without its dot that a name without one is given.
/// `filter`, `defExt`, `title` and `initialDir` may be null. `extraFlags` are more of the OFN_
/// flags: without OFN_NOCHANGEDIR the current folder of the process follows the user. `instance`
/// has the template that such flags may ask for.
///
/// Not 0 if the user chose a file. 0 if the dialog was cancelled or could not be shown, and if the
/// path does not fit: `CommDlgExtendedError` tells which. `file` and `fileTitle` then hold what
/// Windows left there, which is not always text.
/// Requires: `file` is a terminated text in its `maxFile` bytes.
VTRUTILS_API int DoStandardFileDialog(HINSTANCE instance, HWND owner, char* file, char* fileTitle,
                                      DWORD maxFile, int open, char* filter, char* defExt,
                                      char* title, char* initialDir, unsigned* filterIndex,
                                      DWORD extraFlags);

#endif
