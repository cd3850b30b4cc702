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
        EXPECT_STREQ(value->Key(), "alue");
        value->SetValue("something much longer than before");
        EXPECT_STREQ(value->Value(), "something much longer than before");
        value->SetKey("");
        EXPECT_EQ(value->Key(), nullptr);
        const CIniValue& itself = copy;
        copy = itself;
        EXPECT_STREQ(copy.Key(), "key");
        EXPECT_STREQ(copy.Value(), "value");
        copy = CIniValue("other", nullptr);
        EXPECT_STREQ(copy.Key(), "other");
        EXPECT_EQ(copy.Value(), nullptr);
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

TEST(IniSection, RefusesWhatHasNoKey) {
    CIniSection section("S");
    for (const char* none : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_FALSE(section.AddValue(none, "x") || section.SetValue(none, "x"));
        section.RemoveKey(none);
        section.AddParent(none);
    }
    EXPECT_FALSE(section.AddValue(static_cast<CIniValue*>(nullptr)));
    EXPECT_TRUE(section.AddValue("k", "1") && section.AddValue(new CIniValue("own", "4")));
    EXPECT_TRUE(section.SetValue(1, "") && !section.HasValue("own"));
    section.RemoveKey(section.GetValue(0u)->Key());
    EXPECT_STREQ(section.GetValue(0u)->Key(), "own");
    section.Clear();
    section.AddParent("P");
    EXPECT_TRUE(section.NumValues() == 0 && section.NumParents() == 1);
    section.RemoveParents();
    EXPECT_EQ(section.NumParents(), 0);
}

TEST(IniSection, SortedSectionFindsByBinarySearch) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[S]\nm=1\nC=2\na=3\n"));
    CIniSection& section = *document.GetSection("S");
    section.Sort();
    section.SetValue("E", "4");
    // Appended without sorting: a search that relies on the order need not find it, a set does.
    section.AddValue("b", "5");
    section.SetValue("b", "6");
    EXPECT_EQ(Content(document), "{S: a=3; C=2; E=4; m=1; b=6;}");
    section.SetKeepSorted(false);
    EXPECT_TRUE(section.HasValue("B"));
}
