#include "tests/promo/Split.h"
#include "tests/support/Rounds.h"
#include "utilities/promo/PromoSequencer.h"
#include "utilities/promo/PromoStyle.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace {

using Section = std::map<std::string, std::string>;
using Document = std::map<std::string, Section>;

void LoadInto(CIniFileReader& reader, const Document& document) {
    std::string text;
    for (const auto& [name, section] : document) {
        text += "[" + name + "]\r\n";
        for (const auto& [key, value] : section)
            text += static_cast<char>(std::toupper(key[0])) + key.substr(1) + "=" + value + "\r\n";
    }
    ASSERT_TRUE(reader.InitFromBuffer(reinterpret_cast<const unsigned char*>(text.data()),
                                      static_cast<unsigned>(text.size()), false));
}

std::string Get(const Document& document, const std::string& section, const std::string& key) {
    const auto found = document.find(section);
    const auto value = found != document.end() ? found->second.find(key) : Section::iterator{};
    return found != document.end() && value != found->second.end() ? value->second : "";
}

std::string Dot(const std::string& name, int number) {
    return name + "." + std::to_string(number);
}

/// Where a script goes on, from the rules of the language.
struct SequencerModel {
    /// Empty: there is no such text.
    std::string Text(int inStep, int inSubStep) const {
        const std::string section = Dot(script, inStep);
        std::string text = Get(document, section, Dot("text", inSubStep));
        std::vector<std::string> others;
        for (std::string one; text.empty(); others.push_back(one)) {
            const int number = static_cast<int>(others.size()) + 1;
            one = Get(document, section, Dot(Dot("random", inSubStep), number));
            if (one.empty())
                break;
        }
        if (!others.empty())
            text = others[static_cast<std::size_t>(std::rand()) % others.size()];
        const std::string event = Get(document, section, Dot("special event", inSubStep));
        return text.empty() || event == "veto" ? "" : text + event;
    }

    std::string Next() {
        for (int round = 0; round < 64; ++round) {
            ++subStep;
            if (const auto text = Text(step, subStep); !text.empty())
                return text;
            ++step;
            subStep = 1;
            const std::string section = Dot(script, step);
            if (const std::string target = Get(document, section, "goto.script"); !target.empty()) {
                returnScript = Get(document, section, "returnto.script");
                const std::string back = Get(document, section, "returnto.step");
                returnStep = back.empty() || back == "x" ? -1 : std::stoi(back);
                script = target;
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

    const Document& document;
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

/// The sources of a sub-step's properties, the first one first, as (section, suffix of keys).
std::vector<std::pair<std::string, std::string>> Sources(const Document& document) {
    return {{"general", ""},
            {"style." + Get(document, "a.1", "style"), ""},
            {"a.1", ""},
            {"style." + Get(document, "a.1", "style.2"), ""},
            {"a.1", ".2"}};
}

} // namespace

TEST(PromoModel, TextsFollowAsTheRulesSay) {
    int shown = 0;
    EachRound(62, 2000, [&](Dice& dice, int) {
        const Document document = RandomScripts(dice);
        CIniFileReader reader;
        LoadInto(reader, document);
        char script[260] = "a";
        char returnScript[260] = "";
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
            ASSERT_EQ(Dot(Dot(script, step), subStep),
                      Dot(Dot(model.script, model.step), model.subStep))
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
        Document document;
        document["a.1"] = {{"style", dice.Below(3) == 0 ? "" : "s"},
                           {"style.2", dice.Below(3) == 0 ? "" : "t"}};
        const auto sources = Sources(document);
        long long expected[std::size(kinds)];
        for (std::size_t i = 0; i < std::size(kinds); ++i)
            expected[i] = kinds[i].initial;
        int pixels[4]{}, percents[4]{};
        for (const auto& [section, suffix] : sources) {
            if (section == "style.")
                continue;
            Section& keys = document[section];
            for (std::size_t i = 0; i < std::size(kinds); ++i) {
                const auto valid = Split(Split(kinds[i].values, ';')[0], '|');
                const auto invalid = Split(Split(kinds[i].values, ';')[1], '|');
                const int choice = dice.Below(3);
                if (choice == 0) {
                    const auto value = Split(dice.Any(valid), '=');
                    keys[kinds[i].key + suffix] = value[0];
                    expected[i] = std::stoll(value[1]);
                } else if (choice == 1) {
                    keys[kinds[i].key + suffix] = dice.Any(invalid);
                }
            }
            if (dice.Below(6) == 0) {
                keys[here + suffix] = "31";
                expected[3] = -31;
            }
            if (dice.Below(6) == 0)
                keys["font size@1" + suffix] = "32";
            for (int side = 0; side < 4; ++side) {
                const std::string name =
                    std::vector{"left", "top", "right", "bottom"}[static_cast<std::size_t>(side)];
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
        s.Resolve(reader, "a", 1, 2);
        const LONG values[] = {// in the order of the kinds
                               s.font.lfWeight,
                               s.font.lfItalic,
                               s.font.lfUnderline,
                               s.font.lfHeight,
                               s.font.lfFaceName[0],
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
        EXPECT_TRUE(std::equal(pixels, pixels + 4, s.marginPixels));
        EXPECT_TRUE(std::equal(percents, percents + 4, s.marginPercents));
    });
}

TEST(PromoModel, EscapesBecomeBreaksAndTabs) {
    struct Row {
        const char* name;
        const char* text;
        const char* expected;
    };
    for (const Row& row :
         {Row{"both", "a\\tb\\nc", "a\tb\r\nc"}, Row{"at the end", "a\\n", "a\r\n"},
          Row{"tab at the end", "\\t", "\t"}, Row{"tabs", "\\t\\t\\t", "\t\t\t"},
          Row{"others stay", "\\a\\\\n\\", "\\a\\\r\n\\"}, Row{"empty", "", ""}}) {
        char text[32];
        std::strcpy(text, row.text);
        vtr::UnescapePromoText(text);
        EXPECT_STREQ(text, row.expected) << row.name;
    }
}
