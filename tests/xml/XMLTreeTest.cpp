#include "tests/support/CodePage.h"
#include "tests/xml/XMLModel.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

std::string Text(const char* text) {
    return text != nullptr ? text : "~";
}

class XMLTree : public testing::Test {
protected:
    XMLTree() {
        char text[] = "<Root id=\"r1\" Kind=\"top\"><Key>artist</Key><Val>One</Val>mid"
                      "<Key>TITLE</Key><val>Two</val><list kind=\"x\"><item/><item>deep</item>"
                      "<only>leaf</only><sub><key2>k</key2></sub></list><Key>last</Key></Root>";
        EXPECT_TRUE(document.LoadFromBuffer(text));
    }

    CXMLFile document;
};

} // namespace

TEST_F(XMLTree, ByPosition) {
    const CXMLFile& constant = document;
    EXPECT_EQ(document.NumChildren(), 6u);
    EXPECT_EQ(document.NumRootHeaderProperties(), 2u);
    EXPECT_STREQ(constant.GetChild(5)->Name(), "Key");
    EXPECT_EQ(document.GetChild(6), nullptr);
    EXPECT_EQ(document.GetHeaderProperty(2), nullptr);
    EXPECT_STREQ(document.GetValue(0u)->Value(), "mid");
    EXPECT_EQ(document.GetValue(1u), nullptr);
    EXPECT_EQ(document.GetContentString(1), nullptr);
    EXPECT_EQ(document.NodeLength(), 0u);
    EXPECT_EQ(document.SequenceNumber(), 0);
    EXPECT_STREQ(document.GetChildBySequenceNumber(3)->GetContentString(0), "TITLE");
    EXPECT_EQ(document.GetChildBySequenceNumber(2), nullptr);
    EXPECT_STREQ(document.GetValueBySequenceNumber(2), "mid");
    EXPECT_EQ(document.GetContentStringBySequenceNumber(3), nullptr);
    EXPECT_EQ(document.HighestSequenceNumber(), 6);
    EXPECT_EQ(CXMLFile().HighestSequenceNumber(), -1);
    EXPECT_EQ(CXMLFile().SequenceNumber(), -1);
}

TEST_F(XMLTree, ByNameAndText) {
    EXPECT_EQ(document.GetChildByName("VAL"), document.GetChild(1));
    EXPECT_EQ(document.GetChildByName("item"), nullptr);
    EXPECT_EQ(document.FindNode("root"), &document);
    EXPECT_STREQ(document.FindNode("KEY2")->GetContentString(0), "k");
    EXPECT_EQ(document.GetChild(0)->FindNode("list"), nullptr) << "left what it searches";
    EXPECT_EQ(document.GetChildFollowingValue("title"), document.GetChild(3));
    EXPECT_STREQ(document.GetValueFollowingValue("ARTIST"), "One");
    EXPECT_EQ(document.GetChildFollowingValue("last"), nullptr);
    EXPECT_EQ(document.GetValueFollowingValue("two"), nullptr) << "an element without text";
    EXPECT_EQ(document.GetChild(0)->GetChildFollowingValue("artist"), nullptr);
    for (const char* none : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(document.GetChildByName(none), nullptr);
        EXPECT_EQ(document.FindNode(none), nullptr);
        EXPECT_EQ(document.GetChildFollowingValue(none), nullptr);
        EXPECT_EQ(document.CXMLNode::GetValue(none, true, 0), nullptr);
    }
}

