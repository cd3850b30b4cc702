#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/text/IniDocuments.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

/// The document as text, from a buffer that ends where the text ends; "refused" when it is.
std::string Parsed(std::string_view text) {
    GuardedBytes buffer(text.size());
    std::memcpy(buffer.Data(), text.data(), text.size());
    CIniFileReader document;
    const bool good = Load(document, {buffer.Data(), text.size()});
    return (good ? "" : "refused ") + Shown(Content(document));
}

} // namespace

TEST(IniParser, Lines) {
    static constexpr struct {
        const char* name;
        std::string_view text;
        std::string_view parsed;
    } rows[] = {
        {"plain", "key=value"sv, "{: key=value;}"sv},
        {"blanks around", "  key  =  value  "sv, "{: key=value;}"sv},
        {"tabs around", "\tkey\t=\tvalue\r\n"sv, "{: key=value;}"sv},
        {"trailing tab of the value stays", "key = value\t\r\n"sv, "{: key=value\t;}"sv},
        {"tab inside the key", "a\tb=1\n"sv, "{: a b=1;}"sv},
        {"comment behind the value", "key = value ; note\r\nk2=2"sv, "{: key=value; k2=2;}"sv},
        {"comment lines", "; a=1\r\n  ;b=2\n;\n;;[X]\nc=3"sv, "{: c=3;}"sv},
        {"no value", "key =\r\nb=\n c=\t \r\nd="sv, "{: key=; b=; c=; d=;}"sv},
        {"value of a comment only", "key = ; note"sv, "{: key=;}"sv},
        {"no equals sign", "nonsense\r\na=1\nrubbish"sv, "{: a=1;}"sv},
        {"second equals sign", "a=b=c"sv, "{: a=b=c;}"sv},
        {"line ends of all kinds", "a=1\rb=2\nc=3\r\n\r\n\n\rd=4"sv, "{: a=1; b=2; c=3; d=4;}"sv},
        {"value without key", "a=1\n=2\nb=3"sv, "refused {: a=1;}"sv},
        {"value of a blank key", "[A]\n \t= 2"sv, "refused "sv},
        {"no value without key", "a=1\n=\nb=3"sv, "{: a=1; b=3;}"sv},
        {"comment without key", "=;x"sv, "refused "sv},
        {"bracket inside the key", "a[1]=x"sv, "{: a[1]=x;}"sv},
        {"repeated keys", "a=1\nA=2"sv, "{: a=1; A=2;}"sv},
        {"zero byte in the key", "a\0b=c"sv, "{: a=c;}"sv},
        {"zero byte in the value", "a=b\0c\nd=e"sv, "{: a=b; d=e;}"sv},
        {"zero byte for a key", "a=b\n\0=c"sv, "refused {: a=b;}"sv},
        {"empty", ""sv, ""sv},
        {"blanks only", " \t\r\n  "sv, ""sv},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Parsed(row.text), row.parsed) << row.name;
}

TEST(IniParser, Quotes) {
    static constexpr struct {
        const char* name;
        std::string_view text;
        std::string_view value;
    } rows[] = {
        {"padded", "\" padded \"", " padded "},
        {"inner quotes", "\"say \"hi\"\"", "say \"hi\""},
        {"semicolon ends it", "\"a;b\"", "a"},
        {"semicolon ends it before a space", "\"a ;b\"", "a "},
        {"blanks behind the quote", "\"a\" \t", "a"},
        {"comment with a quote", "\"abc\" ; say \"x\"", "abc\" "},
        {"comment without a quote", "\"abc\" ; note", "\"abc\""},
        {"one quote", "\"", "\""},
        {"opening quote only", "\"abc", "\"abc"},
        {"closing quote only", "abc\"", "abc\""},
        {"empty", "\"\"", ""},
        {"three", "\"\"\"", "\""},
        {"four", "\"\"\"\"", "\"\""},
        {"quotes apart", "\"a\" \"b\"", "a\" \"b"},
        {"tab kept", "\"\ta\t\"", "\ta\t"},
    };
    for (const auto& row : rows) {
        for (const std::string_view end : {"", "\r\n", "\nk=1"}) {
            const std::string text = "q = " + std::string(row.text) + std::string(end);
            const std::string next = end == "\nk=1" ? " k=1;" : "";
            EXPECT_EQ(Parsed(text), "{: q=" + std::string(row.value) + ";" + next + "}")
                << row.name;
        }
    }
}

