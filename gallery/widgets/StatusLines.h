#ifndef VTRUTILS_GALLERY_WIDGETS_STATUSLINES_H
#define VTRUTILS_GALLERY_WIDGETS_STATUSLINES_H

#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Look.h"

#include <string>

namespace gallery {

enum class Tone { note, error };

/// What a page tells, at its lower edge: a message about what was done last, and the state that
/// things are in. Each has as many lines as it needs; an error stands on a coloured ground. One
/// thread at a time.
class StatusLines {
public:
    /// False, with `GetLastError`, when a control cannot be made.
    bool Create(HWND parent, int messageId, int stateId);

    // True when the controls must be arranged anew.
    bool Tell(const std::wstring& text, Tone tone) { return Show(message, text, tone); }
    bool TellState(const std::wstring& text, Tone tone) { return Show(state, text, tone); }

    /// Places the lines at the bottom of the window. Returns their height, which is that of a row
    /// or more.
    int Arrange(const Look& look, int width, int bottom);

    /// Answers the parent's WM_DRAWITEM. False when that is not for one of the lines.
    bool Draw(const Look& look, const DRAWITEMSTRUCT& item) const;

private:
    struct Line {
        HWND control = nullptr;
        Tone tone = Tone::note;
    };
    static bool Show(Line& line, const std::wstring& text, Tone tone);

    Line message;
    Line state;
};

} // namespace gallery

#endif
