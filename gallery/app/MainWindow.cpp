#include "gallery/app/MainWindow.h"

#include "gallery/app/ControlIds.h"
#include "gallery/text/Language.h"
#include "gallery/widgets/Controls.h"

#include <algorithm>
#include <commctrl.h>
#include <shlwapi.h>

namespace gallery {

namespace {

constexpr SIZE usualSize = {1100, 700};
constexpr SIZE leastSize = {880, 480};
constexpr int pageListWidth = 150;
constexpr int margin = 8;

/// True when the command is for a field in which the user has typed: it takes that back, and has
/// nothing to redo.
bool TakenByField(HWND focus, int id) {
    if ((id != ID_UNDO && id != ID_REDO) || SendMessageW(focus, EM_CANUNDO, 0, 0) == 0)
        return false;
    if (id == ID_UNDO)
        SendMessageW(focus, EM_UNDO, 0, 0);
    return true;
}

/// Without the dot; "" for none.
std::wstring ExtensionOf(const std::wstring& path) {
    const wchar_t* extension = PathFindExtensionW(path.c_str());
    return *extension == L'.' ? extension + 1 : L"";
}

} // namespace

bool MainWindow::Create(const std::string& registryKey) {
    recent.Load(registryKey);
    accelerators = LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ID_ACCELERATORS));
    if (!CreateAs(GALLERY_WINDOW_CLASS, Text("Gallery").c_str(), /*extendedStyle=*/0,
                  WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, usualSize, /*parent=*/nullptr))
        return false;
    pageLabel = captions.AddLabel(Handle(), "PagesLabel", ID_PAGE_LABEL);
    const auto title = [this](int row, int) {
        return Text(pages[static_cast<std::size_t>(row)].titleKey);
    };
    if (!pageList.Create(Handle(), "Pages", ID_PAGE_LIST, ListView::Titles::hidden, title))
        return false;
    pageList.AddColumn("Pages");
    pageList.SetRows(PageCount());
    look.SetCharset(Charset());
    look.Update(Handle());
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, /*fWinIni=*/0);
    SetWindowPos(Handle(), /*hWndInsertAfter=*/nullptr, 0, 0,
                 std::min<int>(look.Pixels(usualSize.cx), work.right - work.left),
                 std::min<int>(look.Pixels(usualSize.cy), work.bottom - work.top),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return GoTo(0);
}

void MainWindow::Show(int showCommand) {
    ShowWindow(Handle(), showCommand);
    CurrentPage().TakeFocus();
    UpdateWindow(Handle());
}

bool MainWindow::ShowPage(int index) {
    if (!GoTo(index))
        return false;
    CurrentPage().Shown();
    return true;
}

bool MainWindow::Open(const std::wstring& path) {
    return OpenAs(path, ExtensionOf(path));
}

void MainWindow::OpenFile(const std::wstring& path) {
    OpenFileAs(path, ExtensionOf(path));
}

bool MainWindow::OpenAs(const std::wstring& path, const std::wstring& extension) {
    return GoTo(PageOfFiles(extension)) && CurrentPage().MayClose() && CurrentPage().Open(path);
}

void MainWindow::OpenFileAs(const std::wstring& path, const std::wstring& extension) {
    OpenAs(path, extension);
    CurrentPage().TakeFocus();
}

int MainWindow::PageOfFiles(const std::wstring& extension) const {
    const auto page = std::find_if(pages.begin(), pages.end(), [&](const PageEntry& entry) {
        return entry.extension != nullptr && lstrcmpiW(extension.c_str(), entry.extension) == 0;
    });
    return page != pages.end() ? static_cast<int>(page - pages.begin()) : 0;
}

bool MainWindow::GoTo(int index) {
    const auto place = static_cast<std::size_t>(index);
    std::unique_ptr<Page>& page = made[place];
    if (page == nullptr) {
        std::unique_ptr<Page> fresh = pages[place].make();
        if (!fresh->Create(Handle(), *this))
            return false;
        page = std::move(fresh);
    }
    const int previous = current;
    current = index;
    Restyle();
    ShowWindow(page->Handle(), SW_SHOW);
    if (previous >= 0 && previous != index) {
        Page& left = *made[static_cast<std::size_t>(previous)];
        left.ForgetMessage();
        ShowWindow(left.Handle(), SW_HIDE);
    }
    pageList.Select(index);
    DocumentChanged();
    return true;
}

bool MainWindow::TakeKey(MSG& message) const {
    return TranslateAcceleratorW(Handle(), accelerators, &message) != 0 ||
           IsDialogMessageW(Handle(), &message) != FALSE;
}

