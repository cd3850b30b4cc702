#include "tests/promo/Split.h"
#include "tests/support/Rounds.h"
#include "utilities/promo/PromoSequencer.h"
#include "utilities/promo/PromoStyle.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace {

using Section = std::map<std::string, std::string>;
using Document = std::map<std::string, Section>;

void LoadInto(CIniFileReader& reader, const Document& document) {
    std::string text;
    for (const auto& [name, section] : document) {
        text += "[" + name + "]\n";
        for (const auto& [key, value] : section)
            text += static_cast<char>(std::toupper(key[0])) + key.substr(1) + "=" + value + "\n";
    }
    ASSERT_TRUE(reader.InitFromBuffer(reinterpret_cast<const unsigned char*>(text.data()),
                                      static_cast<unsigned>(text.size()), false));
}

std::string Dot(const std::string& name, int number) {
    return name + "." + std::to_string(number);
}

/// Where a script goes on, from the rules of the language.
struct SequencerModel {
    /// Empty: there is no such text.
    std::string Text(int inStep, int inSubStep) {
        Section& section = document[Dot(script, inStep)];
        std::string text = section[Dot("text", inSubStep)];
        const std::string random = Dot("random", inSubStep);
        int others = 0;
        while (text.empty() && !section[Dot(random, others + 1)].empty())
            ++others;
        if (others > 0)
            text = section[Dot(random, std::rand() % others + 1)];
        const std::string event = section[Dot("special event", inSubStep)];
        return text.empty() || event == "veto" ? "" : text + event;
    }

    std::string Next() {
        for (int round = 0; round < 64; ++round) {
            ++subStep;
            if (const auto text = Text(step, subStep); !text.empty())
                return text;
            ++step;
            subStep = 1;
            Section& section = document[Dot(script, step)];
            if (!section["goto.script"].empty()) {
                returnScript = section["returnto.script"];
                const std::string back = section["returnto.step"];
                returnStep = back.empty() || back == "x" ? -1 : std::stoi(back);
                script = section["goto.script"];
                step = 1;
                subStep = 0;
            } else if (const auto text = Text(step, 1); !text.empty()) {
                return text;
            } else if (!returnScript.empty() || returnStep > 0) {
                script = returnScript.empty() ? script : returnScript;
                step = std::max(returnStep, 1);
                subStep = 0;
                returnScript.clear();
                returnStep = -1;
            } else {
                step = 1;
                if (const auto first = Text(1, 1); !first.empty())
                    return first;
            }
        }
        return "";
    }

    Document document;
    std::string script = "a";
    int step = 1;
    int subStep = 0;
    std::string returnScript = "";
    int returnStep = -1;
};

Document RandomScripts(Dice& dice) {
    const char* const names[] = {"a", "b", "c", ""};
    Document document;
    for (int i = 2 + dice.Below(8); i > 0; --i) {
        const std::string name = Dot(names[dice.Below(3)], 1 + dice.Below(4));
        Section& section = document[name];
        for (int n = 1; n < 4; ++n) {
            if (dice.Below(2) == 0)
                section[Dot("text", n)] = name + " " + std::to_string(n);
            for (int m = 1; m < 4 && dice.Below(3) == 0; ++m)
                section[Dot(Dot("random", n), m + dice.Below(2))] = Dot(name, m * 10 + n);
            if (dice.Below(5) == 0)
                section[Dot("special event", n)] = dice.Below(2) == 0 ? "veto" : "changed";
        }
        if (dice.Below(2) == 0) {
            section["goto.script"] = names[dice.Below(4)];
            section["returnto.script"] = names[dice.Below(4)];
            section["returnto.step"] =
                std::vector{"", "x", "0", "2", "3", "-4"}[static_cast<std::size_t>(dice.Below(6))];
        }
    }
    return document;
}

/// What a style sets.
struct StyleFields {
    LOGFONTA font{};
    COLORREF background, text, transition;
    int horizontal, vertical, refresh, time, effect, pixels[4], percents[4];
    UINT format;
    bool hostDrawn;
    char name[260];
    const vtr::PromoStyle style{font,    background, text,     horizontal, vertical,
                                format,  pixels,     percents, hostDrawn,  name,
                                refresh, time,       effect,   transition};
};

} // namespace

TEST(PromoModel, TextsFollowAsTheRulesSay) {
    int shown = 0;
    EachRound(62, 2000, [&](Dice& dice, int) {
        const Document document = RandomScripts(dice);
        CIniFileReader reader;
        LoadInto(reader, document);
        char script[260] = "a", returnScript[260] = "";
        int step = 1, subStep = 0, returnStep = -1;
        bool* mark = nullptr;
        const vtr::PromoEvents events{[](const char* event, const char*, char* out, int, void*) {
                                          std::strcat(out, event);
                                          return std::string(event) != "veto";
                                      },
                                      nullptr, mark};
        const vtr::PromoSequencer sequencer(reader, events);
        SequencerModel model{document};
        for (int move = 0; move < 40; ++move) {
            char text[64];
            std::srand(static_cast<unsigned>(move));
            sequencer.Next({script, step, subStep, returnScript, returnStep}, text, sizeof text);
            std::srand(static_cast<unsigned>(move));
            const std::string expected = model.Next();
            ASSERT_EQ(text, expected) << "move " << move;
            ASSERT_EQ(std::tie(script, step, subStep),
                      std::tie(model.script, model.step, model.subStep))
                << "move " << move;
            shown += expected.empty() ? 0 : 1;
        }
    });
    EXPECT_GT(shown, 20000);
}

