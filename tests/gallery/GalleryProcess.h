#ifndef VTRUTILS_TESTS_GALLERY_GALLERYPROCESS_H
#define VTRUTILS_TESTS_GALLERY_GALLERYPROCESS_H

#include "utilities/system/Handles.h"

#include <functional>
#include <string>

/// The folder of this program, where the gallery and its documents stand too, with a trailing
/// backslash.
std::string ProgramFolder();

/// The real gallery, driven by the keyboard as a user drives it. What it is asked to wait for fails
/// the test after 30 s, and at once when the program ends; after a failure nothing is waited for.
class GalleryProcess {
public:
    /// The gallery remembers files in a key of its own, which goes with the object, unless
    /// `newRegistryKey` names one below HKEY_CURRENT_USER.
    explicit GalleryProcess(const std::string& arguments, const std::string& newRegistryKey = "");
    GalleryProcess(const GalleryProcess&) = delete;
    GalleryProcess& operator=(const GalleryProcess&) = delete;
    ~GalleryProcess();

    /// Waits for the end of the program. -1 when it does not come.
    int ExitCode();

    /// Waits for the window to have this title.
    void WaitForTitle(const std::wstring& title);

    /// Waits until the keys that are pressed go to the window. When another window has closed, an X
    /// server without a window manager may take the keyboard away at any later moment: `Press`
    /// takes it back.
    void GiveKeyboard();

    /// Goes to the page that has a control with this id, in the list of pages.
    void ShowPage(int control);

    /// Waits for the text of the control with this id, on the page that is shown, to hold `part`.
    void WaitForText(int id, const std::wstring& part);
    void WaitForFocus(int id);

    /// Waits for a question of the program's, presses the button with this id, and waits until the
    /// question is gone.
    void Answer(int button);

    /// What the close button of the title bar does.
    void Close();

    void Press(WORD key, WORD modifier = 0);
    void Type(const std::wstring& text);

    enum class Button { left, right };
    /// Presses the button at one place in the control with this id and lets it go at another.
    void Drag(int id, POINT from, POINT to, Button button);

private:
    void Wait(const char* what, const std::function<bool()>& condition);
    HWND FindWindowOfClass(const wchar_t* className) const;
    HWND Control(int id) const;
    HWND FocusedControl() const;

    bool ownKey;
    std::string registryKey;
    vtr::KernelHandle process;
    DWORD id = 0;
    HWND window = nullptr;
};

#endif
