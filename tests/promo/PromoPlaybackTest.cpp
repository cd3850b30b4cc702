#include "tests/promo/PromoStage.h"

#include "tests/support/Rounds.h"

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

} // namespace

TEST(PromoPlayback, EachSubStepHasItsTime) {
    struct Row {
        const char* name;
        std::string document;
        const char*
            moments; ///< milliseconds, position, colour of the corner, whether there is text
    };
    const std::string a = "[a.1]\nbg color.1=red\nbg color.2=green\nbg color.3=blue\ntext.1=X\n"
                          "text.2=X\ntext.3=X\n";
    const std::string effect = a + "transition time.1=200\ntransition effect.1=";
    const Row rows[] = {
        {"general wait", "wait=100\n" + a,
         "0 a1.1:r* 99 a1.1:r* 1 a1.2:g* 100 a1.3:b* 100 a1.1:r*"},
        {"other waits", a + "wait=50\nwait.2=300\n", "50 a1.2:g* 299 a1.2:g* 1 a1.3:b*"},
        {"what is no wait", "wait=-5\nclear pause=x\n" + a + "wait=1s\nwait.2=-1\n",
         "1999 a1.1:r* 1 a1.2:g* 2000 a1.3:b*"},
        {"notify", "wait=100\n" + a + "wait.2=NOTIFY\n", "100 a1.2:g* 150 a1.2:g*"},
        {"clear pause", "wait=100\nclear pause=500\n" + a + "clear.3=1\n",
         "499 a1.1:r 1 a1.1:r* 100 a1.2:g* 100 a1.3:b 499 a1.3:b 1 a1.3:b* 100 a1.1:r"},
        {"a time without an effect", "wait=100\ntransition time=500\n" + a,
         "0 a1.1:r* 100 a1.2:g*"},
        {"the same after an effect", "wait=100\ntransition time=300\n" + effect + "color fade\n",
         "300 a1.2:g* 100 a1.3:b*"},
        {"the wait follows the transition", "wait=100\n" + effect + "wipe LR\n",
         "199 a1.1:r* 1 a1.1:r* 99 a1.1:r* 1 a1.2:g*"},
        {"a pause follows a transition to nothing",
         "clear pause=70\nwait=100\n" + effect + "wipe RL\n",
         "200 a1.1:r 69 a1.1:r 1 a1.1:r* 100 a1.2:g*"},
        {"notify after a transition", "wait=100\n" + effect + "color fade\nwait.1=notify\n",
         "200 a1.1:r* 150 a1.1:r*"},
        {"notify after characters", "wait=100\n" + effect + "per-char delay\nwait.1=notify\n",
         "0 a1.1:r* 250 a1.1:r* 150 a1.1:r*"},
    };
    for (const Row& row : rows) {
        const HeldClock clock;
        Stage stage;
        ASSERT_TRUE(stage.Play(row.document)) << row.name;
        std::string seen;
        const auto words = Split(row.moments, ' ');
        for (std::size_t i = 0; i < words.size(); i += 2) {
            clock.Advance(stage.area, std::stoul(words[i]));
            const COLORREF corner = stage.Corner();
            const RECT ink = stage.Ink();
            seen += (i > 0 ? " " : "") + words[i] + " " + stage.Position() + ":" +
                    (corner == red    ? "r"
                     : corner == blue ? "b"
                                      : "g") +
                    (IsRectEmpty(&ink) ? "" : "*");
        }
        EXPECT_EQ(seen, row.moments) << row.name;
        if (clock.timers.empty()) {
            const std::string before = stage.Position();
            stage.script->Resume();
            EXPECT_NE(stage.Position(), before) << row.name;
        }
    }
}

TEST(PromoPlayback, CharactersComeOneByOneAndTextsAreAppended) {
    const HeldClock clock;
    Stage stage;
    ASSERT_TRUE(stage.Play("wait=100\n[a.1]\ntext.1=MMM\ntransition time.1=50\n"
                           "transition effect.1=per-char delay\ntext.2=M\n"));
    LONG last = 0;
    for (const DWORD after : {0UL, 50UL, 50UL, 150UL}) {
        if (after > 0)
            clock.Advance(stage.area, after - 1);
        EXPECT_TRUE(after == 0 || stage.Ink().right == last) << "1 ms before";
        clock.Advance(stage.area, after > 0 ? 1 : 0);
        EXPECT_GT(stage.Ink().right, last);
        last = stage.Ink().right;
    }
    EXPECT_EQ(stage.Position(), "a1.2");
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
        SCOPED_TRACE(row.effect);
        const HeldClock clock;
        Stage stage;
        ASSERT_TRUE(stage.Play(Transition(row.effect)));
        clock.Advance(stage.area, 400);
        EXPECT_EQ(stage.Pixel(1, 30), row.left);
        EXPECT_EQ(stage.Pixel(118, 30), row.right);
        EXPECT_EQ(stage.Pixel(60, 30), row.middle);
        clock.Advance(stage.area, 700);
        const RECT ink = stage.Ink();
        EXPECT_TRUE(IsRectEmpty(&ink) && stage.Corner() == blue);
    }
    const HeldClock clock;
    Stage first;
    ASSERT_TRUE(first.Play("[a.1]\ntext.1=X\nbg color=blue\ntransition time=100\n"
                           "transition effect=wipe LR\n"));
    EXPECT_EQ(first.Corner(), blue) << "before the first message there is its background";
    EXPECT_EQ(first.Ink().right, 0);
}

