#include "tests/support/GuardedBuffer.h"
#include "tests/support/Rounds.h"
#include "tests/support/Watchdog.h"
#include "tests/xml/XMLTrees.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>

namespace {

constexpr const char* starts[] = {"<?", "</", "<!DOCTYPE", "<"};
constexpr const char* ends[] = {"?>", "/>", ">"};

bool Is(const std::string& text, std::size_t at, const char* token, bool spare) {
    const std::size_t length = std::strlen(token);
    return at + length + (spare ? 1 : 0) <= text.size() &&
           _strnicmp(text.c_str() + at, token, length) == 0;
}

/// Which of the tokens the text has there; their number if none.
template <unsigned count>
unsigned Kind(const char* const (&tokens)[count], const std::string& text, std::size_t at,
              bool spare) {
    unsigned kind = 0;
    while (kind < count && !Is(text, at, tokens[kind], spare))
        ++kind;
    return kind;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \r\n");
    return first == text.npos ? "" : text.substr(first, text.find_last_not_of(" \r\n") + 1 - first);
}

/// Each kind of quotes opens and closes whatever the other does.
struct Quotes {
    bool one = false;
    bool two = false;

    bool Hold(char c) {
        two ^= c == '"';
        one ^= c == '\'';
        return one || two;
    }
};

struct Token {
    unsigned startKind = 0;
    unsigned endKind = 0;
    std::size_t end = 0;
    std::string before; ///< the text before it, without comments
    bool more = false;  ///< than a name
    std::string name;

    /// What stands between start and end.
    void Read(const std::string& field) {
        name = field.substr(0, field.find(' ', field.find_first_not_of(' '))).substr(0, 4094);
        Quotes quotes;
        std::size_t equals = 0;
        for (; equals < field.size(); ++equals) {
            const bool quoted = quotes.Hold(field[equals]);
            if (!quoted && field[equals] == '=')
                break;
            more = !quoted && field[equals] == ' ' &&
                   field.find_first_not_of(' ', equals) != field.npos;
            if (more)
                return;
        }
        if (equals > 0 && equals < field.size()) {
            const std::size_t open = field.find_first_of("'\"", equals + 1);
            if (open == field.npos || field.find(field[open], open + 1) == field.npos)
                return;
            if (equals < 4096)
                name = field.substr(0, equals);
        }
        name = Trimmed(name);
    }
};

struct ModelNode {
    std::string name;
    std::string attributes;
    std::string texts;
    std::string children;
    int count = 0;

    std::string Shown(int number) const {
        return (name.empty() ? "~" : name) + "#" + std::to_string(number) + "(" + attributes +
               ")[" + texts + children + "]";
    }

    void ReadAttributes(const std::string& tag) {
        std::size_t start = tag.find('<');
        start += std::strlen(starts[Kind(starts, tag, start, true)]);
        std::size_t end = start;
        for (bool quoted = false; end < tag.size(); ++end) {
            quoted ^= tag[end] == '"';
            if (!quoted && Kind(ends, tag, end, false) < std::size(ends))
                break;
        }
        if (end == tag.size())
            return;
        const std::string data = tag.substr(start, end - start);
        std::size_t i = 0;
        const auto take = [&](char stop) {
            const std::size_t from = std::min(i, data.size());
            i = std::min(data.find(stop, from), data.size());
            return data.substr(from, i - from);
        };
        take(' ');
        while (i < data.size()) {
            i = std::min(data.find_first_not_of(' ', i), data.size());
            const std::string attribute = Trimmed(take('=').substr(0, 4095));
            take('"');
            ++i;
            const std::string value = Trimmed(take('"').substr(0, 4095));
            ++i;
            if (!attribute.empty() && !value.empty())
                attributes += attribute + "=" + value + ";";
        }
    }

    void ReadDocType(const std::string& tag) {
        name = "DOCTYPE";
        std::size_t i = 0;
        while (!Is(tag, i, starts[2], false))
            ++i;
        std::string item;
        char quote = 0;
        const auto finish = [&] {
            texts += Piece(nullptr, item.substr(0, 1023), count++);
            item.clear();
        };
        for (i = tag.find(' ', i + 9); i < tag.size(); ++i) {
            const char c = tag[i];
            if (quote != 0 && c == quote) {
                finish();
                quote = 0;
            } else if (quote == 0 && (c == ' ' || c == '"' || c == '\'')) {
                if (!item.empty())
                    finish();
                quote = c == ' ' ? '\0' : c;
            } else if (c != '\r' && c != '\n') {
                item += c;
            }
        }
    }

    void AddText(const std::string& before) {
        for (const char c : before) {
            if (c == ' ' || static_cast<signed char>(c) <= 13)
                continue;
            texts += Piece(name.empty() ? nullptr : name.c_str(), before, count++);
            return;
        }
    }
};

class Model {
public:
    explicit Model(const std::string& whole) : text(whole) {}

