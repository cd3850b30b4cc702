#ifndef VTRUTILS_GALLERY_APP_MAINWINDOW_H
#define VTRUTILS_GALLERY_APP_MAINWINDOW_H

#include "gallery/app/MainMenu.h"
#include "gallery/app/Page.h"
#include "gallery/app/PageList.h"
#include "gallery/app/RecentFiles.h"
#include "gallery/app/Settings.h"
#include "gallery/widgets/ScrollArea.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace gallery {

/// The window: the list of pages on the left, the chosen page on the right, under a heading that
/// tells its title and its document. A page is made when it is first shown. One thread at a time.
class MainWindow : public Window, private PageHost {
public:
    /// `table` has a page or more; it and `remembered` outlive the window.
    MainWindow(std::span<const PageEntry> table, Settings& remembered);

    /// Where it was when it was closed last. False, with `GetLastError`, when a window cannot be
    /// made.
    bool Create();
    void Show(int showCommand);

    /// Shows the page that was shown last. False when the page cannot be made.
    bool ShowRememberedPage();
    bool ShowPage(int index);
    std::span<const PageEntry> Pages() const { return pages; }
    /// Shows the page for the file's contents, or else the first one, and opens the file there,
    /// unless the user keeps what is on the page.
    bool Open(const std::wstring& path);
    Page& CurrentPage() const { return *made[static_cast<std::size_t>(current)]; }

    /// True when the message was a key of the window, or of Tab and its like, and is done with.
    bool TakeKey(MSG& message) const;

    /// To be called for each message of the thread before it is handled: tells the page what the
    /// user does.
    void WatchInput(const MSG& message);

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    RecentFiles& Recent() override { return recent; }
    Settings& Remembered() override { return settings; }
    void OpenFile(const std::wstring& path) override;
    void OpenFileAs(const std::wstring& path, const std::wstring& extension) override;
    unsigned Inputs() const override { return inputs; }
    void DocumentChanged() override;
    void LanguageChanged() override;

    bool MakeControls();
    void Sized() override { Arrange(); }
    void Command(int id, int notification) override;
    bool CommandOfWindow(int id);
    void CommandOfPage(int id, int notification);
    LRESULT Notify(const NMHDR& header) override;
    const PageEntry& Entry() const { return pages[static_cast<std::size_t>(current)]; }
    bool GoTo(int index);
    int PageCount() const { return static_cast<int>(pages.size()); }
    bool OpenAs(const std::wstring& path, const std::wstring& extension);
    int PageOfFiles(const std::wstring& extension) const;
    void StepPage(int step);
    void UseLanguage(int index);
    void TakeFiles(WPARAM drop);
    void AskForCommand(HWND control, LPARAM place);
    void SetDpi(unsigned dpi);
    void Restyle();
    void Arrange();
    int ArrangeHeading(Placement& placement, int left, int width) const;
    void PlaceWindow();
    void Remember();
    void KeepFocus();
    void MoveFocus(WPARAM wanted, bool isControl) const;
    bool MayClose() const;

    std::span<const PageEntry> pages;
    Settings& settings;
    RecentFiles recent;
    Look look;
    Captions captions;
    Tips tips;
    HACCEL accelerators;
    MainMenu menu;
    HWND pageLabel = nullptr;
    PageList pageList;
    HWND heading = nullptr;
    HWND sentence = nullptr;
    ScrollArea area;
    HWND lastFocus = nullptr;
    HWND revealed = nullptr; ///< what had the focus when that was looked at last
    bool startsMaximized = false;
    std::vector<std::unique_ptr<Page>> made; ///< by index of the table; null until first shown
    int current = -1;
    unsigned inputs = 0;
};

} // namespace gallery

#endif
