#ifndef VTRUTILS_UI_PROGRESSMETER_H
#define VTRUTILS_UI_PROGRESSMETER_H

#include "utilities/Export.h"

#include <windows.h>

/// A small window with a progress bar and a button to cancel, for work on the thread that shows it.
///
/// The window is modeless: who must not be used meanwhile is disabled by the host. The meter may be
/// destroyed from within the dispatch of its own `SetProgress`.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CProgressMeter {
public:
    CProgressMeter() noexcept;
    CProgressMeter(const CProgressMeter&) = delete;
    CProgressMeter& operator=(const CProgressMeter&) = delete;
    /// Hides the window.
    ~CProgressMeter();

    /// Shows the window, centred on the parent, with the bar at 0 of `max`; a window that is shown
    /// already is destroyed before. Forgets that the user aborted, for all meters. A `max` below 0
    /// counts as 0. A null title counts as "". False when the window cannot be made.
    bool Show(HWND parent, int max, char* title) noexcept;

    /// Moves the bar and dispatches at most two pending messages of the thread, so that the window
    /// answers. Does nothing when the window is gone.
    void SetProgress(int progress) noexcept;

    /// Destroys the window, if there is one.
    void Hide() noexcept;

    bool IsVisible() const noexcept; ///< the window exists

    /// True when Cancel was pressed in any meter of the process since the last `Show` of one.
    bool UserAborted() const noexcept;

private:
    friend struct vtr::Internals<CProgressMeter>;

    HWND dialog; ///< null or gone: not shown
    HWND parent;
};

#endif