TEST(IniParser, Headers) {
    const std::string name63(63, 'n');
    const std::string name70(70, 'n');
    const struct {
        const char* name;
        std::string text;
        std::string parsed;
    } rows[] = {
        {"sections", "[A]\na=1\n[B]\nb=2", "{A: a=1;}{B: b=2;}"},
        {"keys before the first", "x=0\n[A]\na=1", "{: x=0;}{A: a=1;}"},
        {"repeated", "[A]\na=1\n[A]\na=2", "{A: a=1;}{A: a=2;}"},
        {"without keys", "[A]\n[B]\nb=2\n[C]\n", "{B: b=2;}"},
        {"with a half pair only", "[A]\nhalf\n[B]\nb=2", "{B: b=2;}"},
        {"empty name", "[A]\na=1\n[]\nx=0\n[B]\nb=2", "{: x=0;}{A: a=1;}{B: b=2;}"},
        {"pairs behind an empty name", "[A]\n[]\nx=0\n[B]\nb=2\n[]\ny=0", "{: x=0; y=0;}{B: b=2;}"},
        {"blanks are kept", "[ A ]\na=1", "{ A : a=1;}"},
        {"text behind it", "[A] a=1 ; c\nb=2", "{A: b=2;}"},
        {"not closed", "[A\na=1\n[B]\nb=2", "{A\na=1\n[B: b=2;}"},
        {"never closed", "a=1\n[B\nb=2", "{: a=1;}"},
        {"63 bytes", "[" + name63 + "]\na=1", "{" + name63 + ": a=1;}"},
        {"70 bytes", "[" + name70 + "]\na=1", "{" + name63 + ": a=1;}"},
        {"indented", "  [A]\n  a=1", "{A: a=1;}"},
        {"bracket in the name", "[A[1]\na=1", "{A[1: a=1;}"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Parsed(row.text), row.parsed) << row.name;
}

TEST(IniParser, TextsOf8191BytesAreRefused) {
    const std::string longest(8190, 'x');
    const struct {
        const char* name;
        std::string text;
        bool good;
    } rows[] = {
        {"longest key", longest + "=1", true},
        {"key", longest + "x=1", false},
        {"key without equals sign", longest + "x\n", false},
        {"key at the end", longest + "x", false},
        {"blanks of the key count", "x" + std::string(8190, ' ') + "=1", false},
        {"blanks before the key do not", std::string(9000, ' ') + "x=1", true},
        {"longest value", "k=" + longest, true},
        {"longest value and a line end", "k=" + longest + "\r\nl=1", true},
        {"value", "k=" + longest + "x", false},
        {"value and a line end", "k=" + longest + "x\r\n", false},
        {"quoted value", "k=\"" + longest + "x\"", false},
        {"longest quoted value", "k=\"" + longest + "\"", true},
        {"blanks before the value do not count", "k=" + std::string(9000, ' ') + "x", true},
        {"comment", ";" + longest + longest, true},
        {"comment behind a value", "k=1;" + longest + longest, true},
        {"header", "[" + longest + longest + "]\nk=1", true},
    };
    for (const auto& row : rows) {
        CIniFileReader document;
        EXPECT_EQ(Load(document, row.text), row.good) << row.name;
    }
    CIniFileReader document;
    EXPECT_FALSE(Load(document, "a=1\n[B]\nb=2\n" + longest + "x"));
    EXPECT_EQ(Shown(Content(document)), "{: a=1;}{B: b=2;}") << "what came before stays";
}

TEST(IniParser, Parents) {
    static constexpr struct {
        const char* name;
        std::string_view header;
        std::string_view parents;
    } rows[] = {
        {"one", "[C] : [Base]", "Base"},
        {"two", "[C] : [Base] : [Other]", "Base|Other"},
        {"no blanks", "[C]:[Base]:[Other]", "Base|Other"},
        {"each needs its colon", "[C] : [Base] [Other]", "Base"},
        {"other characters are ignored", "[C] x : y [Base]", "Base"},
        {"bracket without colon", "[C] [Base]", ""},
        {"trimmed", "[C] : [  Base 1  ]", "Base 1"},
        {"blank", "[C] : [  ] : [Other]", "Other"},
        {"not closed", "[C] : [Base", ""},
        {"colon inside", "[C] : [a:b]", "a:b"},
        {"comment is read too", "[C] ; : [Base]", "Base"},
    };
    for (const auto& row : rows) {
        CIniFileReader document;
        ASSERT_TRUE(Load(document, std::string(row.header) + "\r\nk=1 : [No]")) << row.name;
        const CIniSection* section = document.GetSection("C");
        std::string parents;
        for (int i = 0; i < section->NumParents(); ++i)
            parents += (i > 0 ? "|" : "") + std::string(section->GetParent(i));
        EXPECT_EQ(parents, row.parents) << row.name;
        EXPECT_EQ(section->GetParent(section->NumParents()), nullptr);
        EXPECT_EQ(section->GetParent(-1), nullptr);
    }
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[C] : [" + std::string(600, 'p') + "]\nk=1"));
    EXPECT_EQ(document.GetSection("C")->GetParent(0), std::string(511, 'p'));
    ASSERT_TRUE(Load(document, "[A] : [P]\n[B]\nk=1"));
    EXPECT_EQ(document.GetSection("B")->NumParents(), 0) << "left from a section without keys";
}

TEST(IniParser, Utf16IsReducedToLowBytes) {
    const std::wstring_view wide = L"[S\x00E4]\r\nkey=\x3041\x0042\r\n";
    const std::string bytes(reinterpret_cast<const char*>(wide.data()), wide.size() * 2);
    // A unit of two non-zero bytes near the start would speak against UTF-16 without a mark.
    EXPECT_EQ(Parsed("\xFF\xFE" + bytes), "{S\xE4: key=AB;}");
    const std::wstring_view latin = L"[S\x00E4]\r\nkey=B\r\n";
    const std::string latinBytes(reinterpret_cast<const char*>(latin.data()), latin.size() * 2);
    EXPECT_EQ(Parsed(latinBytes), "{S\xE4: key=B;}");
    EXPECT_EQ(Parsed("\xFF\xFE" + latinBytes), "{S\xE4: key=B;}");
    EXPECT_EQ(Parsed("\xFF\xFE" + latinBytes + "x"), "{S\xE4: key=B;}") << "half a unit";
    EXPECT_EQ(Parsed("\xFF\xFE"), "");
    EXPECT_EQ(Parsed("\xFF\xFE\xFF\x01\xFE\x01k\x01=\x01v\x01"), "{: k=v;}") << "a mark inside";
}

TEST(IniParser, TrailBytesAreNotBrackets) {
    const CodePage japanese(932);
    EXPECT_EQ(Parsed("[\x83\x5D]\nk=1"), "{\x83\x5D: k=1;}");
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[C] : [\x83\x5D\x83\x5B]\nk=1"));
    EXPECT_STREQ(document.GetSection("C")->GetParent(0), "\x83\x5D\x83\x5B");
}
