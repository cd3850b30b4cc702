#include "utilities/base/TextFinder.h"

#include "tests/support/CodePage.h"
#include "tests/support/RandomText.h"

#include <gtest/gtest.h>

namespace {

constexpr struct {
    const char* name;
    int codePage;
    bool exactCase;
    vtr::Characters characters;
} searches[] = {{"bytes", 1252, true, vtr::Characters::singleBytes},
                {"bytes, any case", 1252, false, vtr::Characters::ofCodePage},
                {"characters", 932, true, vtr::Characters::ofCodePage},
                {"characters, any case", 932, false, vtr::Characters::ofCodePage}};

std::string Times(std::size_t count, const std::string& piece) {
    std::string text;
    for (; count > 0; --count)
        text += piece;
    return text;
}

/// A few short pieces, repeated: texts that nearly match at many places.
std::string Periodic(std::mt19937& random, int pieces, bool pairs) {
    std::string text;
    for (; pieces > 0; --pieces) {
        std::string piece = RandomText(random, 3, "aab");
        if (pairs && random() % 4 == 0)
            piece += random() % 2 == 0 ? "\x82\x60" : "\x82\x81"; // wide "A" and "a"
        if (random() % 8 == 0)
            piece += pairs ? "\x82" : "A";
        text += Times(1 + random() % 12, piece);
    }
    return text;
}

/// Compares at each character in turn.
std::size_t PlaceByRule(const vtr::CharacterReader& reader, const std::string& text,
                        const std::string& find) {
    const char* end = text.c_str() + text.size();
    for (const char* at = text.c_str(); at < end; at += reader.Step(at, end)) {
        const char* place = at;
        const char* wanted = find.c_str();
        const char* wantedEnd = wanted + find.size();
        while (wanted < wantedEnd && place < end &&
               reader.Read(wanted, wantedEnd) == reader.Read(place, end))
            if (wanted == wantedEnd)
                return static_cast<std::size_t>(at - text.c_str());
    }
    return std::string::npos;
}

} // namespace

TEST(TextFinder, FindsTheFirstOfNearlyManyPlaces) {
    constexpr unsigned seed = 12;
    std::mt19937 random(seed);
    int found = 0;
    for (const auto& search : searches) {
        const CodePage codePage(search.codePage);
        const bool pairs = search.codePage == 932;
        const vtr::CharacterReader reader(search.exactCase, search.characters);
        for (int round = 0; round < 10'000; ++round) {
            const std::string text = Periodic(random, 12, pairs) + "a";
            std::string find = text.substr(random() % text.size(), 1 + random() % 40);
            if (random() % 3 == 0)
                find += Periodic(random, 1, pairs);
            const vtr::TextFinder finder(find.c_str(), search.exactCase, search.characters);
            const char* hit = finder.Next(text.c_str(), text.c_str() + text.size());
            const std::size_t place = PlaceByRule(reader, text, find);
            ASSERT_EQ(hit, place != text.npos ? text.c_str() + place : nullptr)
                << search.name << ", seed 12, round " << round << ": " << text << ", " << find;
            found += hit != nullptr ? 1 : 0;
        }
    }
    EXPECT_GT(found, 10'000);
    EXPECT_LT(found, 35'000);
}

TEST(TextFinder, ReadsNoCharacterOftenInHostileTexts) {
    constexpr std::size_t n = 20'000;
    for (const auto& search : searches) {
        const CodePage codePage(search.codePage);
        const std::string a = search.codePage == 932 ? "\x82\x81" : "a";
        const struct {
            const char* name;
            std::string text;
            std::string find;
        } cases[] = {{"one letter", Times(2 * n, a), Times(n, a) + "b"},
                     {"half matches", Times(20, Times(n / 5, a) + "b"), Times(n, a)},
                     {"tail first", Times(2 * n, a), a + Times(n, a) + "b" + Times(n, a)}};
        for (const auto& c : cases) {
            std::size_t steps = 0;
            const vtr::TextFinder finder(c.find.c_str(), search.exactCase, search.characters);
            EXPECT_EQ(finder.Next(c.text.c_str(), c.text.c_str() + c.text.size(), steps), nullptr);
            EXPECT_LT(steps, 12 * (c.text.size() + c.find.size())) << search.name << ", " << c.name;
        }
    }
}
