#include "common/Handles.h"
#include "tests/promo/PromoStage.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/DocumentExamples.h"
#include "tests/support/Rounds.h"

#include <cstring>
#include <functional>

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

void NoBackground(HDC, const RECT&, const char*, unsigned, unsigned, void*) {}

/// Position, colour of the corner and text of the last paint, and a sign when no timer runs.
std::string Seen(const Stage& stage) {
    const COLORREF corner = stage.Corner();
    return stage.Position() + ":" +
           (corner == red        ? "r:"
            : corner == blue     ? "b:"
            : corner == 0x00FF00 ? "g:"
                                 : "?:") +
           HeldClock::drawn + (HeldClock::timers.empty() ? "!" : "");
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
    struct Row {
        const char* name;
        std::string document;
        const char* moments; ///< what is done, and what is seen then
    };
    const std::string a = "[a.1]\nbg color.1=red\nbg color.2=green\nbg color.3=blue\ntext.1=X\n"
                          "text.2=Y\ntext.3=Z\n";
    const std::string effect = a + "transition time.1=200\ntransition effect.1=";
    const std::string letters = "wait=100\n[a.1]\nbg color=red\ntext.1=MNO\ntransition time.1=50\n"
                                "transition effect.1=per-char delay\ntext.2=P\n";
    const Row rows[] = {
        {"general wait", "wait=100\n" + a,
         "0 a1.1:r:X 99 a1.1:r:X 1 a1.2:g:XY 100 a1.3:b:XYZ 100 a1.1:r:X"},
        {"other waits", a + "wait=50\nwait.2=300\n", "50 a1.2:g:XY 299 a1.2:g:XY 1 a1.3:b:XYZ"},
        {"what is no wait", "wait=-5\nclear pause=x\n" + a + "wait=1s\nwait.2=-1\n",
         "1999 a1.1:r:X 1 a1.2:g:XY 2000 a1.3:b:XYZ"},
        {"notify", "wait=100\n" + a + "wait.2=NOTIFY\n",
         "100 a1.2:g:XY! 150 a1.2:g:XY! resume a1.3:b:XYZ"},
        {"clear pause", "wait=100\nclear pause=500\n" + a + "clear.3=1\n",
         "499 a1.1:r: 1 a1.1:r:X 100 a1.2:g:XY 100 a1.3:b: 499 a1.3:b: 1 a1.3:b:Z 100 a1.1:r:"},
        {"a time without an effect", "wait=100\ntransition time=500\n" + a,
         "0 a1.1:r:X 100 a1.2:g:XY"},
        {"the same after an effect", "wait=100\ntransition time=300\n" + effect + "color fade\n",
         "300 a1.2:g:XY 100 a1.3:b:XYZ"},
        {"the wait follows the transition", "wait=100\n" + effect + "wipe LR\n",
         "199 a1.1:r: 1 a1.1:r: paint a1.1:r:X 99 a1.1:r:X 1 a1.2:g:XY"},
        {"a pause follows a transition to nothing",
         "clear pause=70\nwait=100\n" + effect + "wipe RL\n",
         "200 a1.1:r: 69 a1.1:r: 1 a1.1:r:X 100 a1.2:g:XY"},
        {"notify after a transition", "wait=100\n" + effect + "color fade\nwait.1=notify\n",
         "200 a1.1:r:! 150 a1.1:r:! paint a1.1:r:X!"},
        {"characters", letters,
         "0 a1.1:r:M 49 a1.1:r:M 1 a1.1:r:MN 50 a1.1:r:MNO 149 a1.1:r:MNO 1 a1.2:r:MNOP"},
        {"characters in a pause", "clear pause=70\n" + letters,
         "49 a1.1:r: 1 a1.1:r:MN 50 a1.1:r:MNO 149 a1.1:r:MNO 1 a1.2:r:MNOP"},
        {"notify after characters", letters + "wait.1=notify\n",
         "99 a1.1:r:MN 1 a1.1:r:MNO "
         "60 a1.1:r:MNO! resume a1.2:r:MNOP"},
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
        {"anew",
         "wait=100\n[a.1]\ntext.1=X\nbg color=red\n[a.2]\ngoto.script=b\n"
         "returnto.script=a\n[b.1]\ntext.1=Y\nbg color=green\n",
         "100 b1.1:g:Y =b b1.1:g:Y 100 b1.1:g:Y =a a1.1:r:X =none none1.1:r:!"},
    };
    for (const Row& row : rows) {
        const HeldClock clock;
        Stage stage;
        stage.script->SetOwnerDrawBackgroundHandler(&NoBackground, nullptr);
        ASSERT_TRUE(stage.Play(row.document)) << row.name;
        std::string seen;
        const auto words = Split(row.moments, ' ');
        for (std::size_t i = 0; i < words.size(); i += 2) {
            Do(words[i], stage);
            seen += (i > 0 ? " " : "") + words[i] + " " + Seen(stage);
        }
        EXPECT_EQ(seen, row.moments) << row.name;
    }
}

