#include "tests/promo/PromoStage.h"
#include "tests/support/Rounds.h"
#include "utilities/ui/LinkControl.h"

#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace {

constexpr char document[] =
    "wait=100\nowner draw bg=1\nowner draw bg name=sky\nowner draw bg refresh=30\n"
    "[a.1]\ntext.1=X\nspecial event.1=news\nbg color=red\n[a.2]\ntext.1=Y\n"
    "special event.1=news\nbg color=green\nowner draw bg name=sea\nowner draw bg refresh=20\n";

/// A stage whose two handlers do what the test says.
class Asked {
public:
    Asked() {
        stage.script->SetSpecialEventHandler(&Asked::Event, this);
        stage.script->SetOwnerDrawBackgroundHandler(&Asked::Paint, this);
    }
    Stage stage;
    std::function<bool(const char*, const char*, char*, int)> onEvent;
    std::function<void(HDC, const RECT&, const char*, unsigned, unsigned)> onPaint;

private:
    static bool Event(const char* name, const char* text, char* out, int size, void* self) {
        const auto& asked = *static_cast<Asked*>(self);
        return asked.onEvent == nullptr || asked.onEvent(name, text, out, size);
    }
    static void Paint(HDC dc, const RECT& area, const char* name, unsigned elapsed, unsigned count,
                      void* self) {
        const auto& asked = *static_cast<Asked*>(self);
        if (asked.onPaint != nullptr)
            asked.onPaint(dc, area, name, elapsed, count);
    }
};

/// A procedure of the host's, put before what a window has.
WNDPROC procedureBefore = nullptr;
LRESULT CALLBACK PassingOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(procedureBefore, window, message, wParam, lParam);
}

} // namespace

TEST(PromoHandlers, GetWhatTheyAskForAndAreHeard) {
    const HeldClock clock;
    Asked asked;
    std::vector<std::string> calls;
    asked.onEvent = [&](const char* name, const char* text, char* out, int size) {
        calls.push_back(std::string(name) + " " + text + " " + out + std::to_string(size));
        std::fill_n(out, size, 'M');
        return text[0] != 'Z';
    };
    asked.onPaint = [&](HDC dc, const RECT& area, const char* name, unsigned elapsed,
                        unsigned count) {
        calls.push_back(name + (" " + std::to_string(elapsed)) + " " + std::to_string(count));
        SetTextColor(dc, 0);
        SelectObject(dc, GetStockObject(WHITE_BRUSH));
        SaveDC(dc);
        EXPECT_EQ(GetPixel(dc, 119, 59), name[1] == 'k' ? 0x0000FFu : 0x00FF00u) << "filled before";
        PatBlt(dc, area.left, area.top, area.right, area.bottom, BLACKNESS);
    };
    ASSERT_TRUE(asked.stage.Play("text color=green\n" + std::string(document) +
                                 "text.2=Z\nspecial event.2=not\n"));
    EXPECT_EQ(clock.drawn, std::string(1023, 'M')) << "a text without an end is cut";
    clock.Advance(asked.stage.area, 125);
    EXPECT_EQ(asked.stage.Corner(), 0u);
    EXPECT_EQ(clock.drawnColor, 0x00FF00u) << "what the handler set is undone";
    clock.Advance(asked.stage.area, 75);
    EXPECT_EQ(asked.stage.Position(), "a1.1") << "after a veto";
    calls.resize(11);
    EXPECT_EQ(calls, (std::vector<std::string>{"news X X1024", "sky 0 0", "sky 30 1", "sky 60 2",
                                               "sky 90 3", "news Y Y1024", "sea 0 0", "sea 20 1",
                                               "sea 40 2", "sea 60 3", "sea 80 4"}));
}