TEST(PromoModel, ThePropertyOfTheLastSourceThatHasAValidOneCounts) {
    struct Kind {
        const char* key;
        long long initial;
        const char*
            values; ///< texts and what each sets; after the semicolon those that set nothing
    };
    const Kind kinds[] = {
        {"bold", 400, "1=700|0=400;yes|01"},
        {"italic", 0, "1=1|0=0;true|-1"},
        {"underline", 0, "1=1|0=0;2"},
        {"font size", -14, "20=-20|0=0;-3|1.5"},
        {"typeface", 'A',
         "Q=81|W234567890123456789012345678901=87;Z2345678901234567890123456789012"},
        {"horz", 0, "left=0|CENTER=1|Right=2;top"},
        {"vert", 0, "TOP=0|center=1|bottom=2;left"},
        {"text color", GetSysColor(COLOR_BTNTEXT), "RED=255|77=77|pink=16744703;purple|-5"},
        {"bg color", GetSysColor(COLOR_BTNFACE), "navy=8388608|Light Yellow=8454143;navy blue"},
        {"transition color", 0, "blue=16711680|orange=33023;0x12"},
        {"owner draw bg", 0, "1=1|0=0|2=0;on"},
        {"owner draw bg name", 0, "s=115|t=116;"},
        {"owner draw bg refresh", 0, "40=40|-1=-1;4e1"},
        {"transition time", 0, "500=500|123456789012345678901234567890=2147483647;-"},
        {"transition effect", 0, "none=0|Wipe rl=9|color wipe LR=10;wipe"},
    };
    const std::string here = "font size@" + std::to_string(GetSystemMetrics(SM_CXFULLSCREEN));
    EachRound(63, 600, [&](Dice& dice, int) {
        const std::string styles[] = {dice.Below(3) == 0 ? "" : "s", dice.Below(3) == 0 ? "" : "t"};
        Document document;
        document["a.1"] = {{"style", styles[0]}, {"style.2", styles[1]}};
        long long expected[std::size(kinds)];
        std::transform(std::begin(kinds), std::end(kinds), expected,
                       [](const Kind& kind) { return kind.initial; });
        int pixels[4]{}, percents[4]{};
        // The sources of a sub-step's properties, the first one first.
        for (const auto& [section, suffix] : {std::pair<std::string, std::string>("general", ""),
                                              {"style." + styles[0], ""},
                                              {"a.1", ""},
                                              {"style." + styles[1], ""},
                                              {"a.1", ".2"}}) {
            if (section == "style.")
                continue;
            Section& keys = document[section];
            for (std::size_t i = 0; i < std::size(kinds); ++i) {
                const int choice = dice.Below(3);
                const auto values = Split(kinds[i].values, ';');
                const auto valid = Split(dice.Any(Split(values[0], '|')), '=');
                if (choice == 0)
                    expected[i] = std::stoll(valid[1]);
                if (choice < 2)
                    keys[kinds[i].key + suffix] =
                        choice == 0 ? valid[0] : dice.Any(Split(values[1], '|'));
            }
            if (dice.Below(6) == 0) {
                keys[here + suffix] = "31";
                expected[3] = -31;
            }
            if (dice.Below(6) == 0)
                keys["font size@1" + suffix] = "32";
            for (std::size_t side = 0; side < 4; ++side) {
                const std::string name = std::vector{"left", "top", "right", "bottom"}[side];
                const int pixel = dice.Below(4), percent = dice.Below(4);
                if (pixel < 2)
                    keys[name + " margin" + suffix] = pixel == 0 ? "12" : "x";
                if (percent < 2)
                    keys[name + " pct margin" + suffix] = percent == 0 ? "-5" : "x5";
                if (pixel == 0 || percent == 0) {
                    pixels[side] = pixel == 0 ? 12 : 0;
                    percents[side] = percent == 0 ? -5 : 0;
                }
            }
        }
        CIniFileReader reader;
        LoadInto(reader, document);
        StyleFields fields;
        const vtr::PromoStyle& s = fields.style;
        const LOGFONTA& font = s.font;
        s.Resolve(reader, "a", 1, 2);
        const LONG values[] = {font.lfWeight,
                               font.lfItalic,
                               font.lfUnderline,
                               font.lfHeight,
                               font.lfFaceName[0],
                               s.horizontal,
                               s.vertical,
                               LONG(s.textColor),
                               LONG(s.backgroundColor),
                               LONG(s.transitionColor),
                               s.hostBackground,
                               s.hostBackgroundName[0],
                               s.refreshPeriod,
                               s.transitionTime,
                               s.effect};
        for (std::size_t i = 0; i < std::size(kinds); ++i)
            EXPECT_EQ(values[i], expected[i]) << kinds[i].key;
        const UINT aligned[] = {0, DT_CENTER, DT_RIGHT};
        EXPECT_EQ(s.textFormat, DT_WORDBREAK | DT_NOPREFIX | aligned[s.horizontal]);
        EXPECT_TRUE(std::equal(pixels, pixels + 4, s.marginPixels) &&
                    std::equal(percents, percents + 4, s.marginPercents));
    });
}
