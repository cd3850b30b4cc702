#include "utilities/ui/MyToolTip.h"

#include "tests/support/TestWindow.h"
#include "utilities/ui/WindowGeometry.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

constexpr DWORD never = 1000000;

/// A watched window, a tip for it, and what the tip is asked.
class Watched {
public:
    explicit Watched(DWORD delay = 2, DWORD displayTime = never) {
        SetForegroundWindow(window.Handle());
        started = tip.Init(GetModuleHandleW(nullptr), window.Handle(), &Watched::Tell, this, delay,
                           displayTime);
    }

    void Send(UINT message, int x, int y) {
        const RECT place = ScreenRect(window.Handle());
        SetCursorPos(place.left + x, place.top + y);
        tip.ForwardMouseMessage(window.Handle(), message, 0, MAKELPARAM(x, y));
    }
    void WaitShown() {
        PumpUntil("the tip", [this] { return tip.ShowingTipNow(); });
    }
    HWND TipWindow() const {
        HWND found = nullptr;
        EnumThreadWindows(
            GetCurrentThreadId(),
            [](HWND candidate, LPARAM out) {
                wchar_t name[16] = L"";
                GetClassNameW(candidate, name, static_cast<int>(std::size(name)));
                if (std::wstring_view(name) == L"VTTTClass")
                    *reinterpret_cast<HWND*>(out) = candidate;
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&found));
        return found;
    }

    TestWindow window;
    CMyToolTip tip;
    int started = 0;
    std::string text = "tip";
    int answer = 1;
    int asked = 0;
    POINT point{-1, -1};

private:
    static int Tell(void* self, POINT point, char* text) {
        auto& watched = *static_cast<Watched*>(self);
        ++watched.asked;
        watched.point = point;
        std::memcpy(text, watched.text.c_str(), watched.text.size() + 1);
        return watched.answer;
    }
};

} // namespace

TEST(MyToolTip, ShowsTheTextOfThePointBelowTheCursor) {
    Watched watched;
    ASSERT_EQ(watched.started, 1);
    EXPECT_FALSE(watched.tip.ShowingTipNow());
    watched.Send(WM_MOUSEMOVE, 20, 30);
    EXPECT_FALSE(watched.tip.ShowingTipNow()) << "before the delay";
    watched.WaitShown();
    EXPECT_TRUE(watched.point.x == 20 && watched.point.y == 30);
    EXPECT_EQ(TextOf(watched.TipWindow()), L"tip");
    const RECT owner = ScreenRect(watched.window.Handle());
    const RECT place = ScreenRect(watched.TipWindow());
    EXPECT_EQ(place.left, owner.left + 20);
    EXPECT_EQ(place.top, owner.top + 30 + 32);
    EXPECT_TRUE(place.right - place.left > 6 && place.bottom - place.top > 2);
    EXPECT_NE(GetForegroundWindow(), watched.TipWindow());

    watched.Send(WM_MOUSEMOVE, 20, 30);
    EXPECT_TRUE(watched.tip.ShowingTipNow()) << "the same point again";
    for (const UINT click : {0x201U, 0x202U, 0x204U, 0x205U}) {
        watched.tip.ShowToolTip();
        ASSERT_TRUE(watched.tip.ShowingTipNow());
        watched.Send(click, 20, 30);
        EXPECT_FALSE(watched.tip.ShowingTipNow()) << click;
    }
    const int before = watched.asked;
    watched.tip.UpdateTipDelayTime(60);
    watched.Send(WM_MOUSEMOVE, 21, 30);
    watched.Send(WM_LBUTTONDOWN, 21, 30);
    bool over = false;
    SetTimer(watched.window.Handle(), 1, 180, nullptr);
    watched.window.onMessage = [&](UINT message, WPARAM, LPARAM) {
        over = over || message == WM_TIMER;
        return false;
    };
    PumpUntil("a longer timer", [&] { return over; });
    EXPECT_EQ(watched.asked, before) << "a click cancels the pending tip";
}

