#include "common/Handles.h"
#include "tests/promo/PromoStage.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/DocumentExamples.h"
#include "tests/support/Rounds.h"

#include <atomic>
#include <cstring>
#include <functional>
#include <tuple>

namespace {

constexpr COLORREF red = 0x0000FF;
constexpr COLORREF blue = 0xFF0000;

/// Two messages, red and then blue, of which the second comes with a transition of 1,000 ms.
std::string Transition(const std::string& effect, const std::string& general = "") {
    return "wait=100\n" + general +
           "[a.1]\ntext.1=X\nbg color=red\ntext color=red\n[a.2]\ntext.1=M\nbg color=blue\n"
           "text color=blue\ntransition color=40\ntransition time=1000\ntransition effect=" +
           effect + "\n";
}

/// Position, colour of the corner and text of the last paint, and a sign when no timer runs.
std::string Seen(const Stage& stage) {
    std::map<COLORREF, std::string> colors{{red, "r:"}, {blue, "b:"}, {0x00FF00, "g:"}};
    const std::string color = colors[stage.Corner()];
    return stage.Position() + ":" + (color.empty() ? "?:" : color) + HeldClock::drawn +
           (HeldClock::timers.empty() ? "!" : "");
}

/// Milliseconds go by, or it is done what the word says; "=b" is `Go` for the script b.
void Do(const std::string& word, Stage& stage) {
    if (word == "stop")
        stage.script->Stop();
    else if (word == "resume")
        stage.script->Resume();
    else if (word == "size")
        stage.Resize(130, 70);
    else if (word == "same")
        SendMessageW(stage.area, WM_SIZE, SIZE_RESTORED, MAKELPARAM(120, 60));
    else if (word[0] == '=')
        stage.script->SetStartScriptName(word.c_str() + 1), stage.script->Go();
    else if (word != "paint")
        return HeldClock::Advance(stage.area, std::stoul(word));
    stage.Repaint();
}

int missingFrame = 0; ///< the number of the only one that cannot be made

HBITMAP WINAPI MakeSomeFrames(HDC dc, const BITMAPINFO* kind, UINT use, void** bits, HANDLE section,
                              DWORD offset) {
    return --missingFrame == 0 ? nullptr : CreateDIBSection(dc, kind, use, bits, section, offset);
}

/// The greatest value of a few new handles; it grows when others are not given back.
UINT_PTR FreshPen() {
    UINT_PTR greatest = 0;
    vtr::Owner<vtr::GdiObjectKind<HPEN>> pens[16];
    for (auto& pen : pens) {
        pen = vtr::Owner<vtr::GdiObjectKind<HPEN>>(CreatePen(PS_SOLID, 1, 0x123456));
        greatest = std::max(greatest, reinterpret_cast<UINT_PTR>(pen.Get()) & 0xFFFF);
    }
    return greatest;
}

} // namespace

