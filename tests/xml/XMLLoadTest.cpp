#include "tests/support/CapturedLog.h"
#include "tests/support/TestFolder.h"
#include "tests/xml/XMLModel.h"

#include <gtest/gtest.h>

#include <random>

namespace {

std::string Loaded(std::string text) {
    CXMLFile document;
    EXPECT_TRUE(document.LoadFromBuffer(text.data()));
    return Shown(document);
}

std::string Wide(std::string_view text) {
    std::string wide;
    for (const char c : text)
        wide += {c, '\0'};
    return wide;
}

const std::string webReply =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<!-- one 'release' -->\r\n"
    "<metadata xmlns=\"http://example.org/ns/mmd-1.0#\"\n xmlns:ext='http://example.org/ext'>"
    "<release-list count=\"1\" offset=\"0\"><release type=\"Album\" ext:score=\"100\" id=\"f8\">"
    "<title>Zur&amp;ck <!-- draft -->&#233;t&eacute;</title><notes><![CDATA[a < b]]></notes>"
    "<event date=\"1999\"/></release></release-list></metadata>";

} // namespace

TEST(XMLLoad, Documents) {
    static const struct {
        const char* text;
        const char* tree;
    } rows[] = {
        {"<a>hi</a>", "a#0()[\"a:hi\"#0 ]"},
        {"<?xml version=\"1.0\" encoding=\"UTF-8\"?><r><b x=\"1\"/>t</r>",
         "xml#0(version=1.0;encoding=UTF-8;)[r#0()[\"r:t\"#1 b#0(x=1;)[]]]"},
        {"<a> \t\r\n\x80\xFF<b/></a>", "a#0()[b#0()[]]"},
        {"<a>x</b>y</a>", "a#0()[\"a:x\"#0 b#1()[\"b:y\"#0 a#1()[]]]"},
        {"<a><!-- <c> --><b/><!-- - -- --></a>", "a#0()[b#0()[]]"},
        {"<a>x<!-- y -->z</a>", "a#0()[\"a:xz\"#0 ]"},
        {"<a><!-- c --><b x=\"1\"/><c y=\"2\"/></a>", "a#0()[b#0()[]c#1(y=2;)[]]"},
        {"<a><!-- k=\"v\" --><b x=\"1\"/></a>", "a#0()[b#0(k=v;)[]]"},
        {"<a><?pi data?>t<b/></a>", "a#0()[pi#0()[\"pi:t\"#0 b#1()[]a#2()[]]]"},
        {"<a x='1' y=\"2\"/>", "a#0(x=2;)[]"},
        {"<a t=\"it's\"><b/><c t=\"it's\">x</c></a>", "a#0(t=it's;)[\"a:x\"#0 c#1()[a#0()[]]]"},
        {"<a>x<b>y</a>", "a#0()[\"a:x\"#0 b#1()[\"b:y\"#0 a#1()[]]]"},
        {"<A></a><b/>", "A#0()[]"},
        {"<a x=\"\" =\"1\" b = \" 2 \" c/>", "a#0(b=2;)[]"},
        {"<a=\"x\">t</a>", "a#0()[\"a:t\"#0 ]"},
        {"<><b>x</b></>", "b#0()[b#0()[\"b:x\"#0 ]~#1()[]]"},
        {"< a>x</a>", " a#0()[\" a:x\"#0 a#1()[]]"},
        {"<!doctype html><html/>", "DOCTYPE#0()[]"},
        {"<?xml?><!DOCTYPE h PUBLIC \"-//X//\"\n'y\"z\"'\"\" ><h/>",
         "xml#0()[DOCTYPE#0()[\"~:h\"#0 \"~:PUBLIC\"#1 \"~:-//X//\"#2 \"~:y\"z\"\"#3 \"~:\"#4 "
         "]h#1()[]]"},
        {"no tags", "~#0()[]"},
        {"<a", "~#0()[]"},
        {"<a>t", "a#0()[]"},
        {"<a\n  >t</a>", "a#0()[\"a:t\"#0 ]"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Loaded(row.text), row.tree) << row.text;
    EXPECT_EQ(Loaded(webReply), ShownModel(webReply));
}

TEST(XMLLoad, RandomTextsAreReadAsTheRulesSay) {
    constexpr unsigned seed = 41;
    std::mt19937 random(seed);
    static constexpr const char* pieces[] = {
        "<",    ">",           "</",   "/>",    "<?",   "?>",          "<!DOCTYPE", "<!doctype ",
        "<!--", "-->",         "\"",   "'",     "=",    " ",           "a",         "B",
        "b",    "\n",          "\x80", "/",     "?",    "!",           "-",         "<a>",
        "</a>", "<b x=\"1\">", "\t",   "x='y'", "\x1F", " y=\"z w\" ", "<B/>"};
    for (unsigned round = 0; round < 30'000; ++round) {
        std::string text;
        for (unsigned count = 1 + random() % 16; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        ASSERT_EQ(Loaded(text), ShownModel(text)) << text << ", seed " << seed;
    }
}

TEST(XMLLoad, LimitsOfLength) {
    for (const std::size_t length : {4093u, 4094u, 4095u, 4096u, 4097u, 10'000u}) {
        const std::string name(length, 'n');
        for (const std::string& text :
             {"<" + name + "></" + name + ">", "<" + name + "=\"v\">", "<" + name + "='v\">'>",
              "<a " + name + "=\"1\" b=\" " + name + "\">", "<" + std::string(length, ' ') + "n>",
              "<?x?><!DOCTYPE " + name + " '" + name + "'><b>"})
            EXPECT_EQ(Loaded(text), ShownModel(text)) << length << " " << text.substr(0, 20);
    }
}

TEST(XMLLoad, EveryTruncation) {
    for (std::size_t length = 1; length < webReply.size(); ++length) {
        const std::string text = webReply.substr(0, length);
        EXPECT_EQ(Loaded(text), ShownModel(text)) << length;
    }
}

TEST(XMLLoad, ElementsAreFullAt999998Children) {
    std::string text = "<?xml?><r>";
    for (int i = 0; i < 1'000'001; ++i)
        text += "<b/>";
    text += "x</r>y</xml>";
    CXMLFile document;
    ASSERT_TRUE(document.LoadFromBuffer(text.data()));
    ASSERT_EQ(document.NumChildren(), 5u);
    EXPECT_EQ(document.GetChild(0)->NumChildren(), 999'998u);
    EXPECT_STREQ(document.GetContentString(0), "x");
    EXPECT_STREQ(document.GetChild(4)->Name(), "r") << "no longer open";
}

TEST(XMLLoad, Files) {
    const TestFolder folder;
    const std::string path = folder.Write("reply.xml", webReply);
    CXMLFile document;
    const CapturedLog log;
    for (const std::string& bytes : {webReply, Wide(webReply), "\xFF\xFE" + Wide(webReply),
                                     webReply + std::string("\0<c/>", 5)}) {
        folder.Write("reply.xml", bytes);
        ASSERT_TRUE(document.Open(path.c_str()));
        EXPECT_EQ(Shown(document), ShownModel(webReply));
    }
    EXPECT_FALSE(document.Open(nullptr));
    EXPECT_FALSE(document.Open(folder.File("none").c_str()));
    EXPECT_FALSE(document.Open(folder.Path().c_str()));
    EXPECT_FALSE(document.Open(folder.Write("empty", "").c_str()));
    EXPECT_FALSE(document.Open(folder.Write("empty", std::string("\0<a/>", 5)).c_str()));
    char empty[] = "";
    EXPECT_FALSE(document.LoadFromBuffer(empty) || document.LoadFromBuffer(nullptr));
    EXPECT_EQ(Shown(document), ShownModel(webReply)) << "what failed to load changed the document";
    const std::vector<std::string> expected = {
        "Leaving CXMLFile::Open, normal exit",
        "Entered CXMLFile::Open, file <>",
        "Leaving CXMLFile::Open, blank file name",
        "Entered CXMLFile::Open, file <" + folder.File("none") + ">",
        "Leaving CXMLFile::Open, blank file name",
        "Entered CXMLFile::Open, file <" + folder.Path() + ">",
        "Leaving CXMLFile::Open, can't open file",
        "Entered CXMLFile::Open, file <" + folder.File("empty") + ">",
        "Leaving CXMLFile::Open, file length < 1",
        "Entered CXMLFile::Open, file <" + folder.File("empty") + ">",
        "Leaving CXMLFile::Open, file length < 1"};
    ASSERT_EQ(log.Lines().size(), expected.size() + 7);
    EXPECT_EQ(std::vector<std::string>(log.Lines().begin() + 7, log.Lines().end()), expected);
}

TEST(XMLLoad, ProgressIsToldForEachNodeAndToken) {
    std::string told;
    CXMLFile document;
    document.SetProgressCallback(
        [](unsigned position, unsigned size, void* user) {
            *static_cast<std::string*>(user) +=
                std::to_string(position) + "/" + std::to_string(size) + " ";
        },
        &told);
    char text[] = "<a>t<b/></a>";
    ASSERT_TRUE(document.LoadFromBuffer(text));
    EXPECT_EQ(told, "0/12 3/12 3/12 8/12 ");
}

TEST(XMLLoad, DecodingLeavesOutTheRoot) {
    CXMLFile document;
    document.SetShouldDeHTMLify(true);
    char text[] = "<?xml a=\"&amp;amp;\"?><b&amp; c=\"&amp;amp;\">&#65;</b&amp;>";
    ASSERT_TRUE(document.LoadFromBuffer(text));
    EXPECT_EQ(Shown(document), "xml#0(a=&amp;amp;;)[b&#0(c=&amp;;)[\"b&:A\"#0 ]]");
    EXPECT_TRUE(document.GetChild(0)->ShouldDeHTMLify());
    EXPECT_EQ(document.FindNode("B&"), document.GetChild(0));
    document.DeHTMLAll();
    EXPECT_EQ(Shown(document), "xml#0(a=&amp;;)[b&#0(c=&;)[\"b&:A\"#0 ]]");
}
