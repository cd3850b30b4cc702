#ifndef VTRUTILS_UI_LONGOPERATIONDLG_H
#define VTRUTILS_UI_LONGOPERATIONDLG_H

#include "utilities/Export.h"

#include <windows.h>

/// A window with a title, a line of text, a progress bar, a percentage and a button to cancel.
///
/// Without a timer each setter shows its change at once and dispatches the pending messages of the
/// window: for work on the thread that shows it. With the timer the window shows changes every
/// 100 ms while the thread runs its own message loop; setters then only store.
///
/// The window is modeless. The object may be destroyed from within the dispatch of its own setters.
/// Texts are cut to 511 bytes, and null counts as "".
/// Thread-safety: one thread at a time; in timer mode `SetProgress`, `SetMaxProgress` and
/// `UserPushedCancel` may be called on any thread.
class VTRUTILS_API CLongOperationDlg {
public:
    CLongOperationDlg() noexcept;
    CLongOperationDlg(const CLongOperationDlg&) = delete;
    CLongOperationDlg& operator=(const CLongOperationDlg&) = delete;
    /// Shows the window, centred on the parent, with progress 0 and Cancel not pressed. A window
    /// that is shown already is destroyed before. The instance is not used: the window comes from
    /// the library. False when it cannot be made.
    bool Go(HINSTANCE instance, HWND parent) noexcept;

    /// Kept also while there is no window.
    void SetTitle(char* newTitle) noexcept;
    void SetProgressText(char* text) noexcept;

    /// With 0, as at the start, or less the window shows 0 %.
    void SetMaxProgress(int newMaximum) noexcept;

    /// Stores at most the maximum, so that is set first.
    void SetProgress(int newProgress) noexcept;

    /// Off at the start.
    void UseTimerToUpdate(bool use) noexcept;

    bool Showing() const noexcept; ///< the window exists

    /// True once Cancel was pressed, which ends the window, until `Go` or `ClearCancelButton`.
    /// Closing the window ends it, too, but is not a Cancel.
    bool UserPushedCancel() const noexcept;
    void ClearCancelButton() noexcept;

    /// Destroys the window, if there is one.
    void End() noexcept;

    /// The window's dialog procedure. Who overrides it calls this one for what it leaves.
    virtual INT_PTR DlgProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    /// As `End`. Stands here because hosts rely on the place of `DlgProc` among virtual functions.
    virtual ~CLongOperationDlg();

private:
    friend struct vtr::Internals<CLongOperationDlg>;

    bool cancelPressed;
    int maximum;
    int progress;
    char title[512];
    char progressText[512];
    bool dirty; ///< something changed since the last display
    bool useTimer;
    HWND dialog; ///< null or gone: not shown
};

#endif