TEST(PromoPlayback, EachSubStepHasItsTime) {
    const std::string a = "[a.1]\nbg color.1=red\nbg color.2=green\nbg color.3=blue\ntext.1=X\n"
                          "text.2=Y\ntext.3=Z\n";
    const std::string effect = a + "transition time.1=200\ntransition effect.1=";
    const std::string letters = "wait=100\n[a.1]\nbg color=red\ntext.1=MNO\ntransition time.1=50\n"
                                "transition effect.1=per-char delay\ntext.2=P\n";
    const std::tuple<const char*, std::string, const char*> rows[] = {
        // What is done, and what is seen then.
        {"other waits", a + "wait=50\nwait.2=300\n", "50 a1.2:g:XY 299 a1.2:g:XY 1 a1.3:b:XYZ"},
        {"what is no wait", "wait=-5\nclear pause=x\n" + a + "wait=1s\nwait.2=-1\n",
         "1999 a1.1:r:X 1 a1.2:g:XY 2000 a1.3:b:XYZ"},
        {"notify", "wait=100\n" + a + "wait.2=NOTIFY\n",
         "100 a1.2:g:XY! 150 a1.2:g:XY! resume a1.3:b:XYZ"},
        {"notify in a pause", "clear pause=70\n" + a + "wait.1=notify\n", "0 a1.1:r:X!"},
        {"clear pause", "wait=100\nclear pause=500\n" + a + "clear.3=1\n",
         "499 a1.1:r: 1 a1.1:r:X 100 a1.2:g:XY 100 a1.3:b: 499 a1.3:b: 1 a1.3:b:Z 100 a1.1:r:"},
        {"a time without an effect", "wait=100\ntransition time=300\n" + effect + "color fade\n",
         "300 a1.2:g:XY 100 a1.3:b:XYZ"},
        {"the wait follows the transition", "wait=100\n" + effect + "wipe LR\n",
         "199 a1.1:r: 1 a1.1:r: paint a1.1:r:X 99 a1.1:r:X 1 a1.2:g:XY"},
        {"a pause follows a transition to nothing",
         "clear pause=70\nwait=100\n" + effect + "wipe RL\n",
         "200 a1.1:r: 69 a1.1:r: 1 a1.1:r:X 100 a1.2:g:XY"},
        {"notify after a transition", "wait=100\n" + effect + "color fade\nwait.1=notify\n",
         "200 a1.1:r:! 150 a1.1:r:! paint a1.1:r:X!"},
        {"characters in a pause", "clear pause=70\n" + letters,
         "49 a1.1:r: 1 a1.1:r:MN 50 a1.1:r:MNO 149 a1.1:r:MNO 1 a1.2:r:MNOP"},
        {"notify after characters", letters + "wait.1=notify\n",
         "0 a1.1:r:M 99 a1.1:r:MN 1 a1.1:r:MNO 60 a1.1:r:MNO! resume a1.2:r:MNOP"},
        {"stop in characters", letters, "stop a1.1:r:M! paint a1.1:r:M! resume a1.2:r:MP"},
        {"stop in a transition", Transition("wipe LR"),
         "600 a2.1:r: stop a2.1:r:! 500 a2.1:r:! paint a2.1:r:! resume a1.1:r:X 100 a2.1:r:M"},
        {"another size", Transition("frames crossfade"),
         "350 a2.1:?: size a2.1:b:M 99 a2.1:b:M 1 a1.1:r:X"},
        {"the same size", Transition("frames crossfade"), "350 a2.1:?: same a2.1:?: 750 a2.1:b:"},
        {"nothing to come from",
         "[a.1]\ntext.1=X\nbg color=blue\ntransition time=100\n"
         "transition effect=wipe LR\n",
         "0 a1.1:b:X 50 a1.1:b:"},
        {"each with its colour",
         "wait=100\ntransition time=200\ntransition effect=color wipe LR\n[a.1]\ntext.1=X\n"
         "transition color=red\n[a.2]\ntext.1=Y\ntransition color=blue\n",
         "100 a1.1:r: 300 a2.1:b:"},
        {"escapes", "[a.1]\nbg color=red\ntext.1=\\ta\\n\\b\\\\n\\t\n",
         "0 a1.1:r:\ta\r\n\\b\\\r\n\t"},
        {"anew",
         "wait=100\n[a.1]\ntext.1=X\nbg color=red\n[a.2]\ngoto.script=b\n"
         "returnto.script=a\n[b.1]\ntext.1=Y\nbg color=green\n",
         "100 b1.1:g:Y =b b1.1:g:Y 100 b1.1:g:Y =a a1.1:r:X =none none1.1:r:!"},
    };
    for (const auto& [name, document, moments] : rows) {
        const HeldClock clock;
        Stage stage;
        ASSERT_TRUE(stage.Play(document)) << name;
        std::string seen;
        const auto words = Split(moments, ' ');
        for (std::size_t i = 0; i < words.size(); i += 2) {
            Do(words[i], stage);
            seen += (i > 0 ? " " : "") + words[i] + " " + Seen(stage);
        }
        EXPECT_EQ(seen, moments) << name;
    }
}

