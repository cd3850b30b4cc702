#ifndef VTRUTILS_TESTS_PROMO_PROMOSTAGE_H
#define VTRUTILS_TESTS_PROMO_PROMOSTAGE_H

#include "tests/promo/Split.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/TestWindow.h"
#include "utilities/promo/PromoScript.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>

/// The library's clock and its thread timers, in the test's hand. One at a time.
class HeldClock {
public:
    HeldClock() {
        now = 5000;
        timers.clear();
    }

    /// Runs what is due, each followed by the paint that it asked for.
    static void Advance(HWND window, DWORD milliseconds) {
        const DWORD end = now + milliseconds;
        UpdateWindow(window);
        for (;;) {
            const auto next =
                std::min_element(timers.begin(), timers.end(), [](const auto& a, const auto& b) {
                    return a.second.due < b.second.due;
                });
            if (next == timers.end() || next->second.due > end)
                break;
            now = next->second.due;
            next->second.due += next->second.period;
            next->second.procedure(nullptr, WM_TIMER, next->first, now);
            UpdateWindow(window);
        }
        now = end;
    }

    struct Timer {
        DWORD due;
        DWORD period;
        TIMERPROC procedure;
    };
    static inline DWORD now;
    static inline std::map<UINT_PTR, Timer> timers;

private:
    static UINT_PTR WINAPI Set(HWND, UINT_PTR, UINT period, TIMERPROC procedure) {
        timers[++lastId] = {now + std::max(period, 5U), std::max(period, 5U), procedure};
        return lastId;
    }
    static BOOL WINAPI Kill(HWND, UINT_PTR id) { return timers.erase(id) != 0; }
    static DWORD WINAPI Now() { return now; }

    static inline UINT_PTR lastId = 100;
    HMODULE library = GetModuleHandleA("vtrutils.dll");
    ImportPatch set{library, "user32.dll", "SetTimer", reinterpret_cast<void*>(&Set)};
    ImportPatch kill{library, "user32.dll", "KillTimer", reinterpret_cast<void*>(&Kill)};
    ImportPatch tick{library, "kernel32.dll", "GetTickCount", reinterpret_cast<void*>(&Now)};
};

/// A window to play in, and a player.
class Stage {
public:
    explicit Stage(int stageWidth = 120, int stageHeight = 60)
        : width(stageWidth), height(stageHeight),
          area(CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, stageWidth,
                               stageHeight, window, nullptr, GetModuleHandleW(nullptr), nullptr)),
          script(std::make_unique<CPromoScript>()) {}

    /// The text begins in the section "general".
    void Prepare(CPromoScript& player, const std::string& text) {
        document = "[general]\nfont size=12\n" + text;
        player.SetOutputWindow(area);
        player.SetSourceBuffer(reinterpret_cast<const unsigned char*>(document.data()),
                               static_cast<int>(document.size()));
        player.SetStartScriptName("a");
    }
    bool Play(const std::string& text) {
        Prepare(*script, text);
        const bool plays = script->Go();
        UpdateWindow(area);
        return plays;
    }
    std::string Position() const {
        return script->CurrentScript() + std::to_string(script->CurrentStep()) + "." +
               std::to_string(script->CurrentSubStep());
    }
    void Resize(int newWidth, int newHeight) {
        width = newWidth;
        height = newHeight;
        SetWindowPos(area, nullptr, 0, 0, width, height, SWP_NOZORDER);
    }
    void Repaint() const {
        InvalidateRect(area, nullptr, FALSE);
        UpdateWindow(area);
    }
    COLORREF Pixel(int x, int y) const {
        const HDC dc = GetDC(area);
        const COLORREF color = GetPixel(dc, x, y);
        ReleaseDC(area, dc);
        return color;
    }
    COLORREF Corner() const { return Pixel(width - 1, height - 1); }

    /// What encloses all that has another colour than the corner.
    RECT Ink() const {
        const HDC dc = GetDC(area);
        const HDC copy = CreateCompatibleDC(dc);
        BITMAPINFO info{{sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0},
                        {}};
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        const HGDIOBJ before = SelectObject(copy, bitmap);
        BitBlt(copy, 0, 0, width, height, dc, 0, 0, SRCCOPY);
        GdiFlush();
        const auto* pixels = static_cast<const DWORD*>(bits);
        RECT ink{};
        for (int i = 0; i < width * height; ++i) {
            const RECT one{i % width, i / width, i % width + 1, i / width + 1};
            if (((pixels[i] ^ pixels[width * height - 1]) & 0xFFFFFF) != 0)
                UnionRect(&ink, &ink, &one);
        }
        SelectObject(copy, before);
        DeleteObject(bitmap);
        DeleteDC(copy);
        ReleaseDC(area, dc);
        return ink;
    }

    int width;
    int height;
    TestWindow window;
    HWND area;
    std::unique_ptr<CPromoScript> script;
    std::string document;
};

#endif
