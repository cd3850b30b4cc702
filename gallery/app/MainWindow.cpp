#include "gallery/app/MainWindow.h"

#include "gallery/app/ControlIds.h"
#include "gallery/app/FileFacts.h"
#include "gallery/app/Help.h"
#include "gallery/text/Language.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Drawing.h"
#include "utilities/ui/WindowGeometry.h"

#include <algorithm>
#include <commctrl.h>
#include <shellapi.h>
#include <shlwapi.h>
#include <windowsx.h>

namespace gallery {

namespace {

constexpr SIZE usualSize = {1100, 700};
/// Below this a page is scrolled.
constexpr SIZE leastPage = {660, 390};
constexpr SIZE leastSize = {480, 320};
constexpr int margin = 8;
constexpr char windowSetting[] = "Window";
constexpr char pageSetting[] = "Page";
constexpr char languageSetting[] = "Language";

/// True when the command is for a field that has the focus: of a field in which the user has typed,
/// undoing takes that back, and there is nothing to redo.
bool TakenByField(HWND focus, int id) {
    if (!IsField(focus))
        return false;
    const bool typed = SendMessageW(focus, EM_CANUNDO, 0, 0) != 0;
    switch (id) {
    case ID_UNDO:
        if (typed) {
            SendMessageW(focus, EM_UNDO, 0, 0);
            // It would take back the taking back next: what was done before comes next instead.
            SendMessageW(focus, EM_EMPTYUNDOBUFFER, 0, 0);
        }
        return typed;
    case ID_REDO:
        return typed;
    case ID_CUT:
        SendMessageW(focus, WM_CUT, 0, 0);
        return true;
    case ID_COPY:
        SendMessageW(focus, WM_COPY, 0, 0);
        return true;
    case ID_PASTE:
        SendMessageW(focus, WM_PASTE, 0, 0);
        return true;
    case ID_SELECT_ALL:
        SendMessageW(focus, EM_SETSEL, 0, -1);
        return true;
    default:
        return false;
    }
}

} // namespace

MainWindow::MainWindow(std::span<const PageEntry> table, Settings& remembered)
    : pages(table), settings(remembered),
      accelerators(LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ID_ACCELERATORS))),
      menu(table, accelerators), pageList(table), made(table.size()) {}

bool MainWindow::Create() {
    recent.Load(settings.Key());
    if (!CreateAs(GALLERY_WINDOW_CLASS, Text("Gallery").c_str(), /*extendedStyle=*/0,
                  WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, usualSize, /*parent=*/nullptr) ||
        !MakeControls())
        return false;
    menu.Show(Handle());
    EnableFileDropping(Handle());
    look.SetCharset(Charset());
    look.Update(Handle());
    PlaceWindow();
    return true;
}

bool MainWindow::MakeControls() {
    pageLabel = captions.AddLabel(Handle(), "PagesLabel", ID_PAGE_LABEL);
    if (!pageList.Create(Handle(), ID_PAGE_LIST))
        return false;
    tips.Add(pageList.Handle(), "PagesTip");
    heading = MakeTextLine(Handle(), SS_ENDELLIPSIS, ID_PAGE_HEADING);
    sentence = MakeWrappedText(Handle(), ID_PAGE_SENTENCE);
    return sentence != nullptr && area.Create(Handle(), GALLERY_PAGE_AREA_CLASS);
}