TEST(PromoPlayback, TransitionsMixWhatWasAndWhatComes) {
    constexpr COLORREF fill = 40;
    // 255 x 70 / 100 = 178, 255 x 30 / 100 = 76; fading frames are at 60 % of the colour.
    constexpr COLORREF faded = RGB(28, 0, 76), crossed = RGB(178, 0, 76), through = RGB(126, 0, 0),
                       popping = RGB(190, 0, 0);
    const std::tuple<const char*, COLORREF, COLORREF, COLORREF> rows[] = {
        // at 30 %: left, right, in the middle
        {"color fade", faded, faded, faded},
        {"frames crossfade", crossed, crossed, crossed},
        {"frames fade", through, through, through},
        {"color frame fade pop", popping, popping, popping},
        {"color rect out", fill, fill, blue},
        {"color rect in", blue, blue, fill},
        {"wipe LR", blue, red, red},
        {"wipe RL", red, blue, red},
        {"color wipe LR", blue, fill, fill},
        {"color wipe RL", fill, blue, fill}};
    for (const auto& [effect, left, right, middle] : rows) {
        const HeldClock clock;
        Stage stage;
        ASSERT_TRUE(stage.Play(Transition(effect)));
        clock.Advance(stage.area, 400);
        EXPECT_TRUE(stage.Pixel(1, 30) == left && stage.Pixel(118, 30) == right &&
                    stage.Pixel(60, 30) == middle)
            << effect;
        clock.Advance(stage.area, 700);
        EXPECT_TRUE(stage.Pixel(60, 30) == blue && stage.Corner() == blue) << effect;
    }
}

TEST(PromoPlayback, TextStandsWhereMarginsAndAlignmentSay) {
    constexpr LONG middle = -1, bottom = -2;
    const std::tuple<const char*, RECT, UINT> rows[] = {
        // The top is a number or the alignment.
        {"", {2, 0, 118, 60}, 0},
        {"horz=right\ntop margin=5\n", {2, 5, 118, 60}, DT_RIGHT},
        {"horz=center\nvert=center\ntop margin=30\n", {2, middle, 118, 60}, DT_CENTER},
        {"vert=bottom\nbottom margin=7\n", {2, bottom, 118, 53}, 0},
        {"left margin=5\nleft pct margin=50\n", {62, 0, 118, 60}, 0},
        {"right margin=30\nright pct margin=-9\n", {2, 0, 88, 60}, 0},
        {"vert=bottom\nbottom margin=2147483647\nleft margin=2147483647\n", {123, 0, 118, -1}, 0}};
    for (auto [keys, place, format] : rows) {
        const HeldClock clock;
        Stage stage;
        ASSERT_TRUE(stage.Play(keys + std::string("[a.1]\ntext.1=M\n")));
        const LONG height = clock.drawnHeight; // of one line
        if (place.top < 0)
            place.top = place.top == middle ? (place.bottom - height) / 2
                                            : place.bottom - height / 2 - height;
        EXPECT_EQ(clock.drawnIn, place) << keys;
        EXPECT_EQ(clock.drawnFormat, DT_WORDBREAK | DT_NOPREFIX | format) << keys;
    }
    Stage stage;
    stage.Prepare(*stage.script, "left margin=7\nright pct margin=50\nbottom pct margin=33\n");
    ASSERT_TRUE(stage.script->Load());
    const RECT other{10, 10, 201, 101};
    const CPromoScript& script = *stage.script;
    EXPECT_EQ((RECT{script.LeftMargin(&other), script.TopMargin(nullptr),
                    script.RightMargin(&other), script.BottomMargin(&other)}),
              (RECT{7, 0, 100, 33}));
    EXPECT_EQ(script.RightMargin(nullptr), 60);
}

TEST(PromoPlayback, WhatCannotPlayIsToldAndLeavesNoTimer) {
    const HeldClock clock;
    const std::string good = "[a.1]\ntext.1=X\n[c.1]\ngoto.script=a\n";
    Stage none(0, 0), stage;
    EXPECT_EQ(none.script->StaticWndFunc(none.area, WM_GETTEXTLENGTH, 0, 0), 0) << "before Go";
    const vtr::WindowDc dc(GetDC(none.window));
    none.script->OnPaint(dc.Get(), none.area, {0, 0, 9, 9});
    EXPECT_FALSE(none.Play(good)) << "no client area";
    EXPECT_TRUE(stage.Play(good));
    CPromoScript& script = *stage.script;
    EXPECT_TRUE(script.ScriptExists("A") && script.ScriptExists("c"));
    EXPECT_FALSE(script.ScriptExists("b") || script.ScriptExists("") ||
                 script.ScriptExists(nullptr) ||
                 script.ScriptExists(std::string(261, 'a').c_str()));
    const std::string tooLong(260, 'a');
    for (const char* start : {tooLong.c_str(), "b"}) {
        script.SetStartScriptName(start);
        EXPECT_EQ(script.Go(), start[0] == 'b') << "a script without texts ends quietly";
    }
    script.SetOutputWindow(nullptr);
    EXPECT_FALSE(script.Go());
    script.SetSourceBuffer(nullptr, 5);
    script.SetSourceFile("missing.ini");
    EXPECT_FALSE(script.Load());
    stage.Repaint();
    EXPECT_TRUE(clock.timers.empty());
}

