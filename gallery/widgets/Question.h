#ifndef VTRUTILS_GALLERY_WIDGETS_QUESTION_H
#define VTRUTILS_GALLERY_WIDGETS_QUESTION_H

#include <initializer_list>
#include <string>
#include <windows.h>

namespace gallery {

/// A button of a question: what the question returns, and the key of the button's text.
struct Answer {
    int id;
    const char* key;
};

/// Asks in the language that is chosen, over the window that `owner` is in. The answer `usual` has
/// the focus; Esc and the close button give `whenClosed`.
int Ask(HWND owner, const std::wstring& question, std::initializer_list<Answer> answers, int usual,
        int whenClosed = IDCANCEL);

/// Asks for one line, `text` being what is proposed. False, with `text` unchanged, when the user
/// takes the question back.
bool AskForText(HWND owner, const std::wstring& question, std::wstring& text);

/// Gives the keyboard back to what had it when a question ends: not every window system does.
class KeptFocus {
public:
    explicit KeptFocus(HWND newOwner);
    KeptFocus(const KeptFocus&) = delete;
    KeptFocus& operator=(const KeptFocus&) = delete;
    ~KeptFocus();
    /// The window that questions are asked over.
    HWND Owner() const { return owner; }

private:
    HWND owner;
    HWND focus;
};

} // namespace gallery

#endif