void MainWindow::WatchInput(const MSG& message) {
    const bool press = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN ||
                       message.message == WM_LBUTTONDOWN || message.message == WM_RBUTTONDOWN;
    inputs += press ? 1 : 0;
    if (current >= 0)
        CurrentPage().WatchMouse(message);
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_GETMINMAXINFO:
        LimitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
        return 0;
    case WM_DPICHANGED: {
        const auto& place = *reinterpret_cast<const RECT*>(lParam);
        SetDpi(HIWORD(wParam));
        SetWindowPos(Handle(), /*hWndInsertAfter=*/nullptr, place.left, place.top,
                     place.right - place.left, place.bottom - place.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    }
    case WM_SETTINGCHANGE:
        look.Update(Handle());
        Restyle();
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            KeepFocus();
        break;
    case WM_SETFOCUS:
        if (lastFocus != nullptr)
            SetFocus(lastFocus);
        return 0;
    case WM_NEXTDLGCTL:
        MoveFocus(wParam, LOWORD(lParam) != 0);
        return 0;
    case WM_QUERYENDSESSION:
        return MayClose();
    case WM_CLOSE:
        if (MayClose())
            DestroyWindow(Handle());
        return 0;
    case WM_DESTROY:
        PostQuitMessage(/*nExitCode=*/0);
        return 0;
    default:
        break;
    }
    return Window::OnMessage(message, wParam, lParam);
}

void MainWindow::DocumentChanged() {
    if (current < 0)
        return;
    const Page& page = CurrentPage();
    const std::wstring name = page.DocumentName();
    std::wstring title = page.Unsaved() ? L"*" : L"";
    if (!name.empty())
        title += name + L" - ";
    SetText(Handle(), title + Text("Gallery"));
}

void MainWindow::LanguageChanged() {
    captions.Update();
    pageList.UpdateTexts();
    look.SetCharset(Charset());
    look.Update(Handle());
    for (const std::unique_ptr<Page>& page : made) {
        if (page != nullptr)
            page->UpdateTexts();
    }
    Restyle();
    DocumentChanged();
}

void MainWindow::Command(int id, int notification) {
    const HWND focus = GetFocus();
    if (id == ID_NEXT_PAGE) {
        StepPage(1);
    } else if (id == ID_PREVIOUS_PAGE) {
        StepPage(-1);
    } else if (id == IDOK && IsButton(focus)) {
        SendMessageW(focus, BM_CLICK, 0, 0);
    } else if (current >= 0 && !TakenByField(focus, id)) {
        CurrentPage().ForgetMessage();
        CurrentPage().Command(id, notification);
    }
}

LRESULT MainWindow::Notify(const NMHDR& header) {
    LRESULT result = 0;
    if (!pageList.Notified(header, result) && ListView::SelectionMoved(header) &&
        pageList.Selected() != current)
        ShowPage(pageList.Selected());
    return result;
}

void MainWindow::StepPage(int step) {
    if (PageCount() > 1 && ShowPage((current + PageCount() + step) % PageCount()))
        CurrentPage().TakeFocus();
}

void MainWindow::SetDpi(unsigned dpi) {
    look.Update(dpi);
    Restyle();
}

void MainWindow::Restyle() {
    SetFontOfChildren(Handle(), look.Font());
    pageList.SetLook(look);
    Arrange();
    if (current >= 0)
        CurrentPage().SetLook(look);
}

void MainWindow::Arrange() {
    if (current < 0)
        return;
    RECT area{};
    GetClientRect(Handle(), &area);
    const int gap = look.Pixels(margin);
    const int left = look.Pixels(pageListWidth);
    const int labelHeight = look.Row();
    Placement placement(/*expected=*/3);
    placement.Put(pageLabel, gap, gap, left, labelHeight);
    placement.Put(pageList.Handle(), gap, gap + labelHeight, left,
                  area.bottom - labelHeight - 2 * gap);
    // The least height has room for all pages, without a scroll bar.
    pageList.SetColumnWidth(0, left - 2 * GetSystemMetrics(SM_CXEDGE));
    placement.Put(CurrentPage().Handle(), left + 2 * gap, gap, area.right - left - 3 * gap,
                  area.bottom - 2 * gap);
}

void MainWindow::LimitSize(MINMAXINFO& limits) const {
    limits.ptMinTrackSize = {look.Pixels(leastSize.cx), look.Pixels(leastSize.cy)};
}

void MainWindow::KeepFocus() {
    const HWND focus = GetFocus();
    if (focus != nullptr && IsChild(Handle(), focus))
        lastFocus = focus;
}

/// What dialogs do for WM_NEXTDLGCTL, which the key of a label ends in on some systems.
void MainWindow::MoveFocus(WPARAM wanted, bool isControl) const {
    const HWND control = isControl
                             ? reinterpret_cast<HWND>(wanted)
                             : GetNextDlgTabItem(Handle(), GetFocus(), /*bPrevious=*/wanted != 0);
    if (control == nullptr)
        return;
    SetFocus(control);
    if ((SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0)
        SendMessageW(control, EM_SETSEL, 0, -1);
}

bool MainWindow::MayClose() const {
    return std::all_of(made.begin(), made.end(), [](const std::unique_ptr<Page>& page) {
        return page == nullptr || page->MayClose();
    });
}

} // namespace gallery
