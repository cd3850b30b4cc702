#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>

namespace {

constexpr wchar_t ownClass[] = L"VtrTestWindow";

/// What a call of WhileOpen has still to do.
struct Steps {
    const std::vector<std::function<void(HWND)>>& all;
    std::size_t taken;
    HWND last;
};
Steps* current = nullptr;

void CALLBACK TakeStep(HWND, UINT, UINT_PTR, DWORD) {
    Steps& steps = *current;
    const HWND dialog = OpenWindow();
    if (dialog == nullptr || dialog == steps.last || steps.taken == steps.all.size())
        return;
    steps.last = dialog;
    steps.all[steps.taken++](dialog);
}

} // namespace

TestWindow::TestWindow(const RECT& place) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = &Procedure;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = ownClass;
    RegisterClassW(&kind);
    window = CreateWindowExW(WS_EX_TOPMOST, ownClass, L"test", WS_POPUP | WS_VISIBLE, place.left,
                             place.top, place.right - place.left, place.bottom - place.top, nullptr,
                             nullptr, kind.hInstance, this);
    if (window == nullptr)
        throw std::runtime_error("no window");
}

TestWindow::TestWindow(const wchar_t* kind, DWORD style, const RECT& place, HWND parent, int id)
    : window(CreateWindowExW(/*dwExStyle=*/0, kind, L"", style, place.left, place.top,
                             place.right - place.left, place.bottom - place.top, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr)) {
}

TestWindow::~TestWindow() {
    onMessage = nullptr;
    DestroyWindow(window);
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

namespace {

using Search = std::pair<const wchar_t*, HWND>;

BOOL CALLBACK LookAt(HWND window, LPARAM search) {
    auto& [wanted, found] = *reinterpret_cast<Search*>(search);
    wchar_t name[32] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    if (std::wstring_view(name) == wanted && IsWindowVisible(window) && IsWindowEnabled(window))
        found = window;
    return found == nullptr;
}

} // namespace

HWND OpenWindow(const wchar_t* kind) {
    Search search(kind, nullptr);
    EnumThreadWindows(GetCurrentThreadId(), LookAt, reinterpret_cast<LPARAM>(&search));
    return search.second;
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

int WhileOpen(const std::function<int()>& show,
              const std::vector<std::function<void(HWND)>>& steps) {
    Steps mine{steps, 0, current != nullptr ? current->last : nullptr};
    Steps* outer = std::exchange(current, &mine);
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, &TakeStep);
    const int result = show();
    KillTimer(nullptr, timer);
    current = outer;
    EXPECT_EQ(mine.taken, steps.size()) << "dialogs were shown";
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
