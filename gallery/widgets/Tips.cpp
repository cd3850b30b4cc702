#include "gallery/widgets/Tips.h"

#include "gallery/text/Language.h"
#include "gallery/text/Text.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <windowsx.h>

namespace gallery {

namespace {

constexpr DWORD delay = 600;
constexpr DWORD displayTime = 10000;
constexpr std::size_t textSize = 2048; ///< the room that tips have

} // namespace

void Tips::Add(HWND control, const char* key) {
    controls.emplace_back(control, key);
}

void Tips::Watch(HWND window, const MSG& message) {
    if (controls.empty() || message.message < WM_MOUSEFIRST || message.message > WM_MOUSELAST)
        return;
    if (watched != window) {
        watched = window;
        tip.Init(GetModuleHandleW(nullptr), window, &Tips::TextAt, this, delay, displayTime);
    }
    if (message.hwnd != window && IsChild(window, message.hwnd) == FALSE) {
        tip.HideToolTip();
        return;
    }
    POINT point{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    MapWindowPoints(message.hwnd, window, &point, 1);
    tip.ForwardMouseMessage(window, message.message, message.wParam, MAKELPARAM(point.x, point.y));
}

int Tips::TextAt(void* self, POINT point, char* text) {
    const auto& tips = *static_cast<Tips*>(self);
    const HWND control = ChildWindowFromPointEx(tips.watched, point, CWP_SKIPINVISIBLE);
    const auto found = std::find_if(tips.controls.begin(), tips.controls.end(),
                                    [control](const auto& tip) { return tip.first == control; });
    std::string narrow;
    if (found == tips.controls.end() || !Narrow(Text(found->second), narrow) ||
        narrow.size() >= textSize)
        return 0;
    std::memcpy(text, narrow.c_str(), narrow.size() + 1);
    return 1;
}

} // namespace gallery