TEST(PromoHandlers, MayStopDestroyAndAskAndNothingElseHappens) {
    const std::pair<const char*, std::function<void(Asked&)>> actions[] = {
        {"stop", [](Asked& a) { a.stage.script->Stop(); }},
        {"go, load, resume",
         [](Asked& a) {
             EXPECT_FALSE(a.stage.script->Go() || a.stage.script->Load());
             a.stage.script->Resume();
         }},
        {"ask", [](Asked& a) { EXPECT_TRUE(a.stage.script->ScriptExists("a")); }},
        {"destroy", [](Asked& a) { a.stage.script.reset(); }},
        {"destroy the window", [](Asked& a) { DestroyWindow(a.stage.area); }},
        {"resize, paint and let time go by",
         [](Asked& a) {
             const std::string before = a.stage.Position();
             a.stage.Resize(90, 33);
             a.stage.Repaint();
             HeldClock::Advance(a.stage.area, 500);
             EXPECT_EQ(a.stage.Position(), before);
         }},
        {"forget the handlers",
         [](Asked& a) {
             a.stage.script->SetSpecialEventHandler(nullptr, nullptr);
             a.stage.script->SetOwnerDrawBackgroundHandler(nullptr, nullptr);
         }},
    };
    for (const int round : {0, 1, 2, 3}) {
        const bool inPaint = round > 1;
        for (const auto& [name, action] : actions) {
            SCOPED_TRACE(name + (" in call " + std::to_string(round % 2 + 1)) +
                         (inPaint ? " of paint" : " of event"));
            const HeldClock clock;
            Asked asked;
            int calls = 0;
            bool inside = false;
            const auto act = [&, &does = action] {
                EXPECT_FALSE(std::exchange(inside, true)) << "called within a call";
                if (calls++ == round % 2)
                    does(asked);
                inside = false;
                return true;
            };
            if (inPaint)
                asked.onPaint = std::bind(act);
            else
                asked.onEvent = std::bind(act);
            asked.stage.Play(document +
                             std::string("transition time.1=200\ntransition effect=wipe LR\n"));
            clock.Advance(asked.stage.area, 150);
            EXPECT_GT(calls, round % 2);
            const bool ends = name[0] == 's' || name[0] == 'd';
            if (!ends)
                clock.Advance(asked.stage.area, 2000);
            EXPECT_EQ(clock.timers.empty(), ends);
        }
    }
}

TEST(PromoHandlers, ObjectsAndProceduresComeAndGoOnOneWindow) {
    EachRound(65, 100, [](Dice& dice, int) {
        const HeldClock clock;
        Stage stage;
        const auto original = GetWindowLongPtrW(stage.area, GWLP_WNDPROC);
        std::unique_ptr<CPromoScript> scripts[2];
        CLinkControl links[2];
        bool above = false, linked = false;
        for (int move = 0; move < 12; ++move) {
            auto& script = scripts[dice.Below(2)];
            CLinkControl& link = links[dice.Below(2)];
            char text[] = "link";
            bool plays = false;
            const int what = dice.Below(7);
            if (what == 0)
                linked = link.SubClass(stage.area, text, text, 0) != FALSE || linked;
            else if (what == 1)
                link.Restore();
            else if (what == 2)
                script.reset();
            else if (what == 3 && script != nullptr)
                script->Resume();
            else if (what == 4 && !std::exchange(above, true))
                procedureBefore = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
                    stage.area, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&PassingOn)));
            if (what > 4) {
                script = std::make_unique<CPromoScript>();
                stage.Prepare(*script, "wait=100\n[a.1]\ntext.1=X\n[a.2]\ntext.1=Y\n");
                plays = script->Go();
                EXPECT_EQ(GetWindowLongPtrW(stage.area, GWLP_USERDATA),
                          reinterpret_cast<LONG_PTR>(script.get()));
            }
            clock.Advance(stage.area, 250);
            EXPECT_LE(clock.timers.size(), 1u) << "move " << move;
            EXPECT_TRUE(!plays || clock.timers.size() == 1u) << "move " << move;
            const std::wstring sent = std::to_wstring(move);
            SetWindowTextW(stage.area, sent.c_str());
            ASSERT_EQ(TextOf(stage.area), sent);
        }
        if (dice.Below(2) == 0)
            DestroyWindow(stage.area);
        for (CLinkControl& link : links)
            link.Restore();
        for (auto& script : scripts)
            script.reset();
        EXPECT_TRUE(!IsWindow(stage.area) || above || linked ||
                    GetWindowLongPtrW(stage.area, GWLP_WNDPROC) == original);
        EXPECT_TRUE(clock.timers.empty());
    });
}