TEST(MyToolTip, ShowsNothingWithoutAText) {
    Watched watched;
    struct Row {
        const char* name;
        int answer;
        std::string text;
        std::wstring shown;
    };
    const std::string longest(2047, 'i');
    for (const Row& row :
         {Row{"no tip", 0, "text", L""}, Row{"empty", 1, "", L""},
          Row{"negative", -1, "a & b", L"a & b"}, Row{"lines", 1, "one\ntwo", L"one\ntwo"},
          Row{"longest", 1, longest, std::wstring(2047, L'i')}}) {
        SCOPED_TRACE(row.name);
        watched.answer = row.answer;
        watched.text = row.text;
        watched.tip.ShowToolTip();
        EXPECT_EQ(watched.tip.ShowingTipNow(), !row.shown.empty());
        if (!row.shown.empty()) {
            EXPECT_EQ(TextOf(watched.TipWindow()), row.shown);
        }
        watched.tip.HideToolTip();
    }
}

TEST(MyToolTip, StaysOnTheMonitor) {
    Watched watched;
    const RECT screen = GetMonitorRectFromWindow(watched.window.Handle());
    watched.text = "a text of some length";
    for (const POINT corner : {POINT{screen.left - 150, screen.top - 100},
                               POINT{screen.right - 200, screen.bottom - 150}}) {
        SetWindowPos(watched.window.Handle(), nullptr, corner.x, corner.y, 400, 300,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        for (const POINT cursor :
             {POINT{screen.left + 1, screen.top + 1}, POINT{screen.right - 2, screen.bottom - 2}}) {
            if (!WindowContainsPoint(watched.window.Handle(), cursor.x, cursor.y))
                continue;
            SetCursorPos(cursor.x, cursor.y);
            watched.tip.ShowToolTip();
            ASSERT_TRUE(watched.tip.ShowingTipNow());
            const RECT place = ScreenRect(watched.TipWindow());
            RECT whole{};
            UnionRect(&whole, &place, &screen);
            EXPECT_TRUE(EqualRect(&whole, &screen)) << place.left << " " << place.bottom;
        }
    }
}

TEST(MyToolTip, HidesAfterItsTimeAndInTheBackground) {
    Watched watched(/*delay=*/0, /*displayTime=*/30);
    watched.tip.ShowToolTip();
    EXPECT_TRUE(watched.tip.ShowingTipNow());
    PumpUntil("the tip's end", [&] { return !watched.tip.ShowingTipNow(); });

    // With no delay a tip stays while the mouse moves, and other messages tell of moves, too.
    watched.Send(WM_MOUSEMOVE, 5, 5);
    watched.WaitShown();
    const int before = watched.asked;
    watched.Send(WM_NCMOUSEMOVE, 9, 9);
    EXPECT_TRUE(watched.tip.ShowingTipNow());
    PumpUntil("the next tip", [&] { return watched.asked > before; });
    EXPECT_EQ(watched.point.x, 9);
    watched.tip.HideToolTip();

    const TestWindow other({600, 80, 700, 180});
    SetForegroundWindow(other.Handle());
    PumpUntil("the other window", [&] { return GetForegroundWindow() == other.Handle(); });
    watched.tip.ShowToolTip();
    EXPECT_FALSE(watched.tip.ShowingTipNow()) << "in the background";
    watched.tip.SetWatchAllMouseMovementsMode(false);
    watched.tip.ShowToolTip();
    EXPECT_TRUE(watched.tip.ShowingTipNow());
    const int asked = watched.asked;
    watched.tip.HideToolTip();
    watched.Send(WM_NCMOUSEMOVE, 40, 40);
    watched.tip.ForwardMouseMessage(watched.window.Handle(), WM_MOUSEWHEEL, 0, 0);
    EXPECT_EQ(watched.asked, asked) << "other messages";
}

TEST(MyToolTip, MayBeginAnewAndEndInAnyOrder) {
    WNDCLASSW found{};
    {
        Watched first;
        Watched second;
        EXPECT_EQ(first.tip.Init(GetModuleHandleW(nullptr), nullptr, nullptr, nullptr, 1, 1), 1);
        first.tip.ShowToolTip();
        EXPECT_FALSE(first.tip.ShowingTipNow()) << "nobody to ask";
        DestroyWindow(second.TipWindow());
        CMyToolTip unused;
        unused.ForwardMouseMessage(nullptr, WM_MOUSEMOVE, 0, 0);
        unused.ShowToolTip();
        EXPECT_FALSE(unused.ShowingTipNow());
    }
    EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), L"VTTTClass", &found))
        << "a class outlives the library";
}