TEST(PromoPlayback, AnyDocumentPlays) {
    const HeldClock clock;
    const auto keys =
        Split("text.1|text.2|random.1.1|goto.script|returnto.script|returnto.step|wait|wait.1|"
              "clear.2|style|bold|font size|horz|vert|left margin|right margin|top pct margin|"
              "owner draw bg|owner draw bg refresh|transition time|transition effect|"
              "transition color|bg color|typeface",
              '|');
    auto values = Split("a|s|1|0|-1|3|15|2147483647|-2147483648|999999999999999999999999999999|"
                        "notify|bottom|CENTER|color rect out|frames fade|wipe RL|per-char delay|"
                        "\\t\\n\\|%s%n",
                        '|');
    values.insert(values.end(), {std::string(1024, 'W'), std::string(2048, '\\')});
    EachRound(64, 60, [&](Dice& dice, int) {
        Stage stage(1 + dice.Below(40), 1 + dice.Below(40));
        std::string text;
        for (const char* section : {"general", "a.1", "a.2", "s.1", "style.s"}) {
            text += std::string("[") + section + "]\n";
            for (int i = 0; i < 12; ++i)
                text += dice.Any(keys) + "=" + dice.Any(values) + "\n";
        }
        stage.Play(text);
        stage.document.assign(stage.document.size(), ';');
        for (int i = 0; i < 12; ++i) {
            for (const auto timers = clock.timers; const auto& [id, timer] : timers)
                timer.procedure(nullptr, WM_TIMER, id, 0);
            clock.now += 1u << dice.Below(30);
            if (dice.Below(4) == 0)
                stage.Resize(dice.Below(40), dice.Below(40));
            stage.Repaint();
            if (dice.Below(4) == 0)
                dice.Below(2) == 0 ? stage.script->Resume() : stage.script->Stop();
        }
        stage.script.reset();
        ASSERT_TRUE(clock.timers.empty());
    });
    std::string text = "[a.1]\n";
    for (int i = 60000; i > 0; --i)
        text += "random.1." + std::to_string(i) + "=x\n";
    Stage stage;
    EXPECT_TRUE(stage.Play(text + "[a.2]\ngoto.script=a\nreturnto.step=2147483647\n"));
    clock.Advance(stage.area, 20000);
    EXPECT_EQ(stage.Position(), "a1.1");
}

TEST(PromoPlayback, TenThousandSubStepsTakeNoMoreHandlesThanOne) {
    const HeldClock clock;
    Stage stage(8, 4);
    std::string text = "transition time=5\n";
    const auto effects = Split("color fade|wipe LR|frames fade|per-char delay|none", '|');
    for (std::size_t step = 0; step < effects.size(); ++step)
        text += "[a." + std::to_string(step + 1) + "]\ntext.1=M\nfont size.1=9\ntext.2=N\n" +
                "transition effect=" + effects[step] + "\nbg color=" + std::to_string(step) + "\n";
    ASSERT_TRUE(stage.Play(text));
    clock.Advance(stage.area, 25000);
    const UINT_PTR before = FreshPen();
    const vtr::WindowDc dc(GetDC(stage.area));
    for (int i = 0; i < 10000; ++i) {
        stage.script->Resume();
        for (const DWORD wait : {0UL, 5UL}) {
            clock.now += wait;
            stage.script->OnPaint(dc.Get(), stage.area, {0, 0, 8, 4});
        }
    }
    EXPECT_LE(FreshPen(), before + 20);
}

std::atomic<int> crashes;

