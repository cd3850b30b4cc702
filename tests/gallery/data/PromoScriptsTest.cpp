#include "gallery/text/Text.h"
#include "tests/support/CodePage.h"
#include "tests/support/TestFolder.h"
#include "utilities/text/ini/IniFileReader.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <vector>

namespace {

struct Script {
    std::set<std::string> keys;      ///< with "#" for each number in them
    std::vector<std::string> layout; ///< sections, keys, and what is no text of the language
};

std::string WithoutNumbers(const std::string& key) {
    std::string result;
    for (const char c : key) {
        if (c < '0' || c > '9')
            result += c;
        else if (result.back() != '#')
            result += '#';
    }
    return result;
}

Script Load(const std::string& language, unsigned codePage) {
    const CodePage page(static_cast<int>(codePage));
    const std::string text =
        ReadBytes(gallery::ProgramFolder() + "languages\\" + language + "\\promo-script.ini");
    std::string narrow;
    EXPECT_TRUE(gallery::Narrow(gallery::Widen(text.c_str(), codePage), narrow, codePage));
    EXPECT_EQ(text, narrow) << "not in its code page";
    CIniFileReader document;
    EXPECT_TRUE(document.InitFromBuffer(reinterpret_cast<const unsigned char*>(text.data()),
                                        static_cast<unsigned>(text.size()), /*sort=*/false));
    Script script;
    for (int section = 0; section < static_cast<int>(document.NumSections()); ++section) {
        script.layout.emplace_back(document.SectionName(static_cast<unsigned>(section)));
        for (int pair = 0; pair < document.GetNumValues(section); ++pair) {
            const CIniValue* value = document.GetValue(section, pair);
            const std::string key = WithoutNumbers(value->Key());
            script.keys.insert(key);
            const bool isText = key == "text.#" || key == "random.#.#" || key == "typeface";
            script.layout.push_back(value->Key() +
                                    (isText ? "" : std::string("=") + value->Value()));
            EXPECT_STRNE("", value->Value()) << value->Key();
        }
    }
    return script;
}

std::vector<std::string> Split(const std::string& names) {
    std::vector<std::string> result;
    std::istringstream stream(names);
    for (std::string name; std::getline(stream, name, ';');)
        result.push_back(name);
    return result;
}

TEST(PromoScripts, ShowEveryKeyOfTheLanguageAndTheSameInEachLanguage) {
    const Script english = Load("English", 1252);
    for (const std::string& key :
         Split("text.#;random.#.#;special event.#;wait;wait.#;style;style.#;clear.#;goto.script;"
               "returnto.script;returnto.step;clear pause;typeface;font size;font size.#;"
               "font size@#;font size@#.#;bold;bold.#;italic;underline;horz;horz.#;vert;"
               "text color;bg color;left margin;right margin;top margin;bottom margin;"
               "left pct margin;right pct margin;top pct margin;bottom pct margin;owner draw bg;"
               "owner draw bg name;owner draw bg refresh;transition time;transition color;"
               "transition effect"))
        EXPECT_EQ(1u, english.keys.count(key)) << key;
    for (const std::string& effect :
         Split("none;per-char delay;color fade;frames crossfade;frames fade;color frame fade pop;"
               "color rect out;color rect in;wipe LR;wipe RL;color wipe LR;color wipe RL"))
        EXPECT_LT(0, std::count(english.layout.begin(), english.layout.end(),
                                "transition effect=" + effect))
            << effect;
    EXPECT_EQ(english.layout, Load("German", 1252).layout);
    EXPECT_EQ(english.layout, Load("Russian", 1251).layout);
    EXPECT_EQ(english.layout, Load("Japanese", 932).layout);
}

} // namespace
