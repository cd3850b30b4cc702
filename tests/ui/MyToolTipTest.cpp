#include "utilities/ui/MyToolTip.h"

#include "tests/support/TestWindow.h"
#include "utilities/ui/WindowGeometry.h"

#include <cstring>
#include <gtest/gtest.h>
#include <tuple>

namespace {

constexpr wchar_t tipClass[] = L"VTTTClass";

/// A watched window, a tip for it, and what the tip is asked.
class Watched {
public:
    explicit Watched(DWORD delay = 2, DWORD displayTime = 1000000) {
        SetForegroundWindow(window);
        EXPECT_EQ(
            tip.Init(GetModuleHandleW(nullptr), window, &Watched::Tell, this, delay, displayTime),
            1);
    }

    void Send(UINT message, int x, int y) {
        const RECT place = ScreenRect(window);
        SetCursorPos(place.left + x, place.top + y);
        tip.ForwardMouseMessage(window, message, 0, MAKELPARAM(x, y));
    }
    bool ShowsAtOnce() {
        tip.ShowToolTip();
        return tip.ShowingTipNow();
    }

    TestWindow window;
    CMyToolTip tip;
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
    watched.Send(WM_MOUSEMOVE, 20, 30);
    EXPECT_FALSE(watched.tip.ShowingTipNow()) << "before the delay";
    PumpUntil("the tip", [&] { return watched.tip.ShowingTipNow(); });
    EXPECT_TRUE(watched.point.x == 20 && watched.point.y == 30);
    const RECT owner = ScreenRect(watched.window);
    const RECT place = ScreenRect(OpenWindow(tipClass));
    EXPECT_EQ(place.left, owner.left + 20);
    EXPECT_EQ(place.top, owner.top + 30 + 32);
    EXPECT_NE(GetForegroundWindow(), OpenWindow(tipClass));

    watched.Send(WM_MOUSEMOVE, 20, 30);
    EXPECT_TRUE(watched.tip.ShowingTipNow()) << "the same point again";
    for (const UINT click : {0x201U, 0x202U, 0x204U, 0x205U}) {
        ASSERT_TRUE(watched.ShowsAtOnce());
        watched.Send(click, 20, 30);
        EXPECT_FALSE(watched.tip.ShowingTipNow()) << click;
    }
}

TEST(MyToolTip, ShowsNothingWithoutAText) {
    Watched watched;
    for (const auto& [answer, text, shown] :
         {std::tuple(0, std::string("text"), std::wstring()),
          {1, "", L""},
          {-1, "a & b", L"a & b"},
          {1, "one\ntwo", L"one\ntwo"},
          {1, std::string(2047, 'i'), std::wstring(2047, L'i')}}) {
        SCOPED_TRACE(text);
        watched.answer = answer;
        watched.text = text;
        EXPECT_EQ(watched.ShowsAtOnce(), !shown.empty());
        const HWND tip = OpenWindow(tipClass);
        EXPECT_EQ(tip != nullptr ? TextOf(tip) : L"", shown);
        watched.tip.HideToolTip();
    }
}

TEST(MyToolTip, StaysOnTheMonitor) {
    Watched watched;
    const RECT screen = GetMonitorRectFromWindow(watched.window);
    watched.text = "a text of some length";
    SetWindowPos(watched.window, nullptr, screen.left, screen.top, screen.right - screen.left,
                 screen.bottom - screen.top, SWP_NOZORDER | SWP_NOACTIVATE);
    for (const POINT cursor :
         {POINT{screen.left + 1, screen.top + 1}, POINT{screen.right - 2, screen.bottom - 2}}) {
        SetCursorPos(cursor.x, cursor.y);
        ASSERT_TRUE(watched.ShowsAtOnce());
        const RECT place = ScreenRect(OpenWindow(tipClass));
        RECT whole{};
        UnionRect(&whole, &place, &screen);
        EXPECT_EQ(whole, screen);
    }
}

TEST(MyToolTip, HidesAfterItsTimeAndInTheBackground) {
    Watched watched(/*delay=*/0, /*displayTime=*/30);
    EXPECT_TRUE(watched.ShowsAtOnce());
    PumpUntil("the tip's end", [&] { return !watched.tip.ShowingTipNow(); });

    // With no delay a tip stays while the mouse moves, and other messages tell of moves, too.
    watched.Send(WM_MOUSEMOVE, 5, 5);
    PumpUntil("the tip", [&] { return watched.tip.ShowingTipNow(); });
    watched.Send(WM_NCMOUSEMOVE, 9, 9);
    EXPECT_TRUE(watched.tip.ShowingTipNow());
    PumpUntil("the next tip", [&] { return watched.point.x == 9; });
    watched.tip.HideToolTip();

    const TestWindow other({600, 80, 700, 180});
    SetForegroundWindow(other);
    PumpUntil("the other window", [&] { return GetForegroundWindow() == other; });
    EXPECT_FALSE(watched.ShowsAtOnce()) << "in the background";
    watched.tip.SetWatchAllMouseMovementsMode(false);
    EXPECT_TRUE(watched.ShowsAtOnce());
    watched.tip.HideToolTip();
    const int asked = watched.asked;
    watched.Send(WM_NCMOUSEMOVE, 40, 40);
    EXPECT_EQ(watched.asked, asked) << "other messages";
}

TEST(MyToolTip, MayBeginAnewAndEndInAnyOrder) {
    {
        Watched first;
        Watched second;
        EXPECT_EQ(first.tip.Init(GetModuleHandleW(nullptr), nullptr, nullptr, nullptr, 1, 1), 1);
        EXPECT_FALSE(first.ShowsAtOnce()) << "nobody to ask";
        ASSERT_TRUE(second.ShowsAtOnce());
        DestroyWindow(OpenWindow(tipClass));
        CMyToolTip unused;
        unused.ForwardMouseMessage(nullptr, WM_MOUSEMOVE, 0, 0);
        unused.ShowToolTip();
        EXPECT_FALSE(unused.ShowingTipNow());
    }
    WNDCLASSW found{};
    EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), tipClass, &found))
        << "a class outlives the library";
}
