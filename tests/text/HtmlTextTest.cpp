#include "utilities/text/HtmlText.h"
#include "utilities/text/StringFunctions.h"

#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/Watchdog.h"

#include <gtest/gtest.h>
#include <random>

namespace {

std::string Decoded(std::string_view text) {
    GuardedBytes buffer(text);
    DeHTMLifyString(buffer.Data(), static_cast<unsigned>(text.size() + 1));
    return buffer.Data();
}

/// The reference that begins the text: what it gives and the length it has, or 0.
std::pair<std::string, std::size_t> ModelReference(const std::string& text) {
    if (text.starts_with("%20"))
        return {" ", 3};
    if (text.starts_with("&#")) {
        const bool hex = text.starts_with("&#x");
        const std::size_t start = hex ? 3 : 2;
        const std::size_t end =
            text.find_first_not_of(hex ? "0123456789abcdefABCDEF" : "0123456789", start);
        if (end == text.npos || text[end] != ';' || end == start || end - start > 15)
            return {"", 0};
        const std::string digits = text.substr(start, end - start);
        const long long value = hex ? HexStringToInt(digits.c_str()) : std::stoll(digits);
        return {std::string(1, value < 256 ? static_cast<char>(value) : '?'), end + 1};
    }
    for (const auto& [name, replacement] : {std::pair{"&amp;", "&"},
                                            {"&lt", "<"},
                                            {"&gt", ">"},
                                            {"&eacute;", "?"},
                                            {"&yuml;", "\xFF"}}) {
        if (_strnicmp(text.c_str(), name, std::strlen(name)) == 0)
            return {replacement, std::strlen(name)};
    }
    return {"", 0};
}

std::string ModelDecoded(const std::string& text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size();) {
        const auto [replacement, length] = ModelReference(text.substr(i));
        decoded += length > 0 ? replacement : text.substr(i, 1);
        i += length > 0 ? length : 1;
    }
    return decoded.c_str();
}

std::string Linked(std::string_view text, long room = 1000) {
    GuardedBytes source(text);
    GuardedBytes buffer(static_cast<std::size_t>(room));
    ParseForHTML(source.Data(), static_cast<long>(text.size()), buffer.Data(), room);
    EXPECT_EQ(source.Data(), text) << "the source was changed";
    return buffer.Data();
}

std::string Link(const std::string& address, const std::string& text) {
    return "<a href=\"" + address + "\">" + text + "</a>";
}

} // namespace

TEST(HtmlText, References) {
    for (const auto& [text, expected] :
         {std::pair{"Tom &amp; Jerry%20&#65;&#x42;&lt;", "Tom & Jerry AB<;"},
          {"&amp;amp; &amp;lt", "&amp; &lt"},
          {"&APOS;&Quot;&nbsp;&gt", "'\" >"},
          {"&eacute;&Eacute;&iexcl;&thorn;&yuml;&szlig;", "????\xFF?"},
          {"&eacute &eacutes; &foo; & &", "&eacute &eacutes; &foo; & &"},
          {"&#300;&#x1F600;&#255;&#256;", "??\xFF?"},
          {"&#x100;&#xFFF;&#xffff;", " ??"}, // 1*2*16, 15 + 15*16 + 15*32, ...
          {"&#12a;&#x1g;&#;&#x;&#X41;&#65", "&#12a;&#x1g;&#;&#x;&#X41;&#65"},
          {"&#000000000000065;&#0000000000000065;", "A&#0000000000000065;"},
          {"&#x000000000000041;&#x0000000000000041;", "A&#x0000000000000041;"},
          {"&#999999999999999;", "?"},
          {"a&#0;b", "a"},
          {"100%2 %2", "100%2 %2"}})
        EXPECT_EQ(Decoded(text), expected) << text;
    DeHTMLifyString(nullptr, 10);
    char text[] = "%20";
    DeHTMLifyString(text, 1);
    EXPECT_STREQ(text, "%20");
}

