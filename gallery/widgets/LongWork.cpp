#include "gallery/widgets/LongWork.h"

#include "gallery/text/Text.h"

#include <algorithm>

namespace gallery {

namespace {

constexpr ULONGLONG patience = 500;
/// The window counts in parts of a thousand: rows may be too many for it.
constexpr int parts = 1000;

/// "" for a text that the code page cannot show.
std::string NarrowOrNothing(const std::wstring& wide) {
    std::string narrow;
    Narrow(wide, narrow);
    return narrow;
}

} // namespace

LongWork::LongWork(HWND newOwner, const std::wstring& newTitle, const std::wstring& newText)
    : owner(GetAncestor(newOwner, GA_ROOT)), title(NarrowOrNothing(newTitle)),
      text(NarrowOrNothing(newText)), start(GetTickCount64()) {}

LongWork::~LongWork() {
    if (shown)
        EnableWindow(owner, TRUE);
    window.End();
}

bool LongWork::Step(int done, int all) {
    if (!shown && GetTickCount64() - start >= patience) {
        shown = true;
        EnableWindow(owner, FALSE);
        window.SetTitle(title.data());
        window.SetMaxProgress(parts);
        window.Go(GetModuleHandleW(nullptr), owner);
        window.SetProgressText(text.data());
    }
    if (!shown)
        return true;
    window.SetProgress(MulDiv(parts, std::min(done, all), std::max(all, 1)));
    // Without the window, as without memory for it, there is nothing to cancel by.
    cancelled = cancelled || window.UserPushedCancel();
    return !cancelled;
}

} // namespace gallery
