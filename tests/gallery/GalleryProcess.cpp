#include "tests/gallery/GalleryProcess.h"

#include "gallery/text/Text.h"

#include <commctrl.h>
#include <iterator>

namespace {

constexpr DWORD longestWait = 30000;
constexpr wchar_t questionClass[] = L"#32770";

std::wstring TextOf(HWND window) {
    wchar_t text[4096] = L"";
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text),
                        SMTO_ABORTIFHUNG, /*uTimeout=*/2000, &length);
    return text;
}

/// For messages about failures.
std::string Describe(HWND window) {
    char className[64] = "none";
    char title[128] = "";
    GetClassNameA(window, className, sizeof className);
    GetWindowTextA(window, title, sizeof title);
    return std::string(className) + " \"" + title + "\"";
}

INPUT KeyInput(WORD key, WORD scan, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = scan;
    input.ki.dwFlags = flags;
    return input;
}

void Send(INPUT input) {
    ASSERT_EQ(1u, SendInput(1, &input, sizeof input));
}

} // namespace

GalleryProcess::GalleryProcess(const std::string& arguments, const std::string& newRegistryKey,
                               HANDLE output)
    : ownKey(newRegistryKey.empty()), registryKey(newRegistryKey) {
    if (ownKey)
        registryKey = "Software\\vtrutils gallery test " + std::to_string(GetCurrentProcessId());
    std::wstring commandLine =
        gallery::Widen(("\"" + gallery::ProgramFolder() + "gallery.exe\" --registry \"" +
                        registryKey + "\" " + arguments)
                           .c_str(),
                       CP_UTF8);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = output != nullptr ? STARTF_USESTDHANDLES : 0;
    start.hStdOutput = start.hStdError = output;
    PROCESS_INFORMATION started{};
    EXPECT_TRUE(CreateProcessW(/*lpApplicationName=*/nullptr, commandLine.data(),
                               /*lpProcessAttributes=*/nullptr, /*lpThreadAttributes=*/nullptr,
                               /*bInheritHandles=*/TRUE, /*dwCreationFlags=*/0,
                               /*lpEnvironment=*/nullptr, /*lpCurrentDirectory=*/nullptr, &start,
                               &started))
        << "error " << GetLastError();
    process.Reset(started.hProcess);
    id = started.dwProcessId;
    const vtr::KernelHandle thread(started.hThread);
}

GalleryProcess::GalleryProcess(int control) : GalleryProcess("") {
    WaitForDocument(L"media-settings.ini");
    ShowPage(control);
}

GalleryProcess::~GalleryProcess() {
    if (WaitForSingleObject(process.Get(), 0) == WAIT_TIMEOUT) {
        Close();
        EXPECT_EQ(0, ExitCode());
        TerminateProcess(process.Get(), /*uExitCode=*/99);
        WaitForSingleObject(process.Get(), longestWait);
    }
    if (ownKey)
        RegDeleteKeyA(HKEY_CURRENT_USER, registryKey.c_str());
}

int GalleryProcess::ExitCode() {
    DWORD code = 0;
    const DWORD wait = testing::Test::HasFatalFailure() ? 0 : longestWait;
    if (WaitForSingleObject(process.Get(), wait) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(process.Get(), &code))
        return -1;
    return static_cast<int>(code);
}

void GalleryProcess::WaitForDocument(const std::wstring& name, const std::wstring& gallery) {
    const std::wstring title = (name.empty() ? L"" : name + L" - ") + gallery;
    Wait("the title", [&] {
        window = FindWindowOfClass(GALLERY_WINDOW_CLASS);
        return window != nullptr && IsWindowVisible(window) && TextOf(window) == title;
    });
}

void GalleryProcess::ShowPage(int control) {
    // While a window comes to the front, late news of the keyboard can lift a key that is held: a
    // user would press again.
    constexpr ULONGLONG patience = 1000;
    ULONGLONG again = 0;
    Wait("the list of pages", [&] {
        if (FocusedControl() == GetDlgItem(window, ID_PAGE_LIST))
            return true;
        if (GetTickCount64() >= again) {
            Press(Alt('P'));
            again = GetTickCount64() + patience;
        }
        return false;
    });
    // From the end: pages at the front open files when they are shown.
    int key = VK_END;
    while (!testing::Test::HasFatalFailure() && Control(control) == nullptr) {
        const HWND before = Page();
        Press(key);
        Wait("another page", [&] { return Page() != before; });
        key = VK_UP;
    }
}

