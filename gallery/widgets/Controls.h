#ifndef VTRUTILS_GALLERY_WIDGETS_CONTROLS_H
#define VTRUTILS_GALLERY_WIDGETS_CONTROLS_H

#include <initializer_list>
#include <string>
#include <vector>
#include <windows.h>

namespace gallery {

/// A visible child that the user can reach with Tab when `style` says so. Null, with
/// `GetLastError`, when it cannot be made.
HWND MakeControl(HWND parent, const wchar_t* className, const wchar_t* text, DWORD style, int id);
HWND MakeButton(HWND parent, const wchar_t* text, int id);
HWND MakeEdit(HWND parent, int id);
/// Lines to read and copy, with a scroll bar.
HWND MakeReader(HWND parent, int id);
/// Lines to write, with scroll bars. Enter begins a line; Tab and Esc are the window's.
HWND MakeEditor(HWND parent, int id);
HWND MakeCheckBox(HWND parent, int id);
/// A list to drop down and choose from.
HWND MakeChoice(HWND parent, int id);
HWND MakeLabel(HWND parent, const wchar_t* text, int id);
/// Shows any text as it is, cut with an ellipsis where it is too long.
HWND MakeTextLine(HWND parent, DWORD style, int id);

/// For any text, in as many lines as fit; the parent's WM_DRAWITEM draws it (`DrawWrapped`).
HWND MakeWrappedText(HWND parent, int id);

std::wstring TextOf(HWND control);
/// Does nothing if the control shows that text already, so that nothing flickers.
void SetText(HWND control, const std::wstring& text);

/// What an empty edit field shows in grey.
void SetHint(HWND edit, const std::wstring& hint);

/// Gives the focus and selects all of an edit field's text.
void FocusAndSelect(HWND edit);

/// False for null, too.
bool IsField(HWND control);
bool IsButton(HWND control);
bool IsCheckBox(HWND button);
bool IsChecked(HWND checkBox);

struct Enabling {
    HWND control;
    bool enabled;
};
/// Enables and disables. When that takes the focus from a control, `next` gets it.
void EnableControls(HWND next, std::initializer_list<Enabling> changes);

/// The texts of a choice, the one with index `chosen` chosen without a notification.
void SetChoices(HWND choice, const std::vector<std::wstring>& texts, int chosen);
/// -1 for none.
int Chosen(HWND choice);

void CopyToClipboard(HWND window, const std::wstring& text);

void SetFontOfChildren(HWND parent, HFONT font);

/// Moves several children of one window at once. One thread at a time.
class Placement {
public:
    explicit Placement(int expected) : positions(BeginDeferWindowPos(expected)) {}
    Placement(const Placement&) = delete;
    Placement& operator=(const Placement&) = delete;
    ~Placement();

    /// Sizes below 0 count as 0.
    void Put(HWND child, int x, int y, int width, int height);

private:
    HDWP positions;
};

} // namespace gallery

#endif