TEST(PromoPlayback, TransitionsMixWhatWasAndWhatComes) {
    struct Row {
        const char* effect;
        COLORREF left, right, middle; ///< at 30 %
    };
    constexpr COLORREF fill = 40;
    // 255 x 70 / 100 = 178, 255 x 30 / 100 = 76; fading frames are at 60 % of the colour.
    const Row rows[] = {
        {"color fade", RGB(28, 0, 76), RGB(28, 0, 76), RGB(28, 0, 76)},
        {"frames crossfade", RGB(178, 0, 76), RGB(178, 0, 76), RGB(178, 0, 76)},
        {"frames fade", RGB(126, 0, 0), RGB(126, 0, 0), RGB(126, 0, 0)},
        {"color frame fade pop", RGB(190, 0, 0), RGB(190, 0, 0), RGB(190, 0, 0)},
        {"color rect out", fill, fill, blue},
        {"color rect in", blue, blue, fill},
        {"wipe LR", blue, red, red},
        {"wipe RL", red, blue, red},
        {"color wipe LR", blue, fill, fill},
        {"color wipe RL", fill, blue, fill},
    };
    for (const Row& row : rows) {
        const HeldClock clock;
        Stage stage;
        ASSERT_TRUE(stage.Play(Transition(row.effect)));
        clock.Advance(stage.area, 400);
        EXPECT_TRUE(stage.Pixel(1, 30) == row.left && stage.Pixel(118, 30) == row.right &&
                    stage.Pixel(60, 30) == row.middle)
            << row.effect;
        clock.Advance(stage.area, 700);
        EXPECT_TRUE(stage.Pixel(60, 30) == blue && stage.Corner() == blue) << row.effect;
    }
}

TEST(PromoPlayback, TextStandsWhereMarginsAndAlignmentSay) {
    struct Row {
        const char* name;
        const char* keys;
        LONG left, right, bottom;
        const char* top; ///< a number, or the alignment
        UINT format;
    };
    for (const Row& row :
         {Row{"at first", "", 2, 118, 60, "0", 0},
          Row{"to the right", "horz=right\ntop margin=5\n", 2, 118, 60, "5", DT_RIGHT},
          Row{"middle", "horz=center\nvert=center\ntop margin=30\n", 2, 118, 60, "c", DT_CENTER},
          Row{"at the bottom", "vert=bottom\nbottom margin=7\n", 2, 118, 53, "b", 0},
          Row{"larger", "left margin=5\nleft pct margin=50\n", 62, 118, 60, "0", 0},
          Row{"smaller", "right margin=30\nright pct margin=-9\n", 2, 88, 60, "0", 0},
          Row{"too much", "vert=bottom\nbottom margin=2147483647\nleft margin=2147483647\n", 123,
              118, -1, "0", 0}}) {
        const HeldClock clock;
        Stage stage;
        ASSERT_TRUE(stage.Play(row.keys + std::string("[a.1]\ntext.1=M\n")));
        const LONG height = clock.drawnHeight; // of one line
        const LONG top = row.top[0] == 'c'   ? (row.bottom - height) / 2
                         : row.top[0] == 'b' ? row.bottom - height / 2 - height
                                             : std::stol(row.top);
        EXPECT_EQ(clock.drawnIn, (RECT{row.left, top, row.right, row.bottom})) << row.name;
        EXPECT_EQ(clock.drawnFormat, DT_WORDBREAK | DT_NOPREFIX | row.format) << row.name;
    }
    Stage stage;
    stage.Prepare(*stage.script, "left margin=7\nright pct margin=50\nbottom pct margin=33\n");
    ASSERT_TRUE(stage.script->Load());
    const RECT other{10, 10, 201, 101};
    EXPECT_TRUE(stage.script->LeftMargin(&other) == 7 && stage.script->TopMargin(nullptr) == 0);
    EXPECT_EQ(stage.script->RightMargin(nullptr), 60);
    EXPECT_TRUE(stage.script->RightMargin(&other) == 100 &&
                stage.script->BottomMargin(&other) == 33);
}

