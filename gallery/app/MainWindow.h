#ifndef VTRUTILS_GALLERY_APP_MAINWINDOW_H
#define VTRUTILS_GALLERY_APP_MAINWINDOW_H

#include "gallery/app/Page.h"
#include "gallery/app/RecentFiles.h"
#include "gallery/widgets/ListView.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace gallery {

/// The window: the list of pages on the left, the chosen page on the right. A page is made when it
/// is first shown. One thread at a time.
class MainWindow : public Window, private PageHost {
public:
    /// `table` has a page or more and outlives the window.
    explicit MainWindow(std::span<const PageEntry> table) : pages(table), made(table.size()) {}

    /// Remembers files in this key below HKEY_CURRENT_USER. False, with `GetLastError`, when a
    /// window cannot be made.
    bool Create(const std::string& registryKey);
    void Show(int showCommand);

    /// False when the page cannot be made.
    bool ShowPage(int index);
    std::span<const PageEntry> Pages() const { return pages; }
    /// Shows the page for files with this extension, or else the first one, and opens the file
    /// there, unless the user keeps what is on the page.
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
    void OpenFile(const std::wstring& path) override;
    void OpenFileAs(const std::wstring& path, const std::wstring& extension) override;
    unsigned Inputs() const override { return inputs; }
    void DocumentChanged() override;
    void LanguageChanged() override;

    void Sized() override { Arrange(); }
    void Command(int id, int notification) override;
    LRESULT Notify(const NMHDR& header) override;
    bool GoTo(int index);
    int PageCount() const { return static_cast<int>(pages.size()); }
    bool OpenAs(const std::wstring& path, const std::wstring& extension);
    int PageOfFiles(const std::wstring& extension) const;
    void StepPage(int step);
    void SetDpi(unsigned dpi);
    void Restyle();
    void Arrange();
    void LimitSize(MINMAXINFO& limits) const;
    void KeepFocus();
    void MoveFocus(WPARAM wanted, bool isControl) const;
    bool MayClose() const;

    std::span<const PageEntry> pages;
    RecentFiles recent;
    Look look;
    Captions captions;
    HWND pageLabel = nullptr;
    ListView pageList;
    HWND lastFocus = nullptr;
    HACCEL accelerators = nullptr;
    std::vector<std::unique_ptr<Page>> made; ///< by index of the table; null until first shown
    int current = -1;
    unsigned inputs = 0;
};

} // namespace gallery

#endif
