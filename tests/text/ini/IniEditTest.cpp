#include "tests/support/CapturedLog.h"
#include "tests/text/ini/IniDocuments.h"

#include <gtest/gtest.h>

TEST(IniValue, OwnsItsTexts) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[A]\nkey=value\n"));
    CIniValue made("key", "value");
    // One that owns two texts, and one whose texts lie in the block of a parsed pair.
    for (CIniValue* value : {&made, document.GetSection("A")->GetValue(0u)}) {
        CIniValue copy(*value);
        value->SetValue(value->Value() + 1);
        value->SetKey(value->Value());
        value->SetValue(value->Value());
        EXPECT_STREQ(value->Key(), "alue");
        value->SetValue("something much longer than before");
        EXPECT_STREQ(value->Value(), "something much longer than before");
        value->SetValue(nullptr);
        value->SetKey("");
        EXPECT_TRUE(value->Key() == nullptr && value->Value() == nullptr);
        const CIniValue& itself = copy;
        copy = itself;
        EXPECT_STREQ(copy.Key(), "key");
        EXPECT_STREQ(copy.Value(), "value");
        copy = CIniValue();
        EXPECT_TRUE(copy.Key() == nullptr && copy.Value() == nullptr);
    }
}

TEST(IniSection, NamesAreCut) {
    CIniSection section(std::string(100, 'n').c_str());
    section.AppendToName('x');
    EXPECT_EQ(section.Name(), std::string(63, 'n'));
    section.SetName("ab");
    section.AppendToName('c');
    section.SetName(section.Name() + 1);
    EXPECT_STREQ(section.Name(), "bc");
    section.SetName(nullptr);
    EXPECT_STREQ(section.Name(), "");
}

TEST(IniSection, AddsSetsAndRemoves) {
    CIniFileReader document;
    ASSERT_TRUE(document.SetValue("S", "k", "1"));
    CIniSection& section = *document.GetSection("S");
    EXPECT_FALSE(section.AddValue(nullptr, "x") || section.AddValue("", "x"));
    EXPECT_FALSE(section.AddValue(static_cast<CIniValue*>(nullptr)));
    EXPECT_FALSE(section.SetValue("", "x"));
    EXPECT_TRUE(section.AddValue("K", "2"));
    CIniValue pair("other", "3");
    EXPECT_TRUE(section.AddValue(pair));
    pair.SetValue("changed");
    EXPECT_TRUE(section.AddValue(new CIniValue("own", "4")));
    EXPECT_TRUE(section.SetValue("k", "5"));
    EXPECT_TRUE(section.SetValue(3, ""));
    EXPECT_FALSE(section.HasValue("own"));
    EXPECT_EQ(Content(document), "{S: k=5; K=2; other=3; own=;}");
    section.RemoveKey(section.GetValue(0u)->Key());
    section.RemoveKey(99u);
    section.RemoveKey(static_cast<const char*>(nullptr));
    section.RemoveKey(1u);
    EXPECT_EQ(Content(document), "{S: other=3;}");
    section.Clear();
    EXPECT_EQ(section.NumValues(), 0u);

    section.AddParent("P");
    section.AddParent("");
    EXPECT_EQ(section.NumParents(), 1);
    section.RemoveParents();
    EXPECT_EQ(section.NumParents(), 0);
}

TEST(IniSection, SortedSectionFindsByBinarySearch) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[S]\nm=1\nC=2\na=3\n"));
    CIniSection& section = *document.GetSection("S");
    section.Sort();
    section.AddValue("M", "0");
    EXPECT_EQ(Get(document, "S", "m"), Get(document, "S", "m")) << "of equal keys the same";
    section.RemoveKey(3u);
    section.SetValue("E", "4");
    // Appended without sorting: a search that relies on the order need not find it, a set does.
    section.AddValue("b", "5");
    section.SetValue("b", "6");
    EXPECT_EQ(Content(document), "{S: a=3; C=2; E=4; m=1; b=6;}");
    section.SetKeepSorted(false);
    EXPECT_TRUE(section.HasValue("B"));

    ASSERT_TRUE(Load(document, "[S]\nb=0\na=1\nB=2\nA=3\nc=4\nb=5\n", /*sort=*/true));
    std::string answers;
    for (const char* key : {"a", "b", "c", "b", "a"})
        answers += Get(document, "S", key);
    EXPECT_TRUE(answers[0] == answers[4] && answers[1] == answers[3]) << answers;
}

TEST(IniDocument, SetValueAddsWhatIsMissing) {
    CIniFileReader document;
    const CapturedLog log;
    EXPECT_FALSE(document.SetValue("", "k", "v") || document.SetValue(nullptr, "k", "v"));
    EXPECT_FALSE(document.SetValue("s", "", "v") || document.SetValue("s", nullptr, "v"));
    EXPECT_EQ(log.Lines(),
              std::vector<std::string>(4, "CIniFileReader::SetValue: departing, NULL input"));

    EXPECT_TRUE(document.SetValue("Zebra", "b", "1"));
    EXPECT_TRUE(document.SetValue("Ant", "b", nullptr));
    EXPECT_EQ(Content(document), "{Zebra: b=1;}{Ant: b=;}");
    EXPECT_TRUE(document.SetValue(1, 0, "x"));
    document.Sort();
    EXPECT_TRUE(document.SetValue(std::string(70, 'n').c_str(), "k", "v"));
    document.GetSection("Ant")->SetKeepSorted(false);
    EXPECT_TRUE(document.SetValue("Ant", "A0", "4"));
    EXPECT_EQ(Content(document),
              "{Ant: A0=4; b=x;}{" + std::string(63, 'n') + ": k=v;}{Zebra: b=1;}");
}
