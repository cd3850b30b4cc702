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

void Page::UpdateTexts() {
    captions.Update();
    Retext();
    Rearrange();
}

void Page::Rearrange() {
    if (look == nullptr)
        return;
    RECT area{};
    GetClientRect(Handle(), &area);
    Arrange(area.right, area.bottom);
}

} // namespace gallery
