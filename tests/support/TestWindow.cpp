#include "tests/support/TestWindow.h"

#include <stdexcept>
#include <utility>

namespace {

constexpr wchar_t className[] = L"VtrTestWindow";

/// The dialog that WhileOpen waits for, and the one before.
std::function<void(HWND)> waitingDriver;
HWND lastDialog = nullptr;

BOOL CALLBACK FindDialog(HWND window, LPARAM found) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    if (std::wstring_view(name) != L"#32770" || IsWindowVisible(window) == FALSE ||
        window == lastDialog)
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

void CALLBACK LookForDialog(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindDialog, reinterpret_cast<LPARAM>(&dialog));
    if (dialog == nullptr)
        return;
    KillTimer(nullptr, timer);
    lastDialog = dialog;
    std::exchange(waitingDriver, nullptr)(dialog);
}

} // namespace

TestWindow::TestWindow(const RECT& place) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = &Procedure;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = className;
    RegisterClassW(&kind);
    window = CreateWindowExW(WS_EX_TOPMOST, className, L"test", WS_POPUP | WS_VISIBLE, place.left,
                             place.top, place.right - place.left, place.bottom - place.top, nullptr,
                             nullptr, kind.hInstance, this);
    if (window == nullptr)
        throw std::runtime_error("no window");
}

TestWindow::~TestWindow() {
    onMessage = nullptr;
    DestroyWindow(window);
}

HWND TestWindow::Add(const wchar_t* kind, const wchar_t* text, DWORD style,
                     const RECT& place) const {
    return CreateWindowExW(0, kind, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, window, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

LRESULT CALLBACK TestWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<CREATESTRUCTW*>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* self = reinterpret_cast<TestWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr && self->onMessage != nullptr && self->onMessage(message, wParam, lParam))
        return 0;
    return DefWindowProcW(window, message, wParam, lParam);
}

void PumpUntil(const char* what, const std::function<bool()>& condition) {
    const ULONGLONG start = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - start > 30000)
            throw std::runtime_error(std::string("did not come: ") + what);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

int WhileOpen(const std::function<int()>& show, const std::function<void(HWND)>& drive) {
    waitingDriver = drive;
    const HWND before = lastDialog;
    SetTimer(nullptr, 0, 10, &LookForDialog);
    const int result = show();
    lastDialog = before;
    return result;
}

std::wstring TextOf(HWND window) {
    wchar_t text[4096];
    return {text, static_cast<std::size_t>(
                      GetWindowTextW(window, text, static_cast<int>(std::size(text))))};
}

RECT ScreenRect(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}