TEST(PromoPlayback, AChangeOfSizeEndsTheTransition) {
    const HeldClock clock;
    Stage stage;
    ASSERT_TRUE(stage.Play(Transition("frames crossfade")));
    clock.Advance(stage.area, 350);
    stage.Resize(130, 70);
    clock.Advance(stage.area, 99);
    EXPECT_EQ(stage.Corner(), blue);
    EXPECT_EQ(stage.Position(), "a2.1");
    clock.Advance(stage.area, 1);
    EXPECT_EQ(stage.Position(), "a1.1");
    stage.Resize(0, 0);
    clock.Advance(stage.area, 5000);
    stage.Resize(40, 40);
    clock.Advance(stage.area, 1000);
    EXPECT_EQ(stage.Corner(), blue);
}

TEST(PromoPlayback, StopFreezesUntilResume) {
    const HeldClock clock;
    Stage stage;
    stage.script->SetOwnerDrawBackgroundHandler(&NoBackground, nullptr);
    ASSERT_TRUE(stage.Play(Transition("wipe LR", "owner draw bg=1\nowner draw bg refresh=20\n")));
    clock.Advance(stage.area, 600);
    EXPECT_EQ(clock.timers.size(), 2u);
    stage.script->Stop();
    clock.now += 400;
    stage.Repaint();
    EXPECT_TRUE(clock.timers.empty());
    EXPECT_TRUE(stage.Pixel(50, 50) == blue && stage.Pixel(70, 50) == red);
    stage.script->Resume();
    EXPECT_EQ(stage.Position(), "a1.1");
    clock.Advance(stage.area, 100);
    EXPECT_EQ(stage.Position(), "a2.1");
}

TEST(PromoPlayback, TextStandsWhereMarginsAndAlignmentSay) {
    struct Row {
        const char* name;
        const char* keys;
        RECT place; ///< has all the ink
    };
    for (const Row& row : {Row{"at first", "", {2, 0, 40, 30}},
                           Row{"to the right", "horz=right\n", {80, 0, 118, 30}},
                           Row{"middle", "horz=center\nvert=center\n", {40, 15, 80, 45}},
                           Row{"at the bottom", "vert=bottom\n", {2, 30, 40, 60}},
                           Row{"pixels", "left margin=50\ntop margin=30\n", {52, 30, 90, 60}},
                           Row{"larger", "left margin=5\nleft pct margin=50\n", {62, 0, 99, 30}}}) {
        const HeldClock clock;
        Stage stage;
        ASSERT_TRUE(stage.Play(row.keys + std::string("bg color=white\n[a.1]\ntext.1=M\n")));
        const RECT ink = stage.Ink();
        EXPECT_TRUE(ink.right > ink.left && ink.left >= row.place.left &&
                    ink.right <= row.place.right && ink.top >= row.place.top &&
                    ink.bottom <= row.place.bottom)
            << row.name << ": " << ink.left << " " << ink.top;
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
    const auto any = [](Dice& dice, const auto& all) {
        return all[static_cast<std::size_t>(dice.Below(static_cast<int>(all.size())))];
    };
    EachRound(64, 60, [&](Dice& dice, int) {
        Stage stage(1 + dice.Below(40), 1 + dice.Below(40));
        stage.script->SetOwnerDrawBackgroundHandler(&NoBackground, nullptr);
        std::string text;
        for (const char* section : {"general", "a.1", "a.2", "s.1", "style.s"}) {
            text += std::string("[") + section + "]\n";
            for (int i = 0; i < 12; ++i)
                text += any(dice, keys) + "=" + any(dice, values) + "\n";
        }
        stage.Play(text);
        for (int i = 0; i < 12; ++i) {
            if (!clock.timers.empty())
                clock.timers.begin()->second.procedure(nullptr, WM_TIMER,
                                                       clock.timers.begin()->first, 0);
            clock.now += 1u << dice.Below(30);
            stage.Repaint();
            if (dice.Below(4) == 0)
                stage.script->Resume();
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

TEST(PromoPlayback, GoBeginsAnewAndTakesTheTimers) {
    const HeldClock clock;
    Stage stage, other;
    const std::string jump = "wait=100\n[a.1]\ntext.1=X\n[a.2]\ngoto.script=b\n"
                             "returnto.script=c\n[b.1]\ntext.1=X\n[c.1]\ntext.1=X\n";
    ASSERT_TRUE(stage.Play(jump));
    clock.Advance(stage.area, 100);
    EXPECT_EQ(stage.Position(), "b1.1");
    stage.script->SetStartScriptName("b");
    EXPECT_TRUE(stage.script->Go());
    clock.Advance(stage.area, 150);
    EXPECT_EQ(stage.Position(), "b1.1");
    ASSERT_TRUE(other.Play(jump));
    stage.script->Resume();
    EXPECT_EQ(clock.timers.size(), 1u);
    clock.Advance(other.area, 100);
    EXPECT_EQ(other.Position(), "b1.1");
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
