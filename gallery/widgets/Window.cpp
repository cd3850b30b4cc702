#include "gallery/widgets/Window.h"

#include "common/Require.h"

namespace gallery {

Window::~Window() {
    if (window != nullptr)
        DestroyWindow(window);
}

bool Window::CreateAs(const wchar_t* className, const wchar_t* title, DWORD extendedStyle,
                      DWORD style, SIZE size, HWND parent) {
    VTR_REQUIRE(window == nullptr);
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW type{};
    type.cbSize = sizeof type;
    type.lpfnWndProc = Procedure;
    type.hInstance = instance;
    type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    type.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    type.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    type.lpszClassName = className;
    if (RegisterClassExW(&type) == 0 && GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
        return false;
    const int place = (style & WS_CHILD) != 0 ? 0 : CW_USEDEFAULT;
    return CreateWindowExW(extendedStyle, className, title, style, place, place, size.cx, size.cy,
                           parent, /*hMenu=*/nullptr, instance, this) != nullptr;
}

LRESULT Window::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        Sized();
        return 0;
    case WM_COMMAND:
        Command(LOWORD(wParam), HIWORD(wParam));
        return 0;
    case WM_NOTIFY:
        return Notify(*reinterpret_cast<const NMHDR*>(lParam));
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

LRESULT CALLBACK Window::Procedure(HWND handle, UINT message, WPARAM wParam,
                                   LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* created =
            static_cast<Window*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        created->window = handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (self == nullptr)
        return DefWindowProcW(handle, message, wParam, lParam);
    const LRESULT result = self->OnMessage(message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
        self->window = nullptr;
    }
    return result;
}

} // namespace gallery
