#include "gallery/pages/promo/ScriptSteps.h"
#include "gallery/pages/promo/StageEvents.h"
#include "gallery/text/Language.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

using gallery::ScriptPosition;

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
        "transition time.3=4\ntransition color.3=red\nrandom.3.1=no\n[";
    EXPECT_EQ("[gallery trial.1]\r\ntext.1 = onetwo\r\nstyle = s\r\nstyle.1 = t\r\nbold.1 = 0\r\n"
              "font size@7.1 = 9\r\nspecial event.1 = date\r\ntransition color.1 = red\r\n"
              "wait.1 = notify\r\ntransition effect.1 = wipe RL\r\ntransition time.1 = 70\r\n"
              "[gallery trial.2]\r\ngoto.script = gallery trial end\r\nreturnto.script = a\r\n"
              "returnto.step = 1\r\n" +
                  document,
              gallery::ScriptWithTrial(document, {"a", 1, 3}, {"wipe RL", 70}));
}

std::string Masked(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }, '.');
    return text;
}

TEST(StageEvents, PutsTheDateOrTheUserInItsPlaceOrLeavesTheText) {
    const auto rewritten = [](const char* event, const char* text, int size) {
        char out[64] = "as it was";
        EXPECT_TRUE(gallery::RewriteEventText(event, text, out, size, nullptr));
        return std::string(out);
    };
    char user[64] = "";
    DWORD size = sizeof user;
    ASSERT_TRUE(GetUserNameA(user, &size));
    const std::string greeting = "Hi " + std::string(user) + "!";
    const int exact = static_cast<int>(greeting.size()) + 1;
    EXPECT_EQ(greeting, rewritten("user", "Hi %1!", exact));
    EXPECT_EQ("as it was", rewritten("user", "Hi %1!", exact - 1));
    EXPECT_EQ("as it was", rewritten("user", "Hi!", 64));
    EXPECT_EQ("as it was", rewritten("weather", "Hi %1!", 64));
    gallery::OpenLanguages();
    EXPECT_EQ("On ../../....", Masked(rewritten("date", "On %1", 64)));
}

} // namespace
