#include "tests/support/CodePage.h"
#include "tests/support/Rounds.h"
#include "tests/xml/XMLTrees.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

bool Same(const char* text, const char* wanted) {
    return text != nullptr && wanted != nullptr && *wanted != '\0' && _stricmp(text, wanted) == 0;
}

/// Elements, attributes and texts of the same few words, some of them null or empty.
void Fill(CXMLFile& document, Dice& dice) {
    static constexpr const char* pieces[] = {"<a B=\"b\">",
                                             "<B>",
                                             "<b cc=\"cd\">",
                                             "<cc a=\"E\" a=\"x\">",
                                             "<CD>",
                                             "<e/>",
                                             "a",
                                             "B",
                                             "b",
                                             "cc",
                                             "CD",
                                             "e",
                                             "</A>",
                                             "</b>",
                                             "</b>",
                                             "</CC>",
                                             "</cd>",
                                             "</bb>"};
    std::string text = "<a cc=\"E\">";
    for (int i = dice.Below(40); i > 0; --i)
        text += pieces[dice.Below(std::size(pieces))];
    ASSERT_TRUE(document.LoadFromBuffer(text.data()));
    for (CXMLNode* node = &document; node->NumChildren() > 0; node = node->GetChild(0)) {
        if (CXMLValue* property = node->GetHeaderProperty(0))
            dice.Below(2) == 0 ? property->SetFieldName(nullptr) : property->SetValue(nullptr, 0);
        if (CXMLValue* content = node->GetContent(0))
            dice.Below(2) == 0 ? content->SetValue("", 0) : content->SetFieldName("");
    }
}

/// Each answer of a node follows from those of its children, which are asked first.
void ExpectAnswers(CXMLNode& node, const char* wanted, int index) {
    const CXMLNode* found = Same(node.Name(), wanted) ? &node : nullptr;
    const CXMLNode* named = nullptr;
    const CXMLNode* following = nullptr;
    const char* below = nullptr;
    for (unsigned i = 0; i < node.NumChildren(); ++i) {
        CXMLNode* child = node.GetChild(i);
        ExpectAnswers(*child, wanted, index);
        found = found != nullptr ? found : child->FindNode(wanted);
        below = below != nullptr ? below : child->GetValue(wanted, true, index);
        named = named == nullptr && Same(child->Name(), wanted) ? child : named;
        if (following == nullptr && Same(child->GetContentString(0), wanted))
            following = node.GetChild(i + 1);
        EXPECT_EQ(node.GetChildBySequenceNumber(child->SequenceNumber()), child);
        EXPECT_EQ(node.GetValueBySequenceNumber(child->SequenceNumber()), nullptr);
    }
    for (unsigned i = 0; i < node.NumContentStrings(); ++i) {
        const int number = node.GetContent(i)->SequenceNumber();
        EXPECT_EQ(node.GetChildBySequenceNumber(number), nullptr);
        EXPECT_EQ(node.GetValueBySequenceNumber(number), node.GetContentString(i));
        EXPECT_EQ(node.GetContentStringBySequenceNumber(number), node.GetContentString(i));
    }
    const unsigned parts = node.NumChildren() + node.NumContentStrings();
    EXPECT_EQ(node.HighestSequenceNumber(), static_cast<int>(parts) - 1);
    EXPECT_TRUE(!node.GetHeaderProperty(node.NumHeaderProperties()) &&
                !node.GetChildBySequenceNumber(-1) &&
                !node.GetContentString(node.NumContentStrings()));

    const char* value =
        named == nullptr ? nullptr : named->GetContentString(static_cast<unsigned>(index));
    bool answered = named != nullptr;
    for (unsigned i = node.NumHeaderProperties(); i-- > 0;) {
        const CXMLValue& property = *node.GetHeaderProperty(i);
        answered = answered || Same(property.FieldName(), wanted);
        value = Same(property.FieldName(), wanted) ? property.Value() : value;
    }
    EXPECT_EQ(node.FindNode(wanted), found);
    EXPECT_EQ(node.GetChildByName(wanted), named);
    EXPECT_EQ(node.GetChildFollowingValue(wanted), following);
    EXPECT_EQ(node.GetValueFollowingValue(wanted),
              following != nullptr ? following->GetContentString(0) : nullptr);
    EXPECT_EQ(node.GetValue(wanted, false, index), value);
    EXPECT_EQ(node.GetValue(wanted, true, index), answered ? value : below);
}

} // namespace