/// Where the window was, as far as there is still a monitor there.
void MainWindow::PlaceWindow() {
    const std::vector<int> place = settings.Numbers(windowSetting);
    RECT now{};
    GetWindowRect(Handle(), &now);
    POINT corner{now.left, now.top};
    SIZE size{look.Pixels(usualSize.cx), look.Pixels(usualSize.cy)};
    if (place.size() == 5 && place[2] > 0 && place[3] > 0) {
        corner = {place[0], place[1]};
        size = {place[2], place[3]};
        startsMaximized = place[4] != 0;
    }
    const RECT work = GetMonitorRectFromPt(corner);
    size = {std::min(size.cx, work.right - work.left), std::min(size.cy, work.bottom - work.top)};
    corner = {std::clamp(corner.x, work.left, work.right - size.cx),
              std::clamp(corner.y, work.top, work.bottom - size.cy)};
    SetWindowPos(Handle(), /*hWndInsertAfter=*/nullptr, corner.x, corner.y, size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void MainWindow::Remember() {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (!GetWindowPlacement(Handle(), &placement))
        return;
    const RECT& place = placement.rcNormalPosition;
    settings.SetNumbers(windowSetting,
                        {place.left, place.top, place.right - place.left, place.bottom - place.top,
                         IsZoomed(Handle()) != FALSE ? 1 : 0});
    settings.SetText(pageSetting, Entry().titleKey);
}

void MainWindow::Show(int showCommand) {
    ShowWindow(Handle(), startsMaximized ? SW_SHOWMAXIMIZED : showCommand);
    CurrentPage().TakeFocus();
    UpdateWindow(Handle());
}

bool MainWindow::ShowRememberedPage() {
    const std::string title = settings.Text(pageSetting);
    const auto page = std::find_if(pages.begin(), pages.end(),
                                   [&](const PageEntry& entry) { return title == entry.titleKey; });
    return ShowPage(page != pages.end() ? static_cast<int>(page - pages.begin()) : 0);
}

bool MainWindow::ShowPage(int index) {
    if (!GoTo(index))
        return false;
    CurrentPage().Shown();
    return true;
}

bool MainWindow::Open(const std::wstring& path) {
    return OpenAs(path, ExtensionOf(ContentsOfFile(path)));
}

void MainWindow::OpenFile(const std::wstring& path) {
    OpenFileAs(path, ExtensionOf(ContentsOfFile(path)));
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
        if (!fresh->Create(area.Handle(), *this))
            return false;
        page = std::move(fresh);
    }
    const int previous = current;
    current = index;
    SetText(sentence, Entry().sentenceKey != nullptr ? Text(Entry().sentenceKey) : L"");
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
    const HWND focus = GetFocus();
    if (focus != revealed)
        area.Reveal(focus);
    revealed = focus;
    tips.Watch(Handle(), message);
    if (current >= 0)
        CurrentPage().WatchMouse(message);
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {look.Pixels(leastSize.cx),
                                                                 look.Pixels(leastSize.cy)};
        return 0;
    case WM_INITMENUPOPUP:
        if (current >= 0 && HIWORD(lParam) == FALSE)
            menu.Update(reinterpret_cast<HMENU>(wParam), CurrentPage(), current);
        return 0;
    case WM_CONTEXTMENU:
        AskForCommand(reinterpret_cast<HWND>(wParam), lParam);
        return 0;
    case WM_DROPFILES:
        TakeFiles(wParam);
        return 0;
    case WM_DRAWITEM:
        DrawWrapped(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam), look, TextOf(sentence),
                    GetSysColor(COLOR_BTNFACE));
        return TRUE;
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
        if (MayClose()) {
            Remember();
            DestroyWindow(Handle());
        }
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
    // There may be no title bar.
    const std::wstring pageTitle = Text(Entry().titleKey);
    SetText(heading, name.empty() ? pageTitle
                                  : Text(page.Unsaved() ? "HeadingUnsaved" : "HeadingDocument",
                                         {pageTitle, name}));
}

void MainWindow::LanguageChanged() {
    settings.SetText(languageSetting, ChosenLanguage());
    captions.Update();
    pageList.UpdateTexts();
    menu.Show(Handle());
    look.SetCharset(Charset());
    look.Update(Handle());
    for (const std::unique_ptr<Page>& page : made) {
        if (page != nullptr)
            page->UpdateTexts();
    }
    SetText(sentence, Entry().sentenceKey != nullptr ? Text(Entry().sentenceKey) : L"");
    Restyle();
    DocumentChanged();
}

void MainWindow::Command(int id, int notification) {
    if (notification == 0)
        ++inputs; // in a menu, whose messages are not seen
    if (current >= 0 && !CommandOfWindow(id) && !TakenByField(GetFocus(), id))
        CommandOfPage(id, notification);
}

