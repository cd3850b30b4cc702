#ifndef VTRUTILS_TESTS_GALLERY_GALLERYPROCESS_H
#define VTRUTILS_TESTS_GALLERY_GALLERYPROCESS_H

#include "common/Handles.h"
#include "gallery/app/ControlIds.h"

#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

/// A key to press, alone or with one that is held.
struct Key {
    Key(int newKey, WORD newModifier = 0) : key(static_cast<WORD>(newKey)), modifier(newModifier) {}
    WORD key;
    WORD modifier;
};
inline Key Alt(int key) {
    return {key, VK_MENU};
}
inline Key Ctrl(int key) {
    return {key, VK_CONTROL};
}

/// The real gallery, driven by the keyboard as a user drives it. What it is asked to wait for fails
/// the test after 30 s, and at once when the program ends; after a failure nothing is waited for.
class GalleryProcess {
public:
    /// The gallery remembers files in a key of its own, which is removed with the object, unless
    /// `newRegistryKey` names one below HKEY_CURRENT_USER. `arguments` is UTF-8. What it prints
    /// goes to `output`, if given.
    explicit GalleryProcess(const std::string& arguments, const std::string& newRegistryKey = "",
                            HANDLE output = nullptr);
    /// Without arguments, on the page that has a control with this id.
    explicit GalleryProcess(int control);
    GalleryProcess(const GalleryProcess&) = delete;
    GalleryProcess& operator=(const GalleryProcess&) = delete;
    /// Closes the window, unless the program has ended, and expects it to end well.
    ~GalleryProcess();

    /// Waits for the end of the program. -1 when it does not come.
    int ExitCode();

    /// Waits for the title that the window has with this document, or with none for "".
    void WaitForDocument(const std::wstring& name, const std::wstring& title = L"vtrutils gallery");

    /// Null before `WaitForDocument`.
    HWND Window() const { return window; }
    /// On the page that is shown, or of the window; null for none.
    HWND Control(int id) const;
    std::wstring Text(int id) const;

    /// Chooses the n-th language, counted from 1, in its menu.
    void ChooseLanguage(int number);

    /// Goes to the page that has a control with this id, in the list of pages. Requires: another
    /// page than the last of the list.
    void ShowPage(int control);

    void Wait(const char* what, const std::function<bool()>& condition);
    /// Waits for the text of the control with this id, on the page that is shown, to hold `part`.
    void WaitForText(int id, const std::wstring& part);
    void WaitForFocus(int id);
    /// Waits until the control shows this colour in the middle of its left half, at any height.
    void WaitForColour(int id, COLORREF colour);

    /// Waits for a question of the program's, presses the button with this id, and waits until the
    /// question is gone. Returns the text of its control with the id `text`, if that is not 0.
    std::wstring Answer(int button, int text = 0);

    /// Waits for a question that holds `part`. Returns the id of the button that Enter presses.
    int Question(const std::wstring& part);
    /// Types a text into a question for one, in place of what is proposed.
    void AnswerText(const std::wstring& text);
    /// Gives a path to the question for a file, and IDYES to the one whether that may be replaced.
    void AnswerFile(const std::string& path, bool replaces = false);

    /// What the close button of the title bar does.
    void Close();

    /// Waits until the keys that are pressed go to the window. When another window has closed, an X
    /// server without a window manager may take the keyboard away at any later moment.
    void Press(Key key);
    /// The same, and waits for the text of a control, or for the focus.
    void Press(Key key, int id, const std::wstring& part);
    void PressForFocus(Key key, int id);
    /// Presses `first`, then `next` again and again, and waits for the control to show each of the
    /// texts in turn.
    void Walk(Key first, Key next, int id, std::initializer_list<const wchar_t*> texts);
    void Type(const std::wstring& text);
    /// Goes to the field with that key, and types in place of what it holds.
    void Fill(Key key, int id, const std::wstring& text);

    /// Presses the left or right button at one place in the control with this id and lets it go at
    /// another.
    void Drag(int id, POINT from, POINT to, bool left);
    /// Clicks the title of a column of the list with this id, or else the cell in the first row.
    void Click(int id, int column, bool title);

private:
    void GiveKeyboard();

    HWND FindWindowOfClass(const wchar_t* className) const;
    HWND Page() const;
    HWND FocusedControl() const;

    bool ownKey;
    std::string registryKey;
    vtr::KernelHandle process;
    DWORD id = 0;
    HWND window = nullptr;
};

#endif
