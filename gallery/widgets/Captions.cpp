#include "gallery/widgets/Captions.h"

#include "gallery/text/Language.h"
#include "gallery/widgets/Controls.h"

namespace gallery {

HWND Captions::AddButton(HWND parent, const char* key, int id) {
    return Add(MakeButton(parent, L"", id), key);
}

HWND Captions::AddLabel(HWND parent, const char* key, int id) {
    return Add(MakeLabel(parent, L"", id), key);
}

HWND Captions::Add(HWND control, const char* key) {
    controls.emplace_back(control, key);
    SetText(control, Text(key));
    return control;
}

void Captions::Update() const {
    for (const auto& [control, key] : controls)
        SetText(control, Text(key));
}

} // namespace gallery
