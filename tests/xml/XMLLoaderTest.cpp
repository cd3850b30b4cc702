#include "tests/support/GuardedBuffer.h"
#include "tests/support/Rounds.h"
#include "tests/support/Watchdog.h"
#include "tests/xml/XMLTrees.h"

#include <gtest/gtest.h>

namespace {

/// A well-formed document, and the tree that it gives.
class Maker {
public:
    explicit Maker(Dice& ownDice) : dice(ownDice) {
        const bool prolog = dice.Below(2) == 0;
        text = prolog ? "<?xml version=\"1.0\"?>\n" : "";
        tree = Element(0);
        tree = prolog ? "xml#0(version=1.0;)[" + tree + "]" : tree;
    }

    std::string text;
    std::string tree;

private:
    std::string Any(std::initializer_list<const char*> choices) {
        return choices.begin()[dice.Below(static_cast<int>(choices.size()))];
    }

    /// Writes an element; returns its tree.
    std::string Element(int depth) {
        const int own = number;
        const std::string name = Any({"a", "Bb", "c:d", "e\xE4"});
        std::string attributes, texts, children;
        text += "<" + name;
        for (int i = dice.Below(3); i > 0; --i) {
            const std::string attribute = Any({"x", "y-z"});
            const std::string value = Any({"1", "two words", "a > b < 'c' />", "x=y", "\xE4"});
            text += Any({" ", "  "}) + attribute + Any({"=", " = "}) + "\"" + value + "\"";
            attributes += attribute + "=" + value + ";";
        }
        const bool empty = dice.Below(4) == 0;
        text += empty ? "/>" : Any({">", " >"});
        number = 0;
        for (int i = empty ? -1 : dice.Below(depth < 5 ? 5 : 1) * 2; i >= 0; --i) {
            if (i % 2 != 0) {
                children += Element(depth + 1);
                continue;
            }
            const std::string piece = Any({"", " \r\n\t", "t", " a \"b' = > &amp;\n", "\xE4!"});
            // It would hide the attributes of a tag.
            const bool comment = i == 0 && dice.Below(2) == 0;
            text += comment ? "<!-- <b x=\"1\"> ' --" + Any({">", "><!---->"}) : "";
            text += piece;
            if (piece.find_first_not_of(" \r\n\t") != piece.npos)
                texts += Piece(name.c_str(), piece, number++);
            else if (comment)
                text += "t", texts += Piece(name.c_str(), piece + "t", number++);
        }
        text += empty ? "" : "</" + (name == "Bb" ? "bB" : name) + Any({">", " >"});
        number = own + 1;
        return name + "#" + std::to_string(own) + "(" + attributes + ")[" + texts + children + "]";
    }

    Dice& dice;
    int number = 0; ///< of the next part of the element that is being written
};

std::string Loaded(const std::string& text, bool decoded = false) {
    GuardedBytes guarded{std::string_view(text)};
    CXMLFile document;
    document.SetShouldDeHTMLify(decoded);
    EXPECT_TRUE(document.LoadFromBuffer(guarded.Data()));
    EXPECT_EQ(guarded.Data(), text) << "the text was changed";
    return Shown(document);
}

std::string Repeated(std::string_view part, std::size_t count) {
    std::string text;
    while (count-- > 0)
        text += part;
    return text;
}

/// Does all that goes through the whole tree. A step that takes more than linear time, or more
/// stack for a deeper tree, does not come back.
unsigned Exercise(std::string text) {
    CXMLFile document;
    document.SetShouldDeHTMLify(true);
    EXPECT_TRUE(document.LoadFromBuffer(text.data()));
    EXPECT_EQ(document.FindNode("not there"), nullptr);
    EXPECT_EQ(document.GetValue("not there", true), nullptr);
    document.DeHTMLAll();
    CXMLNode copy(document);
    EXPECT_EQ(copy.FindNode("not there"), nullptr);
    unsigned depth = 0;
    for (const CXMLNode* node = &copy; node->NumChildren() > 0; ++depth)
        node = node->GetChild(node->NumChildren() - 1);
    return depth;
}

} // namespace