/// False for what is not the window's.
bool MainWindow::CommandOfWindow(int id) {
    if (id >= ID_FIRST_PAGE && id < ID_FIRST_PAGE + PageCount()) {
        if (ShowPage(id - ID_FIRST_PAGE))
            CurrentPage().TakeFocus();
        return true;
    }
    if (id >= ID_FIRST_LANGUAGE) {
        UseLanguage(id - ID_FIRST_LANGUAGE);
        return true;
    }
    switch (id) {
    case ID_NEXT_PAGE:
        StepPage(1);
        return true;
    case ID_PREVIOUS_PAGE:
        StepPage(-1);
        return true;
    case ID_EXIT:
        PostMessageW(Handle(), WM_CLOSE, 0, 0);
        return true;
    case ID_HELP_PAGE:
        ShowHelp(Handle(), look, Entry(), CurrentPage(), menu);
        return true;
    case ID_ABOUT:
        ShowAbout(Handle(), look);
        return true;
    case IDOK:
        if (!IsButton(GetFocus()))
            return false;
        SendMessageW(GetFocus(), BM_CLICK, 0, 0);
        return true;
    default:
        return false;
    }
}

void MainWindow::CommandOfPage(int id, int notification) {
    Page& page = CurrentPage();
    page.ForgetMessage();
    // Of a menu; Enter and Esc have no button.
    const bool ofMenu = notification == 0 && id != IDOK && id != IDCANCEL;
    if (ofMenu || id == ID_COPY)
        page.Give(id);
    else
        page.Command(id, notification);
}

LRESULT MainWindow::Notify(const NMHDR& header) {
    LRESULT result = 0;
    int chosen = -1;
    pageList.Notified(header, result, chosen);
    if (chosen >= 0 && chosen != current)
        ShowPage(chosen);
    return result;
}

void MainWindow::UseLanguage(int index) {
    const std::vector<std::string> names = Languages();
    if (static_cast<std::size_t>(index) < names.size() &&
        ChooseLanguage(names[static_cast<std::size_t>(index)]))
        LanguageChanged();
}

/// The first of the files that were dropped on the window.
void MainWindow::TakeFiles(WPARAM drop) {
    const auto files = reinterpret_cast<HDROP>(drop);
    std::wstring path(DragQueryFileW(files, 0, /*lpszFile=*/nullptr, 0) + 1, L'\0');
    path.resize(DragQueryFileW(files, 0, path.data(), static_cast<UINT>(path.size())));
    DragFinish(files);
    SetForegroundWindow(Handle());
    OpenFile(path);
}

/// At the mouse, or at the control for the key of menus.
void MainWindow::AskForCommand(HWND control, LPARAM place) {
    POINT point{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    if (point.x == -1 && point.y == -1) {
        point = {look.Pixels(margin), look.Pixels(margin)};
        ClientToScreen(IsChild(Handle(), control) != FALSE ? control : CurrentPage().Handle(),
                       &point);
    }
    menu.Ask(Handle(), point, CurrentPage());
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
    SendMessageW(heading, WM_SETFONT, reinterpret_cast<WPARAM>(look.HeadingFont()),
                 /*redraw=*/TRUE);
    pageList.SetLook(look);
    if (current >= 0)
        CurrentPage().SetLook(look);
    Arrange();
}

void MainWindow::Arrange() {
    if (current < 0)
        return;
    RECT client{};
    GetClientRect(Handle(), &client);
    const int gap = look.Pixels(margin);
    const int listWidth = pageList.Width(look);
    const int labelHeight = look.Row();
    const int left = listWidth + 2 * gap;
    const int width = client.right - left - gap;
    {
        Placement placement(/*expected=*/5);
        placement.Put(pageLabel, gap, gap, listWidth, labelHeight);
        placement.Put(pageList.Handle(), gap, gap + labelHeight, listWidth,
                      client.bottom - labelHeight - 2 * gap);
        const int top = ArrangeHeading(placement, left, width);
        placement.Put(area.Handle(), left, top, width, client.bottom - top - gap);
    }
    pageList.SetWidth(listWidth);
    area.Place(CurrentPage().Handle(), {look.Pixels(leastPage.cx), look.Pixels(leastPage.cy)});
}

/// Returns where the page begins.
int MainWindow::ArrangeHeading(Placement& placement, int left, int width) const {
    const int gap = look.Pixels(margin);
    const int headingHeight = look.Row() + look.Pixels(6);
    const std::wstring text = TextOf(sentence);
    const int sentenceHeight = text.empty() ? 0 : look.WrappedHeight(text, width - gap);
    placement.Put(heading, left, gap / 2, width, headingHeight);
    placement.Put(sentence, left, gap / 2 + headingHeight, width, sentenceHeight);
    return gap / 2 + headingHeight + sentenceHeight + gap;
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