LONG CALLBACK CountCrash(EXCEPTION_POINTERS* exception) {
    crashes += exception->ExceptionRecord->ExceptionCode == DWORD{STATUS_ACCESS_VIOLATION};
    return EXCEPTION_CONTINUE_SEARCH;
}

TEST(PromoPlayback, PlaysOrRefusesWithoutMemoryAndGdi) {
    HeldClock clock;
    // What goes wrong within a paint ends there: the system swallows it.
    crashes = 0;
    void* const watching = AddVectoredExceptionHandler(TRUE, &CountCrash);
    const auto play = [&](const std::function<void()>& mend) {
        Stage stage;
        stage.Play(Transition("frames crossfade", "vert=center\n"));
        clock.Advance(stage.area, 700);
        mend();
        EXPECT_TRUE(stage.Play(Transition("color fade")));
        clock.Advance(stage.area, 1200);
        EXPECT_EQ(Seen(stage), "a1.1:r:X");
    };
    const UINT_PTR before = FreshPen();
    const HMODULE library = GetModuleHandleA("vtrutils.dll");
    for (const char* name : {"CreateCompatibleDC", "CreateCompatibleBitmap", "CreateDIBSection",
                             "CreateSolidBrush", "CreateFontIndirectW", "SelectObject", "BitBlt"}) {
        auto none = std::make_unique<ImportPatch>(library, "gdi32.dll", name,
                                                  reinterpret_cast<void*>(+[] { return nullptr; }));
        play([&] { none.reset(); });
    }
    const ImportPatch some(library, "gdi32.dll", "CreateDIBSection",
                           reinterpret_cast<void*>(&MakeSomeFrames));
    for (const int missing : {1, 2, 3}) {
        missingFrame = missing;
        play([] {});
    }
    AllocationFault fault("vtrutils.dll");
    EXPECT_GT(fault.ForEachAllocation([&](unsigned) { play([&] { fault.FailAt(0); }); }), 10u);
    RemoveVectoredExceptionHandler(watching);
    EXPECT_LE(FreshPen(), before + 20) << "objects leave handles";
    EXPECT_EQ(crashes, 0);
}

TEST(PromoPlayback, ExamplesOfTheDocumentPlayAsShown) {
    for (const DocumentExample& example : ExamplesOf("promo-scripts.md")) {
        const HeldClock clock;
        Stage stage;
        stage.script->SetSpecialEventHandler(
            [](const char* event, const char*, char* out, int size, void*) {
                std::snprintf(out, static_cast<std::size_t>(size), "Welcome back, Anna!");
                return std::strcmp(event, "user name") == 0;
            },
            nullptr);
        stage.Prepare(*stage.script, "", example.bytes, "intro");
        ASSERT_TRUE(stage.script->Go()) << example.name;
        for (const DocumentRow& row : example.rows) {
            clock.Advance(stage.area, 5000 + std::stoul(row[0]) - clock.now);
            std::string drawn = clock.drawn;
            std::erase(drawn, '\r');
            SCOPED_TRACE(example.name + " at " + row[0] + ": " + drawn);
            EXPECT_EQ(stage.Position(), row[1]);
            EXPECT_NE(("` or `" + row[2] + "` or `").find("` or `" + drawn + "` or `"),
                      std::string::npos);
        }
    }
}

TEST(PromoPlayback, PlaysByTheRealClock) {
    Stage stage;
    ASSERT_TRUE(stage.Play(
        "wait=1\n[a.1]\ntext.1=X\n[a.2]\ngoto.script=b\nreturnto.script=a\nreturnto.step=3\n"
        "[a.3]\ntext.1=MMM\nbg color=blue\ntransition time=20\ntransition effect=per-char delay\n"
        "text.2=\\n\nwait.2=notify\n"
        "[b.1]\nbg color=red\ntext.1=M\ntransition time=80\ntransition effect=frames crossfade\n"));
    std::string positions;
    PumpUntil("the last sub-step", [&] {
        if (positions.find(stage.Position()) == std::string::npos)
            positions += stage.Position() + " ";
        return stage.Position() == "a3.2" && stage.Corner() == blue;
    });
    EXPECT_TRUE(positions.find("b1.1 a3.1 a3.2") != std::string::npos) << positions;
}
