#ifndef VTRUTILS_TESTS_PROMO_PROMOSTAGE_H
#define VTRUTILS_TESTS_PROMO_PROMOSTAGE_H

#include "common/Handles.h"
#include "tests/promo/Split.h"
#include "tests/support/HeldClock.h"
#include "tests/support/TestWindow.h"
#include "utilities/promo/PromoScript.h"

#include <memory>
#include <string>

/// A window to play in, and a player.
class Stage {
public:
    explicit Stage(int stageWidth = 120, int stageHeight = 60)
        : width(stageWidth), height(stageHeight),
          area(CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, stageWidth,
                               stageHeight, window, nullptr, GetModuleHandleW(nullptr), nullptr)),
          script(std::make_unique<CPromoScript>()) {
        script->SetOwnerDrawBackgroundHandler(
            [](HDC, const RECT&, const char*, unsigned, unsigned, void*) {}, nullptr);
    }

    /// The text begins in the section "general", unless that is given too.
    void Prepare(CPromoScript& player, const std::string& text,
                 const std::string& before = "[general]\nfont size=12\n", const char* start = "a") {
        document = before + text;
        player.SetOutputWindow(area);
        player.SetSourceBuffer(reinterpret_cast<const unsigned char*>(document.data()),
                               static_cast<int>(document.size()));
        player.SetStartScriptName(start);
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
    COLORREF Pixel(int x, int y) const { return GetPixel(vtr::WindowDc(GetDC(area)).Get(), x, y); }
    COLORREF Corner() const { return Pixel(width - 1, height - 1); }

    int width;
    int height;
    TestWindow window;
    HWND area;
    std::unique_ptr<CPromoScript> script;
    std::string document;
};

#endif
