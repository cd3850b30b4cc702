#ifndef VTRUTILS_GALLERY_APP_MAINMENU_H
#define VTRUTILS_GALLERY_APP_MAINMENU_H

#include "gallery/app/Page.h"

#include <span>

namespace gallery {

/// The menus of the main window: the standard commands, those of the page on show, the pages, the
/// languages and the help. Each command stands with its keys. One thread at a time.
class MainMenu {
public:
    /// `newPages` outlives the menu.
    MainMenu(std::span<const PageEntry> newPages, HACCEL newAccelerators);

    /// Gives the window its menus in the language that is chosen now.
    void Show(HWND window);

    /// Brings a menu that is about to open up to date.
    void Update(HMENU opening, const Page& page, int pageIndex);

    /// Asks for a command at this point of the screen, which is sent to the window.
    void Ask(HWND window, POINT place, const Page& page);

    /// The keys of a command, "" for none.
    std::wstring Keys(int command) const;

private:
    void AddStandard(HMENU menu, std::span<const std::pair<int, const char*>> items) const;
    void AddCommands(HMENU menu, const Page& page) const;
    void Add(HMENU menu, int command, const std::wstring& text) const;

    std::span<const PageEntry> pages;
    std::vector<ACCEL> accelerators;
    HMENU bar = nullptr; ///< the window's
    HMENU file = nullptr;
    HMENU edit = nullptr;
    HMENU commands = nullptr;
    HMENU go = nullptr;
    HMENU language = nullptr;
};

} // namespace gallery

#endif