void GalleryProcess::WaitForText(int control, const std::wstring& part) {
    Wait(("\"" + std::string(part.begin(), part.end()) + "\"").c_str(),
         [&] { return TextOf(Control(control)).find(part) != std::wstring::npos; });
}

void GalleryProcess::WaitForFocus(int control) {
    Wait("the focus",
         [&] { return Control(control) != nullptr && FocusedControl() == Control(control); });
}

void GalleryProcess::WaitForColour(int control, COLORREF colour) {
    Wait("the colour", [&] {
        const HWND shown = Control(control);
        RECT area{};
        GetWindowRect(shown, &area);
        // Another program's window has no pixels of its own: the screen has.
        const HDC dc = GetDC(nullptr);
        bool found = false;
        for (int y = area.top; y < area.bottom && !found; y += 2) {
            for (int x = area.left; x < (area.left + area.right) / 2 && !found; x += 16)
                found = GetPixel(dc, x, y) == colour;
        }
        ReleaseDC(nullptr, dc);
        return found;
    });
}

std::wstring GalleryProcess::Answer(int button, int text) {
    HWND question = nullptr;
    Wait("a question", [&] {
        question = FindWindowOfClass(questionClass);
        return question != nullptr && IsWindowVisible(question);
    });
    const std::wstring shown = TextOf(GetDlgItem(question, text));
    PostMessageW(question, WM_COMMAND, static_cast<WPARAM>(button), 0);
    Wait("the end of a question", [&] { return !IsWindow(question); });
    return shown;
}

int GalleryProcess::Question(const std::wstring& part) {
    HWND question = nullptr;
    Wait(("the question \"" + std::string(part.begin(), part.end()) + "\"").c_str(), [&] {
        question = FindWindowOfClass(questionClass);
        return question != nullptr && IsWindowVisible(question) &&
               TextOf(GetDlgItem(question, 1)).find(part) != std::wstring::npos;
    });
    return LOWORD(SendMessageW(question, DM_GETDEFID, 0, 0));
}

void GalleryProcess::AnswerText(const std::wstring& text) {
    Question(L"");
    SendMessageW(GetDlgItem(FindWindowOfClass(questionClass), 3), WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>(text.c_str()));
    Answer(IDOK);
}

void GalleryProcess::AnswerFile(const std::string& path, bool replaces) {
    HWND question = nullptr;
    HWND field = nullptr;
    Wait("the question for a file", [&] {
        question = FindWindowOfClass(questionClass);
        field = FocusedControl();
        wchar_t name[8] = L"";
        GetClassNameW(field, name, static_cast<int>(std::size(name)));
        return question != nullptr && IsChild(question, field) && lstrcmpiW(name, WC_EDITW) == 0;
    });
    SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    PostMessageW(question, WM_COMMAND, IDOK, 0);
    if (replaces) {
        Wait("the question whether to replace", [&] {
            const HWND front = FindWindowOfClass(questionClass);
            return front != nullptr && front != question && IsWindowVisible(front);
        });
        Answer(IDYES);
    }
    Wait("the end of the question for a file", [&] { return !IsWindow(question); });
}

