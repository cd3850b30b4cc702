#ifndef VTRUTILS_TESTS_SUPPORT_HELDCLOCK_H
#define VTRUTILS_TESTS_SUPPORT_HELDCLOCK_H

#include "tests/support/ImportPatch.h"

#include <algorithm>
#include <map>
#include <string>

/// The library's clock and its thread timers, in the test's hand, and what it draws. One at a time.
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
    static inline std::string drawn; ///< in the last paint; "": no text
    static inline RECT drawnIn;
    static inline UINT drawnFormat;
    static inline COLORREF drawnColor;
    static inline LONG drawnHeight;

private:
    static UINT_PTR WINAPI Set(HWND, UINT_PTR, UINT period, TIMERPROC procedure) {
        timers[++lastId] = {now + std::max<UINT>(period, USER_TIMER_MINIMUM),
                            std::max<UINT>(period, USER_TIMER_MINIMUM), procedure};
        return lastId;
    }
    static BOOL WINAPI Kill(HWND, UINT_PTR id) { return timers.erase(id) != 0; }
    static DWORD WINAPI Now() { return now; }
    static HDC WINAPI Begin(HWND window, PAINTSTRUCT* paint) {
        drawn.clear();
        return BeginPaint(window, paint);
    }
    static int WINAPI Draw(HDC dc, const wchar_t* text, int length, RECT* place, UINT format) {
        drawn.assign(text, text + length);
        drawnIn = *place;
        drawnFormat = format;
        drawnColor = GetTextColor(dc);
        return drawnHeight = DrawTextW(dc, text, length, place, format);
    }

    static inline UINT_PTR lastId = 100;
    HMODULE library = GetModuleHandleA("vtrutils.dll");
    ImportPatch set{library, "user32.dll", "SetTimer", reinterpret_cast<void*>(&Set)};
    ImportPatch kill{library, "user32.dll", "KillTimer", reinterpret_cast<void*>(&Kill)};
    ImportPatch tick{library, "kernel32.dll", "GetTickCount", reinterpret_cast<void*>(&Now)};
    ImportPatch paint{library, "user32.dll", "BeginPaint", reinterpret_cast<void*>(&Begin)};
    ImportPatch draw{library, "user32.dll", "DrawTextW", reinterpret_cast<void*>(&Draw)};
};

#endif
