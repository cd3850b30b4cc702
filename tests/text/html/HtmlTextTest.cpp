#include "utilities/text/html/HtmlText.h"

#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/Watchdog.h"

#include <gtest/gtest.h>

namespace {

std::string Decoded(std::string_view text) {
    GuardedBytes buffer(text);
    DeHTMLifyString(buffer.Data(), static_cast<unsigned>(text.size() + 1));
    return buffer.Data();
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

constexpr std::pair<const char*, const char*> references[] = {
    {"Tom &amp; Jerry%20&#65;&#x42;&lt;", "Tom & Jerry AB<;"},
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
    {"100%2 %2", "100%2 %2"}};

} // namespace

TEST(HtmlText, References) {
    std::string all, allDecoded;
    for (const auto& [text, expected] : references) {
        EXPECT_EQ(Decoded(text), expected) << text;
        all += text;
        allDecoded += expected;
    }
    EXPECT_EQ(Decoded(all), allDecoded);
    EXPECT_EQ(Decoded("a&#0;b"), "a");
    DeHTMLifyString(nullptr, 10);
    char text[] = "%20";
    DeHTMLifyString(text, 1);
    EXPECT_STREQ(text, "%20");
}

TEST(HtmlText, Links) {
    const std::string mail = Link("mailto:a@b.de", "a@b.de");
    for (const auto& [text, expected] : std::initializer_list<std::pair<const char*, std::string>>{
             {"", ""},
             {"plain text, no link. At all", "plain text, no link. At all"},
             {"write to a@b.de\r\n\tnow", "write to " + mail + "\r\n\tnow"},
             {"<b>a@b.de</b>", "<b>" + mail + "</b>"},
             {"mailto:a@b.de", Link("mailto:a@b.de", "a@b.de")},
             {"a@b. a.b@c @.x.", "a@b. a.b@c " + Link("mailto:@.x.", "@.x.")},
             {"mailto:www.x https://x HTTP://x xwww", "mailto:www.x https://x HTTP://x xwww"},
             {"http://x www", Link("http://x", "http://x") + " " + Link("http://www", "www")},
             {"x.com x.education",
              Link("http://x.com", "x.com") + " " + Link("http://x.education", "x.education")},
             {".org.", Link("http://.org.", ".org.")},
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
    for (const auto& [length, expected] :
         {std::pair{2, std::string("ww")}, {7, Link("http://www.x", "www.x")}, {-1, ""}}) {
        ParseForHTML(source, length, buffer, sizeof buffer);
        EXPECT_EQ(buffer, expected) << length;
    }
}

TEST(HtmlText, LengthsAndSizes) {
    static constexpr struct {
        long milliseconds;
        bool showMilliseconds;
        bool omitHours;
        const char* shown;
    } lengths[] = {
        {61'500, true, false, "01:01:500"},
        {3'599'999, false, false, "59:59"},
        {3'600'000, false, false, "01:00:00"},
        {3'723'004, true, false, "01:02:03:004"},
        {3'723'000, false, true, "02:03"}, // hours are dropped
        {LONG_MIN, true, false, "-596:-31:-23:-648"},
    };
    for (const auto& row : lengths) {
        GuardedBytes buffer(18);
        MakeLengthString(row.milliseconds, buffer.Data(), row.showMilliseconds, row.omitHours);
        EXPECT_EQ(buffer.Data(), std::string(row.shown));
    }
    static constexpr std::pair<unsigned long, const char*> sizes[] = {
        {1023, "1023 Bytes"},   {1024, "1 KB"},         {1'048'575, "1023 KB"},
        {1'048'576, "1.00 MB"}, {1'572'864, "1.50 MB"}, {ULONG_MAX, "4096.00 MB"}};
    for (const auto& [bytes, shown] : sizes) {
        GuardedBytes buffer(11);
        MakeFileSizeString(bytes, buffer.Data(), 0);
        EXPECT_EQ(buffer.Data(), std::string(shown));
    }
}

TEST(HtmlText, CarriageReturns) {
    for (const auto& [source, expected] :
         std::initializer_list<std::pair<std::string, const char*>>{
             {"", ""},
             {"one\\rtwo\\nthree\\r\\n", "one\rtwo\rthree\r\r"},
             {"\\t\\R\\\\n\\", "\\t\\R\\\r\\"}}) { // only r and n, after one backslash
        GuardedBytes buffer(source.size() + 1);
        ParseCarriageReturns(source.c_str(), buffer.Data(), 0);
        EXPECT_STREQ(buffer.Data(), expected);
    }
    const CodePage japanese(932);
    char text[] = "\x83\\n\\n";
    ParseCarriageReturns(text, text, 0);
    EXPECT_STREQ(text, "\x83\\n\r") << "the first backslash is half of a character";
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