void GalleryProcess::Close() {
    PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

void GalleryProcess::Press(Key key) {
    GiveKeyboard();
    if (key.modifier != 0)
        Send(KeyInput(key.modifier, /*scan=*/0, /*flags=*/0));
    Send(KeyInput(key.key, /*scan=*/0, /*flags=*/0));
    Send(KeyInput(key.key, /*scan=*/0, KEYEVENTF_KEYUP));
    if (key.modifier != 0)
        Send(KeyInput(key.modifier, /*scan=*/0, KEYEVENTF_KEYUP));
}

void GalleryProcess::Press(Key key, int control, const std::wstring& part) {
    Press(key);
    WaitForText(control, part);
}

void GalleryProcess::PressForFocus(Key key, int control) {
    Press(key);
    WaitForFocus(control);
}

void GalleryProcess::Walk(Key first, Key next, int control,
                          std::initializer_list<const wchar_t*> texts) {
    Key key = first;
    for (const wchar_t* text : texts) {
        Press(key, control, text);
        key = next;
    }
}

void GalleryProcess::Fill(Key key, int control, const std::wstring& text) {
    PressForFocus(key, control);
    Type(text);
}

void GalleryProcess::Type(const std::wstring& text) {
    for (const wchar_t character : text) {
        Send(KeyInput(/*key=*/0, character, KEYEVENTF_UNICODE));
        Send(KeyInput(/*key=*/0, character, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP));
    }
}

void GalleryProcess::Drag(int control, POINT from, POINT to, bool left) {
    const auto sendAt = [&](POINT place, DWORD flags) {
        ClientToScreen(Control(control), &place);
        INPUT input{};
        input.type = INPUT_MOUSE;
        // Place and button in one event: the X server reports a move of its own late.
        input.mi.dx = (place.x * 65536 + 32768) / GetSystemMetrics(SM_CXSCREEN);
        input.mi.dy = (place.y * 65536 + 32768) / GetSystemMetrics(SM_CYSCREEN);
        input.mi.dwFlags = flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
        Send(input);
    };
    sendAt(from, left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN);
    sendAt(to, left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP);
}

void GalleryProcess::Click(int control, int column, bool title) {
    const HWND list = Control(control);
    RECT titles{};
    GetClientRect(FindWindowExW(list, nullptr, WC_HEADERW, nullptr), &titles);
    const auto width = [list](int index) {
        return static_cast<LONG>(
            SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(index), 0));
    };
    POINT place{width(column) / 2, title ? titles.bottom / 2 : titles.bottom + 8};
    for (int i = 0; i < column; ++i)
        place.x += width(i);
    Drag(control, place, place, /*left=*/true);
}

void GalleryProcess::Wait(const char* what, const std::function<bool()>& condition) {
    const ULONGLONG end = GetTickCount64() + longestWait;
    bool ended = false;
    while (!testing::Test::HasFatalFailure() && !condition()) {
        ASSERT_FALSE(ended) << "the gallery ended before there was " << what;
        ASSERT_LT(GetTickCount64(), end)
            << "waited in vain for " << what << "; in front: " << Describe(GetForegroundWindow())
            << ", with the focus: " << Describe(FocusedControl());
        ended = WaitForSingleObject(process.Get(), /*dwMilliseconds=*/10) == WAIT_OBJECT_0;
    }
}

void GalleryProcess::GiveKeyboard() {
    // A window in front that has not yet learnt of it loses what is typed.
    Wait("the keyboard", [&] {
        if (GetForegroundWindow() == window && FocusedControl() != nullptr)
            return true;
        SetForegroundWindow(window);
        return false;
    });
}

HWND GalleryProcess::FindWindowOfClass(const wchar_t* className) const {
    HWND found = nullptr;
    while ((found = FindWindowExW(/*hWndParent=*/nullptr, found, className, nullptr)) != nullptr) {
        DWORD owner = 0;
        GetWindowThreadProcessId(found, &owner);
        if (owner == id)
            return found;
    }
    return nullptr;
}

HWND GalleryProcess::Page() const {
    const HWND area = FindWindowExW(window, nullptr, GALLERY_PAGE_AREA_CLASS, nullptr);
    HWND page = nullptr;
    do {
        page = FindWindowExW(area, page, GALLERY_PAGE_CLASS, nullptr);
    } while (page != nullptr && !IsWindowVisible(page));
    return page;
}

HWND GalleryProcess::Control(int control) const {
    const HWND found = GetDlgItem(Page(), control);
    return found != nullptr ? found : GetDlgItem(window, control);
}

std::wstring GalleryProcess::Text(int control) const {
    return TextOf(Control(control));
}

void GalleryProcess::ChooseLanguage(int number) {
    Press(VK_F10);
    for (int i = 0; i < 4; ++i)
        Press(VK_RIGHT);
    for (int i = 0; i < number; ++i)
        Press(VK_DOWN);
    Press(VK_RETURN);
}

HWND GalleryProcess::FocusedControl() const {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &state);
    return state.hwndFocus;
}