TEST(HtmlText, RandomReferencesAreReadAsTheModelReadsThem) {
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    static constexpr const char* pieces[] = {"&",       "#",      "x", ";",    "%20", "%",
                                             "2",       "0",      "6", "amp;", "&lt", "&GT;",
                                             "eacute;", "&Yuml;", "f", "&#x",  "&#"};
    for (unsigned round = 0; round < 10'000; ++round) {
        std::string text;
        for (unsigned count = random() % 12; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        ASSERT_EQ(Decoded(text), ModelDecoded(text)) << text << ", seed " << seed;
    }
}

TEST(HtmlText, Links) {
    const std::string mail = Link("mailto:a@b.de", "a@b.de");
    for (const auto& [text, expected] : std::initializer_list<std::pair<const char*, std::string>>{
             {"", ""},
             {"plain text, no link. At all", "plain text, no link. At all"},
             {"write to a@b.de\r\n\tnow", "write to " + mail + "\r\n\tnow"},
             {"<b>a@b.de</b>", "<b>" + mail + "</b>"},
             {"mailto:a@b.de", Link("mailto:a@b.de", "a@b.de")},
             {"a@b. @.x. a@b..",
              "a@b. " + Link("mailto:@.x.", "@.x.") + " " + Link("mailto:a@b..", "a@b..")},
             {"mailto:www.x", "mailto:www.x"},
             {"http://x www wwwx", Link("http://x", "http://x") + " " + Link("http://www", "www") +
                                       " " + Link("http://wwwx", "wwwx")},
             {"x.com x.education .org.", Link("http://x.com", "x.com") + " " +
                                             Link("http://x.education", "x.education") + " " +
                                             Link("http://.org.", ".org.")},
             {"https://x HTTP://x xwww", "https://x HTTP://x xwww"},
             {"hrefa@b.de www.href", "hrefa@b.de www.href"},
             {"<a title=x.com a@b.de>y</a>", "<a title=x.com a@b.de>y</a>"},
             {"a > b >> <www", "a > b >> <www"}})
        EXPECT_EQ(Linked(text), expected) << text;
    const CodePage japanese(932);
    EXPECT_EQ(Linked("\x81\x40v1.0 \x83hrefa@b.de"),
              "\x81\x40v1.0 " + Link("mailto:\x83hrefa@b.de", "\x83hrefa@b.de"))
        << "\"@\" and \"h\" are halves of characters";
}

TEST(HtmlText, LinksAreCutToTheBuffer) {
    const std::string whole = Linked("see www.x.org <b> and a@b.de ");
    for (long room = 1; room <= static_cast<long>(whole.size()) + 1; ++room)
        EXPECT_EQ(Linked("see www.x.org <b> and a@b.de ", room),
                  whole.substr(0, static_cast<std::size_t>(room) - 1));
    char source[] = "www.x\0y";
    char buffer[100] = "old";
    ParseForHTML(source, 2, buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "ww");
    ParseForHTML(source, 7, buffer, sizeof buffer);
    EXPECT_EQ(buffer, Link("http://www.x", "www.x"));
    ParseForHTML(source, -1, buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "");
    ParseForHTML(nullptr, 5, buffer, sizeof buffer);
    ParseForHTML(source, 5, nullptr, 5);
    ParseForHTML(source, 5, buffer, 0);
}

TEST(HtmlText, HostileTextsTakeLinearTime) {
    const Watchdog watchdog("HtmlText.HostileTextsTakeLinearTime");
    constexpr std::size_t size = 500'000;
    for (const std::string_view repeated :
         {"&", "&#", "&#x", "&#1", "%", "<", ">", "@", ".", "@.", "www ", "href", "&eacute"}) {
        std::string text;
        while (text.size() < size)
            text += repeated;
        std::string linked(size + 1, '\0');
        ParseForHTML(text.data(), size, linked.data(), size + 1);
        EXPECT_EQ(std::strlen(linked.c_str()), size) << repeated;
        const std::string before = text;
        DeHTMLifyString(text.data(), static_cast<unsigned>(text.size() + 1));
        EXPECT_EQ(text, before) << repeated;
    }
}
