#include "gallery/pages/promo/ScriptSteps.h"

#include <gtest/gtest.h>

namespace {

TEST(ScriptSteps, AreSectionsWithANumberButStyles) {
    const char document[] =
        "[general]\nwait=1\n[b.1]\nrandom.1.1=r\nwait.2=NOTIFY\n[b.02]\ntext.1=no\n"
        "[style.1]\nbold=1\n[b]\nx=1\n[.3]\nx=1\n[c.x.12]\ngoto.script=b\n"
        "[b.0]\nx=1\n[b.99999999999]\nx=1\n";
    const auto steps = gallery::StepsOf(document);
    ASSERT_EQ(2u, steps.size());
    EXPECT_EQ("b 1 r ", steps[0].script + " " + std::to_string(steps[0].number) + " " +
                            steps[0].text + " " + steps[0].target);
    EXPECT_EQ("c.x 12  b", steps[1].script + " " + std::to_string(steps[1].number) + " " +
                               steps[1].text + " " + steps[1].target);
    EXPECT_FALSE(gallery::WaitsForResume(document, {"b", 1, 1}));
    EXPECT_TRUE(gallery::WaitsForResume(document, {"b", 1, 2}));
}

TEST(ScriptSteps, ATrialShowsTheTextOfAStepInItsStyleWithAnotherEffect) {
    const std::string document =
        "[a.1]\ntext.1=zero\ntext.2=one\nclear.2=1\ntext.3= two\nstyle=s\nstyle.3=t\nbold.2=1\n"
        "bold.3=0\nfont size@7.3=9\nwait=5\nspecial event.3=date\ntransition effect=none\n"
        "transition time.3=4\ntransition color.3=red\nRandom.3.1=no\nitalic=\n[";
    EXPECT_EQ(
        "[gallery trial.1]\r\ntext.1 = onetwo\r\nstyle = s\r\nstyle.1 = t\r\nbold.1 = 0\r\n"
        "font size@7.1 = 9\r\nspecial event.1 = date\r\ntransition color.1 = red\r\nitalic = \r\n"
        "wait.1 = notify\r\ntransition effect.1 = wipe RL\r\ntransition time.1 = 70\r\n"
        "[gallery trial.2]\r\ngoto.script = gallery trial end\r\nreturnto.script = a\r\n"
        "returnto.step = 1\r\n" +
            document,
        gallery::ScriptWithTrial(document, {"a", 1, 3}, {"wipe RL", 70}));
}

} // namespace