TEST_F(XMLTree, Values) {
    static const struct {
        const char* name;
        bool recurse;
        int index;
        const char* expected;
    } rows[] = {
        {"kind", true, 0, "top"},  {"ID", false, 5, "r1"},  {"val", false, 0, "One"},
        {"val", true, 1, "~"},     {"key", false, -1, "~"}, {"only", false, 0, "~"},
        {"only", true, 0, "leaf"}, {"item", true, 0, "~"},  {"key2", true, 0, "k"},
        {"nothing", true, 0, "~"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Text(document.GetValue(row.name, row.recurse, row.index)), row.expected)
            << row.name;
    EXPECT_EQ(Text(document.GetValue("only", true)), "leaf");
    char twice[] = "<r><s><b/><b>no</b></s><t><b>yes</b></t></r>";
    ASSERT_TRUE(document.LoadFromBuffer(twice));
    EXPECT_EQ(Text(document.GetValue("b", true)), "yes") << "the first child has no text";
}

TEST_F(XMLTree, Copies) {
    const std::string shown = Shown(document);
    auto copy = std::make_unique<CXMLNode>(document);
    EXPECT_EQ(Shown(*copy), shown);
    EXPECT_EQ(copy->FindNode("only")->GetContent(0)->FieldName(), std::string("only"));
    CXMLNode part;
    part = *copy->FindNode("list");
    copy.reset();
    EXPECT_EQ(Text(part.GetValue("key2", true, 0)), "k");
    const CXMLNode& self = part;
    part = self;
    EXPECT_EQ(part.NumChildren(), 4u);
    static_cast<CXMLNode&>(document) = *document.FindNode("sub");
    EXPECT_EQ(Shown(document), "sub#3()[key2#0()[\"key2:k\"#0 ]]") << "from its own descendant";
    EXPECT_EQ(document.FindNode("SUB"), &document);
    document = CXMLFile();
    EXPECT_EQ(Shown(document), "~#-1()[]");
}

TEST_F(XMLTree, ChildrenOutliveADocumentThatGaveThemAway) {
    std::unique_ptr<CXMLNode> list(document.FindNode("list"));
    std::unique_ptr<CXMLValue> property(document.GetHeaderProperty(0));
    std::unique_ptr<CXMLValue> other(document.GetHeaderProperty(1));
    std::unique_ptr<CXMLValue> text(document.GetContent(0));
    std::unique_ptr<CXMLNode> children[5];
    for (unsigned i = 0, kept = 0; i < document.NumChildren(); ++i) {
        if (document.GetChild(i) != list.get())
            children[kept++].reset(document.GetChild(i));
    }
    document.EmptyChildrenNoDelete();
    EXPECT_EQ(
        document.NumChildren() + document.NumHeaderProperties() + document.NumContentStrings(), 0u);
    char reload[] = "<new/>";
    ASSERT_TRUE(document.LoadFromBuffer(reload));
    EXPECT_EQ(Text(list->GetValue("key2", true, 0)), "k");
    EXPECT_EQ(list->FindNode("last"), nullptr);
    EXPECT_STREQ(property->Value(), "r1");
}

TEST(XMLValue, OwnsCopies) {
    CXMLValue value;
    EXPECT_EQ(value.SequenceNumber(), -1);
    value.SetFieldName("n&amp;");
    value.SetValue("abc&lt;def", 7);
    EXPECT_STREQ(value.Value(), "abc&lt;");
    value.DeHTMLify();
    EXPECT_STREQ(value.FieldName(), "n&");
    EXPECT_STREQ(value.Value(), "abc<;");
    value.SetValue(value.Value() + 1, 0);
    value.SetSequenceNumber(7);
    CXMLValue copy(value);
    value.SetValue(nullptr, 5);
    value.SetFieldName("");
    EXPECT_EQ(value.Value(), nullptr);
    EXPECT_STREQ(value.FieldName(), "");
    EXPECT_STREQ(copy.Value(), "bc<;");
    EXPECT_EQ(copy.SequenceNumber(), 7);
    copy = value;
    EXPECT_EQ(copy.Value(), nullptr);

    char text[] = "<a b=\"c\">d</a>";
    CXMLFile document;
    ASSERT_TRUE(document.LoadFromBuffer(text));
    document.GetContent(0)->SetValue("longer than before", 6);
    document.GetHeaderProperty(0)->SetFieldName(nullptr);
    EXPECT_EQ(Shown(document), "a#0(~=c;)[\"a:longer\"#0 ]");
}

TEST(XMLCodePage, NamesCompareInTheCodePage) {
    const CodePage japanese(932);
    // Fullwidth A, large and small; the second byte of the small one is that of a small y of ASCII.
    char text[] = "<\x82\x60>x</\x82\x81><\x82\x79/>";
    CXMLFile document;
    ASSERT_TRUE(document.LoadFromBuffer(text));
    EXPECT_EQ(document.NumChildren(), 0u) << "closed by its name in the other case";
    EXPECT_EQ(document.FindNode("\x82\x81"), &document);
    EXPECT_EQ(document.FindNode("\x82\x40"), nullptr);
}