TEST(XMLLoader, Documents) {
    static const struct {
        const char* text;
        const char* tree;
    } rows[] = {
        {"<a>x</b>y</a>", "a#0()[\"a:x\"#0 b#1()[\"b:y\"#0 a#1()[]]]"},
        {"<a>x<!-- c -->z<!-- d --><b x=\"1\"/><c y=\"2\"/></a>",
         "a#0()[\"a:xz\"#0 b#1()[]c#2(y=2;)[]]"},
        {"<a><?pi data?>t<b/></a>", "a#0()[pi#0()[\"pi:t\"#0 b#1()[]a#2()[]]]"},
        {"<?xml?><!DOCTYPE h PUBLIC \"-//X//\"\n'y\"z\"'\"\" ><h/>",
         "xml#0()[DOCTYPE#0()[\"~:h\"#0 \"~:PUBLIC\"#1 \"~:-//X//\"#2 \"~:y\"z\"\"#3 \"~:\"#4 "
         "]h#1()[]]"},
        {"<!doctype a ><b/>", "DOCTYPE#0()[\"~:a\"#0 ]"},
        {"<a>t<b>u", "a#0()[\"a:t\"#0 b#1()[]]"},
        {"<a b=\"1>x</a>", "~#0()[]"},
        {"<a b='>x</a>", "~#0()[]"},
        {"<a b='1' c/>", "a#0()[]"},
        {"<a b c=\"2\" d=\"\"/>", "a#0(b c=2;)[]"},
        {"<a></A><b/>", "a#0()[]"},
        {"<a\n >x</a>", "a#0()[\"a:x\"#0 ]"},
        {"</a>x</a>", "a#0()[\"a:x\"#0 ]"},
        {"<a>\x80 \x1F</a>", "a#0()[\"a:\x80 \x1F\"#0 ]"},
        {"<a>\x80 \n\t</a>", "a#0()[]"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Loaded(row.text), row.tree) << row.text;
}

TEST(XMLLoader, WellFormedDocumentsGiveTheirTrees) {
    EachRound(41, 5'000, [](Dice& dice, int) {
        const Maker made(dice);
        ASSERT_EQ(Loaded(made.text), made.tree) << made.text;
    });
}

TEST(XMLLoader, AnyTextLoads) {
    static constexpr const char* pieces[] = {
        "<",    ">",           "</",   "/>",    "<?",   "?>",          "<!DOCTYPE", "<!doctype ",
        "<!--", "-->",         "\"",   "'",     "=",    " ",           "a",         "B",
        "b",    "\n",          "\x80", "/",     "?",    "!",           "-",         "<a>",
        "</a>", "<b x=\"1\">", "\t",   "x='y'", "\x1F", " y=\"z w\" ", "<B/>"};
    EachRound(41, 30'000, [](Dice& dice, int) {
        std::string text;
        for (int count = 1 + dice.Below(16); count > 0; --count)
            text += pieces[dice.Below(std::size(pieces))];
        // Text before the first tag is left out.
        ASSERT_EQ(Loaded("text " + text), Loaded(text)) << text;
    });
    const std::string name(5'000, 'n'), cut(4'095, 'n');
    EXPECT_EQ(Loaded("<a " + name + "=\"1\" b=\" " + name + "\"/>"),
              "a#0(" + cut + "=1;b=" + cut.substr(1) + ";)[]");
}

TEST(XMLLoader, ElementsAreFullAt999998Children) {
    std::string text = "<?xml?><r>" + Repeated("<b/>", 1'000'001) + "x</r>y</xml>";
    CXMLFile document;
    ASSERT_TRUE(document.LoadFromBuffer(text.data()));
    ASSERT_EQ(document.NumChildren(), 5u);
    EXPECT_EQ(document.GetChild(0)->NumChildren(), 999'998u);
    EXPECT_STREQ(document.GetContentString(0), "x");
    EXPECT_STREQ(document.GetChild(4)->Name(), "r") << "no longer open";
}

TEST(XMLLoader, DecodingLeavesOutTheRoot) {
    EXPECT_EQ(Loaded("<?xml a=\"&amp;amp;\"?><b&amp; c=\"&amp;amp;\">&#65;</b&amp;>", true),
              "xml#0(a=&amp;amp;;)[b&#0(c=&amp;;)[\"b&:A\"#0 ]]");
    CXMLFile document;
    char text[] = "<a b=\"&amp;amp;\"><c&amp;>&#65;</c&amp;></a>";
    ASSERT_TRUE(document.LoadFromBuffer(text));
    document.DeHTMLAll();
    EXPECT_EQ(Shown(document), "a#0(b=&amp;;)[c&#0()[\"c&:A\"#0 ]]");
    EXPECT_EQ(document.FindNode("C&"), document.GetChild(0));
}

TEST(XMLLoader, HostileTextsTakeLinearTime) {
    const Watchdog watchdog("XMLLoader.HostileTextsTakeLinearTime", 40);
    constexpr unsigned depth = 100'000;
    EXPECT_EQ(Exercise(Repeated("<a>", 1'000'000)), 999'999u);
    EXPECT_EQ(Exercise(Repeated("<a>", depth) + "<" + std::string(depth, ' ')), depth - 1);
    EXPECT_EQ(Exercise(Repeated("</a>", depth) + "<b x=\""), 0u) << "the first closes the second";
    EXPECT_EQ(Exercise(Repeated("<a>", depth / 2) + Repeated("</a>", depth / 2)), depth / 2 - 1);
    EXPECT_EQ(Exercise(Repeated("<!DOCTYPE a>", depth)), 0u);
    EXPECT_EQ(Exercise(std::string(100'000'000, '<')), 0u);
    for (const std::string_view part :
         {"<",     ">",     "\"",  "'",     "<!--",   "<a x=\"", "<a x='>",
          "<!-- ", "<a b=", "<a ", "=",     "<?",     "</",      "<!DOCTYPE \"",
          "&",     "&#1",   "-",   "<a>\"", "<a>'\n", "<!---->"}) {
        Exercise("<r>" + Repeated(part, 200'000 / part.size()));
        Exercise("<r b" + Repeated(part, 200'000 / part.size()) + "\"'>-->");
    }
}
