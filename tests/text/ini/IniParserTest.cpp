#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/text/ini/IniDocuments.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

struct Row {
    const char* name;
    std::string_view text;
    std::string_view result;
};

/// The document as text, from a buffer that ends where the text ends; "refused" when it is.
std::string Parsed(std::string_view text) {
    const GuardedBytes buffer(text, /*terminated=*/false);
    CIniFileReader document;
    const bool good = Load(document, buffer.View());
    return (good ? "" : "refused ") + Content(document);
}

std::string Parents(std::string_view text) {
    CIniFileReader document;
    EXPECT_TRUE(Load(document, text));
    const CIniSection& section = *document.GetSection("C");
    std::string parents;
    for (int i = 0; i < section.NumParents(); ++i)
        parents += std::string(section.GetParent(i)) + "|";
    EXPECT_EQ(section.GetParent(section.NumParents()), nullptr);
    EXPECT_EQ(section.GetParent(-1), nullptr);
    return parents;
}

std::string Wide(std::wstring_view text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

} // namespace

TEST(IniParser, LinesAndHeaders) {
    static constexpr Row rows[] = {
        {"tabs and blanks", "\t key \t= \tvalue  \r\nb = 2\t\r\n", "{: key=value; b=2\t;}"},
        {"tab inside the key", "a\tb=1\n", "{: a b=1;}"},
        {"comments", "; a=1\r\n  ;b=2\n;\n;;[X]\nc=3 ; note\nd= ; note", "{: c=3; d=;}"},
        {"no value", "key =\r\nb=\n c=\t \r\nd=", "{: key=; b=; c=; d=;}"},
        {"line ends of all kinds", "a=1\rb=2\nc=3\r\n\r\n\n\rd=4", "{: a=1; b=2; c=3; d=4;}"},
        {"value without key", "a=1\n=2\nb=3", "refused {: a=1;}"},
        {"value of a blank key", "[A]\n \t= 2", "refused "},
        {"no value without key", "a=1\n=\nb=3", "{: a=1; b=3;}"},
        {"comment without key", "=;x", "refused "},
        {"zero bytes", "a\0b=c\0d\ne=f"sv, "{: a=c; e=f;}"},
        {"zero byte for a key", "a=b\n\0=c"sv, "refused {: a=b;}"},
        {"without pairs", "[A]\nhalf\n[B]\nb=2\n[C]\n", "{B: b=2;}"},
        {"empty name", "[A]\n[]\nx=0\n[B]\nb=2\n[]\ny=0", "{: x=0; y=0;}{B: b=2;}"},
        {"blanks around", "  [ A ]\n  a=1", "{ A : a=1;}"},
        {"not closed", "[A\na=1\n[B]\nb=2", "{A\na=1\n[B: b=2;}"},
        {"never closed", "a=1\n[B\nb=2", "{: a=1;}"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Parsed(row.text), row.result) << row.name;
    EXPECT_EQ(Parsed("[" + std::string(64, 'n') + "]\na=1"),
              "{" + std::string(63, 'n') + ": a=1;}");
}

TEST(IniParser, Quotes) {
    static constexpr Row rows[] = {
        {"inner quotes and padding", "\"\tsay \"hi\" \"", "\tsay \"hi\" "},
        {"semicolon ends it", "\"a ;b\"", "a "},
        {"comment with a quote", "\"abc\" ; say \"x\"", "abc\" "},
        {"comment without a quote", "\"abc\" ; note", "\"abc\""},
        {"one quote", "\"", "\""},
        {"three", "\"\"\"", "\""},
        {"quotes apart", "\"a\" \"b\"", "a\" \"b"},
    };
    for (const Row& row : rows) {
        for (const std::string_view end : {"", "\r\n", "\nk=1"})
            EXPECT_EQ(Parsed("q = " + std::string(row.text) + std::string(end)),
                      "{: q=" + std::string(row.result) + (end == "\nk=1" ? "; k=1;}" : ";}"))
                << row.name;
    }
}

TEST(IniParser, TextsOf8191BytesAreRefused) {
    const std::string longest(8190, 'x');
    const std::string blanks(8190, ' ');
    for (const std::string& good :
         {blanks + " " + longest + "=1", "k=" + blanks + " " + longest, "k=\"" + longest + "\"",
          "k=1;" + blanks + longest, ";x" + longest + "\n[x" + longest + "]\nk=1"})
        EXPECT_FALSE(Parsed(good).starts_with("refused"));
    for (const std::string& refused : {longest + "x=1", longest + "x\n", "x" + blanks + "=1",
                                       "k=" + longest + "x", "k=\"" + longest + "x\"\r\n"})
        EXPECT_EQ(Parsed("a=1\n[B]\nb=2\n" + refused), "refused {: a=1;}{B: b=2;}");
}

TEST(IniParser, Parents) {
    static constexpr Row rows[] = {
        {"each needs its colon", "[C]:[Base]:[Other] [None]", "Base|Other|"},
        {"other characters are ignored", "[C] x : y [Base]", "Base|"},
        {"bracket without colon", "[C] [Base]", ""},
        {"trimmed", "[C] : [  ] : [  Base 1  ]", "Base 1|"},
        {"not closed", "[C] : [Base", ""},
        {"comment is read too", "[C] ; : [Base]", "Base|"},
        {"left from a section without keys", "[A] : [P]\n[C]", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Parents(std::string(row.text) + "\r\nk=1 : [No]"), row.result) << row.name;
    EXPECT_EQ(Parents("[C] : [" + std::string(600, 'p') + "]\nk=1"), std::string(511, 'p') + "|");
}

TEST(IniParser, Utf16AndCharactersOfTwoBytes) {
    // A unit of two non-zero bytes near the start would speak against UTF-16 without a mark.
    EXPECT_EQ(Parsed(Wide(L"\xFEFF[S\x00E4]\r\nkey=\x3041\x0042\r\n") + "x"), "{S\xE4: key=AB;}");
    EXPECT_EQ(Parsed(Wide(L"[S\x00E4]\r\nkey=B\r\n")), "{S\xE4: key=B;}");
    EXPECT_EQ(Parsed("\xFF\xFE"), "");
    EXPECT_EQ(Parsed("\xFF\xFE\xFF\x01\xFE\x01k\x01=\x01v\x01"), "{: k=v;}") << "a mark inside";

    const CodePage japanese(932);
    EXPECT_EQ(Parsed("[\x83\x5D]\nk=1"), "{\x83\x5D: k=1;}") << "a trail byte is no bracket";
    EXPECT_EQ(Parents("[C] : [\x83\x5D\x83\x5B]\nk=1"), "\x83\x5D\x83\x5B|");
    const CodePage korean(1361);
    EXPECT_EQ(Parsed("k\x88==v\x88;w;x"), "{: k\x88==v\x88;w;}") << "nor = or ;";
}
