#include "gallery/app/Page.h"

#include "gallery/app/ControlIds.h"
#include "gallery/widgets/Controls.h"

#include <utility>

namespace gallery {

bool Page::Create(HWND parent, PageHost& newHost) {
    host = &newHost;
    return CreateAs(GALLERY_PAGE_CLASS, L"", WS_EX_CONTROLPARENT, WS_CHILD | WS_CLIPCHILDREN,
                    SIZE{0, 0}, parent) &&
           MakeControls();
}

bool Page::AddList(ListView& list, const char* nameKey, int id, ListView::Titles titles,
                   ListView::TextOfCell textOfCell) {
    lists.push_back(&list);
    return list.Create(Handle(), nameKey, id, titles, std::move(textOfCell));
}

void Page::SetLook(const Look& newLook) {
    look = &newLook;
    SetFontOfChildren(Handle(), look->Font());
    for (ListView* list : lists)
        list->SetLook(*look);
    Restyle();
    Rearrange();
}

void Page::UpdateTexts() {
    captions.Update();
    for (ListView* list : lists)
        list->UpdateTexts();
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

LRESULT Page::Notify(const NMHDR& header) {
    LRESULT result = 0;
    for (ListView* list : lists) {
        if (list->Notified(header, result))
            return result;
    }
    Noticed(header);
    return 0;
}

} // namespace gallery
