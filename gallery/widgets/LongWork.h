#ifndef VTRUTILS_GALLERY_WIDGETS_LONGWORK_H
#define VTRUTILS_GALLERY_WIDGETS_LONGWORK_H

#include "utilities/ui/LongOperationDlg.h"

#include <string>

namespace gallery {

/// Work on the thread of a window. From half a second on, the library's progress window is shown,
/// and the user can cancel the work but do nothing else. One thread at a time.
class LongWork {
public:
    LongWork(HWND newOwner, const std::wstring& newTitle, const std::wstring& newText);
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;
    ~LongWork();

    /// To be called often. False once the user has cancelled.
    bool Step(int done, int all);
    bool Cancelled() const { return cancelled; }

private:
    HWND owner;
    std::string title;
    std::string text;
    ULONGLONG start;
    bool shown = false;
    bool cancelled = false;
    CLongOperationDlg window;
};

} // namespace gallery

#endif
