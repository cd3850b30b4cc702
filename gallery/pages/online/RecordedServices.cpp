#include "gallery/pages/online/RecordedServices.h"

#include <windows.h>

namespace gallery {

std::wstring RecordedServices() {
    wchar_t offers[1024] = L"";
    const DWORD length = GetEnvironmentVariableW(L"VTRUTILS_SERVICES", offers, 1024);
    constexpr wchar_t name[] = L"plain=";
    const std::wstring text(offers, length < 1024 ? length : 0);
    const std::size_t place = text.find(name);
    if (place == std::wstring::npos)
        return {};
    const std::size_t port = place + wcslen(name);
    return L"http://localhost:" + text.substr(port, text.find(L' ', port) - port);
}

bool HandleMessagesUntil(const std::function<bool()>& condition) {
    constexpr ULONGLONG patience = 20000;
    const ULONGLONG begun = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - begun > patience)
            return false;
        MSG message;
        while (PeekMessageW(&message, /*hWnd=*/nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        MsgWaitForMultipleObjects(0, /*pHandles=*/nullptr, /*fWaitAll=*/FALSE,
                                  /*dwMilliseconds=*/100, QS_ALLINPUT);
    }
    return true;
}

} // namespace gallery