    bool Load(ModelNode& node) {
        for (bool seen = false;; seen = true) {
            Token token;
            if (!Next(token))
                return seen;
            if (node.name.empty())
                node.name = token.name;
            if (!seen) {
                const std::string tag = text.substr(position, token.end - position);
                if (token.startKind == 2)
                    node.ReadDocType(tag);
                else if (token.more)
                    node.ReadAttributes(tag);
                position = token.end;
                if (token.startKind == 2 || token.endKind == 1)
                    return true;
                continue;
            }
            node.AddText(token.before);
            if (token.startKind == 1 && !node.name.empty() &&
                _stricmp(token.name.c_str(), node.name.c_str()) == 0) {
                position = token.end;
                return true;
            }
            ModelNode child;
            if (Load(child))
                node.children += child.Shown(node.count++);
        }
    }

private:
    bool Next(Token& token) const {
        std::size_t at = position;
        for (bool inComment = false;; ++at) {
            if (at >= text.size())
                return false;
            const bool edge = Is(text, at, inComment ? "-->" : "<!--", true);
            if (edge) {
                at += inComment ? 2 : 3;
                inComment = !inComment;
            } else if (!inComment) {
                token.startKind = Kind(starts, text, at, true);
                if (token.startKind < std::size(starts))
                    break;
                token.before += text[at];
            }
        }
        at += std::strlen(starts[token.startKind]);
        Quotes quotes;
        for (std::size_t i = at; i < text.size(); ++i) {
            token.endKind = quotes.Hold(text[i]) ? 3 : Kind(ends, text, i, false);
            if (token.endKind < std::size(ends)) {
                token.end = i + std::strlen(ends[token.endKind]);
                token.Read(text.substr(at, i - at));
                return true;
            }
        }
        return false;
    }

    const std::string& text;
    std::size_t position = 0;
};

/// The tree that the rules give for the text, read byte by byte and recursively.
std::string ShownByRule(const std::string& text) {
    ModelNode root;
    Model(text).Load(root);
    return root.Shown(0);
}

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
        {"<?xml version=\"1.0\" encoding=\"UTF-8\"?><r><b x=\"1\"/>t</r>",
         "xml#0(version=1.0;encoding=UTF-8;)[r#0()[\"r:t\"#1 b#0(x=1;)[]]]"},
        {"<a>x</b>y</a>", "a#0()[\"a:x\"#0 b#1()[\"b:y\"#0 a#1()[]]]"},
        {"<a>x<!-- c -->z<!-- d --><b x=\"1\"/><c y=\"2\"/></a>",
         "a#0()[\"a:xz\"#0 b#1()[]c#2(y=2;)[]]"},
        {"<a><?pi data?>t<b/></a>", "a#0()[pi#0()[\"pi:t\"#0 b#1()[]a#2()[]]]"},
        {"<?xml?><!DOCTYPE h PUBLIC \"-//X//\"\n'y\"z\"'\"\" ><h/>",
         "xml#0()[DOCTYPE#0()[\"~:h\"#0 \"~:PUBLIC\"#1 \"~:-//X//\"#2 \"~:y\"z\"\"#3 \"~:\"#4 "
         "]h#1()[]]"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Loaded(row.text), row.tree) << row.text;
}

TEST(XMLLoader, RandomTextsAreReadAsTheRulesSay) {
    static constexpr const char* pieces[] = {
        "<",    ">",           "</",   "/>",    "<?",   "?>",          "<!DOCTYPE", "<!doctype ",
        "<!--", "-->",         "\"",   "'",     "=",    " ",           "a",         "B",
        "b",    "\n",          "\x80", "/",     "?",    "!",           "-",         "<a>",
        "</a>", "<b x=\"1\">", "\t",   "x='y'", "\x1F", " y=\"z w\" ", "<B/>"};
    EachRound(41, 30'000, [](Dice& dice, int) {
        std::string text;
        for (int count = 1 + dice.Below(16); count > 0; --count)
            text += pieces[dice.Below(std::size(pieces))];
        ASSERT_EQ(Loaded(text), ShownByRule(text)) << text;
    });
    for (const std::size_t length : {4093u, 4094u, 4095u, 4096u, 4097u, 10'000u}) {
        const std::string name(length, 'n');
        for (const std::string& text :
             {"<" + name + "></" + name + ">", "<" + name + "=\"v\">", "<" + name + "='v\">'>",
              "<a " + name + "=\"1\" b=\" " + name + "\">", "<" + std::string(length, ' ') + "n>",
              "<?x?><!DOCTYPE " + name + " '" + name + "'><b>"})
            EXPECT_EQ(Loaded(text), ShownByRule(text)) << length << " " << text.substr(0, 20);
    }
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
