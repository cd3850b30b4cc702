#include "gallery/Page.h"

#include "gallery/ControlIds.h"
#include "gallery/Controls.h"

namespace gallery {

bool Page::Create(HWND parent, PageHost& newHost) {
    host = &newHost;
    return CreateAs(GALLERY_PAGE_CLASS, L"", WS_EX_CONTROLPARENT, WS_CHILD | WS_CLIPCHILDREN,
                    SIZE{0, 0}, parent) &&
           MakeControls();
}

void Page::SetLook(const Look& newLook) {
    look = &newLook;
    SetFontOfChildren(Handle(), look->Font());
    Restyle();
    Rearrange();
}

void Page::Rearrange() {
    if (look == nullptr)
        return;
    RECT area{};
    GetClientRect(Handle(), &area);
    Arrange(area.right, area.bottom);
}

LRESULT Page::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        Rearrange();
        return 0;
    case WM_COMMAND:
        Command(LOWORD(wParam), HIWORD(wParam));
        return 0;
    case WM_NOTIFY:
        return Notify(*reinterpret_cast<const NMHDR*>(lParam));
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}

} // namespace gallery