TEST(PromoPlayback, WhatCannotPlayIsToldAndLeavesNoTimer) {
    const HeldClock clock;
    const std::string good = "[a.1]\ntext.1=X\n[c.1]\ngoto.script=a\n";
    Stage none(0, 0);
    EXPECT_EQ(none.script->StaticWndFunc(none.area, WM_GETTEXTLENGTH, 0, 0), 0) << "before Go";
    const vtr::WindowDc dc(GetDC(none.window));
    none.script->OnPaint(dc.Get(), none.area, {0, 0, 9, 9});
    EXPECT_EQ(GetPixel(dc.Get(), 1, 1), GetSysColor(COLOR_BTNFACE)) << "before Go";
    EXPECT_FALSE(none.Play(good));
    Stage stage;
    EXPECT_TRUE(stage.Play(good));
    CPromoScript& script = *stage.script;
    EXPECT_TRUE(script.ScriptExists("A") && script.ScriptExists("c"));
    EXPECT_FALSE(script.ScriptExists("b") || script.ScriptExists("") ||
                 script.ScriptExists(nullptr) ||
                 script.ScriptExists(std::string(261, 'a').c_str()));
    script.SetStartScriptName(std::string(260, 'a').c_str());
    EXPECT_FALSE(script.Go());
    script.SetStartScriptName("b");
    EXPECT_TRUE(script.Go()) << "a script without texts ends quietly";
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
    const auto keys = Split(
        "text.1|text.2|random.1.1|goto.script|returnto.script|returnto.step|wait|wait.1|clear.2|"
        "style|bold|font size|horz|vert|left margin|right margin|top pct margin|owner draw bg|"
        "owner draw bg refresh|transition time|transition effect|transition color|bg "
        "color|typeface",
        '|');
    auto values = Split("a|s|1|0|-1|3|15|2147483647|-2147483648|999999999999999999999999999999|"
                        "notify|bottom|CENTER|color rect out|frames fade|wipe RL|per-char delay|"
                        "\\t\\n\\|%s%n",
                        '|');
    values.insert(values.end(), {std::string(1024, 'W'), std::string(2048, '\\')});
    EachRound(64, 60, [&](Dice& dice, int) {
        Stage stage(1 + dice.Below(40), 1 + dice.Below(40));
        stage.script->SetOwnerDrawBackgroundHandler(&NoBackground, nullptr);
        std::string text;
        for (const char* section : {"general", "a.1", "a.2", "s.1", "style.s"}) {
            text += std::string("[") + section + "]\n";
            for (int i = 0; i < 12; ++i)
                text += dice.Any(keys) + "=" + dice.Any(values) + "\n";
        }
        stage.Play(text);
        stage.document.assign(stage.document.size(), ';');
        for (int i = 0; i < 12; ++i) {
            if (!clock.timers.empty())
                clock.timers.begin()->second.procedure(nullptr, WM_TIMER,
                                                       clock.timers.begin()->first, 0);
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

TEST(PromoPlayback, PlaysOrRefusesWithoutMemoryAndGdi) {
    HeldClock clock;
    const auto play = [&](const std::function<void()>& mend) {
        Stage stage;
        stage.Play(Transition("frames crossfade", "vert=center\n"));
        clock.Advance(stage.area, 700);
        mend();
        EXPECT_TRUE(stage.Play(Transition("color fade")));
        clock.Advance(stage.area, 1200);
        EXPECT_EQ(Seen(stage), "a1.1:r:X");
    };
    const HMODULE library = GetModuleHandleA("vtrutils.dll");
    for (const char* name : {"CreateCompatibleDC", "CreateCompatibleBitmap", "CreateDIBSection",
                             "CreateSolidBrush", "CreateFontIndirectW", "SelectObject", "BitBlt"}) {
        auto none = std::make_unique<ImportPatch>(library, "gdi32.dll", name,
                                                  reinterpret_cast<void*>(+[] { return nullptr; }));
        play([&] { none.reset(); });
    }
    AllocationFault fault("vtrutils.dll");
    EXPECT_GT(fault.ForEachAllocation([&](unsigned) { play([&] { fault.FailAt(0); }); }), 10u);
}

TEST(PromoPlayback, ExamplesOfTheDocumentPlayAsShown) {
    for (const DocumentExample& example : ExamplesOf("promo-scripts.md")) {
        const HeldClock clock;
        Stage stage;
        stage.script->SetOwnerDrawBackgroundHandler(&NoBackground, nullptr);
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
            drawn.erase(std::remove(drawn.begin(), drawn.end(), '\r'), drawn.end());
            EXPECT_EQ(stage.Position(), row[1]) << example.name << " at " << row[0];
            EXPECT_NE(("` or `" + row[2] + "` or `").find("` or `" + drawn + "` or `"),
                      std::string::npos)
                << example.name << " at " << row[0] << ": " << drawn;
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