TEST(XMLNode, LooksUpAndCopies) {
    EachRound(47, 300, [](Dice& dice, int) {
        CXMLFile document;
        ASSERT_NO_FATAL_FAILURE(Fill(document, dice));
        for (const char* wanted :
             {"A", "b", "bb", "CC", "cd", "E", "x", "", static_cast<const char*>(nullptr)})
            ExpectAnswers(document, wanted, dice.Below(3) - 1);
        ASSERT_EQ(document.GetValue("b", true), document.GetValue("b", true, 0));
        ASSERT_EQ(document.GetValue(0u), document.GetContent(0));
        ASSERT_EQ(document.NumRootHeaderProperties(), document.NumHeaderProperties());
        ASSERT_EQ(document.NodeLength(), 0u);
        const std::string shown = Shown(document);
        auto copy = std::make_unique<CXMLNode>(document);
        ASSERT_EQ(Shown(*copy), shown);
        CXMLNode part;
        part = *copy;
        part = *&part;
        copy.reset();
        ASSERT_EQ(Shown(part), shown);
        if (const CXMLNode* child = part.GetChild(0)) {
            const std::string below = Shown(*child);
            part = *child;
            ASSERT_EQ(Shown(part), below) << "from its own descendant";
            ExpectAnswers(part, "b", 0);
        }
        document = CXMLFile();
        ASSERT_EQ(Shown(document), "~#-1()[]");
    });
}

TEST(XMLNode, ChildrenOutliveADocumentThatGaveThemAway) {
    CXMLFile document;
    char text[] = "<r id=\"1\"><a>x</a>y<b><c>deep</c></b></r>";
    ASSERT_TRUE(document.LoadFromBuffer(text));
    const std::unique_ptr<CXMLNode> a(document.GetChild(0));
    const std::unique_ptr<CXMLNode> b(document.GetChild(1));
    const std::unique_ptr<CXMLValue> property(document.GetHeaderProperty(0));
    const std::unique_ptr<CXMLValue> content(document.GetValue(0u));
    document.EmptyChildrenNoDelete();
    EXPECT_EQ(Shown(document), "r#0()[]");
    char reload[] = "<new/>";
    ASSERT_TRUE(document.LoadFromBuffer(reload));
    EXPECT_STREQ(b->GetValue("c", true, 0), "deep");
    EXPECT_EQ(b->FindNode("a"), nullptr);
    EXPECT_STREQ(property->Value(), "1");
}

TEST(XMLNode, NamesCompareInTheCodePage) {
    const CodePage japanese(932);
    // Fullwidth A, large and small; the second byte of the small one is that of a small y of ASCII.
    char text[] = "<\x82\x60>x</\x82\x81><\x82\x79/>";
    CXMLFile document;
    ASSERT_TRUE(document.LoadFromBuffer(text));
    EXPECT_EQ(document.NumChildren(), 0u) << "closed by its name in the other case";
    EXPECT_EQ(document.FindNode("\x82\x81"), &document);
    EXPECT_EQ(document.FindNode("\x82\x40"), nullptr);
}

TEST(XMLValue, OwnsCopies) {
    CXMLValue made;
    EXPECT_EQ(made.SequenceNumber(), -1);
    made.SetFieldName("n&amp;");
    made.SetValue("abc&lt;def", 7);
    made.DeHTMLify();
    made.SetValue(made.Value() + 1, 0);
    made.SetSequenceNumber(7);
    CXMLValue copy(made);
    made.SetValue(nullptr, 5);
    EXPECT_EQ(made.Value(), nullptr);
    EXPECT_STREQ(copy.FieldName(), "n&");
    EXPECT_STREQ(copy.Value(), "bc<;");
    EXPECT_EQ(copy.SequenceNumber(), 7);
}
