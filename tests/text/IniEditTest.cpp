#include "tests/support/CapturedLog.h"
#include "tests/text/IniDocuments.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

TEST(IniValue, OwnsItsTexts) {
    CIniValue empty;
    EXPECT_EQ(empty.Key(), nullptr);
    EXPECT_EQ(empty.Value(), nullptr);
    CIniValue value("key", "value");
    CIniValue copy(value);
    value.SetValue(value.Value() + 2);
    EXPECT_STREQ(value.Value(), "lue");
    value.SetKey("");
    EXPECT_EQ(value.Key(), nullptr);
    EXPECT_STREQ(copy.Key(), "key");
    EXPECT_STREQ(copy.Value(), "value");
    const CIniValue& itself = copy;
    copy = itself;
    EXPECT_STREQ(copy.Value(), "value");
    copy = empty;
    EXPECT_EQ(copy.Key(), nullptr);
    EXPECT_EQ(copy.Value(), nullptr);
}

TEST(IniValue, OfAParsedDocumentIsLikeAnyOther) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[A]\nkey=value\nsecond=2\n"));
    CIniSection& section = *document.GetSection("A");
    CIniValue& value = *section.GetValue(0u);
    const CIniValue copy(value);
    value.SetValue(value.Value() + 1);
    EXPECT_STREQ(value.Value(), "alue");
    value.SetKey(value.Value());
    EXPECT_STREQ(value.Key(), "alue");
    value.SetValue(value.Value());
    value.SetValue("something much longer than before");
    EXPECT_STREQ(value.Value(), "something much longer than before");
    value.SetValue(nullptr);
    EXPECT_EQ(value.Value(), nullptr);
    EXPECT_STREQ(copy.Key(), "key");
    EXPECT_STREQ(copy.Value(), "value");
    section.RemoveKey(0u);
    section.RemoveKey("second");
    EXPECT_EQ(section.NumValues(), 0u);
}

TEST(IniSection, NamesAreCut) {
    CIniSection section;
    EXPECT_STREQ(section.Name(), "");
    section.SetName(std::string(100, 'n').c_str());
    EXPECT_EQ(section.Name(), std::string(63, 'n'));
    section.AppendToName('x');
    EXPECT_EQ(section.Name(), std::string(63, 'n'));
    section.SetName("ab");
    section.AppendToName('c');
    EXPECT_STREQ(section.Name(), "abc");
    section.SetName(section.Name() + 1);
    EXPECT_STREQ(section.Name(), "bc");
    section.SetName(nullptr);
    EXPECT_STREQ(section.Name(), "");
}

TEST(IniSection, AddsSetsAndRemoves) {
    CIniSection section("S");
    EXPECT_FALSE(section.AddValue(nullptr, "x"));
    EXPECT_FALSE(section.AddValue("", "x"));
    EXPECT_FALSE(section.AddValue(static_cast<CIniValue*>(nullptr)));
    EXPECT_TRUE(section.AddValue("k", "1"));
    EXPECT_TRUE(section.AddValue("K", "2"));
    CIniValue pair("other", "3");
    EXPECT_TRUE(section.AddValue(pair));
    EXPECT_TRUE(section.AddValue(new CIniValue("own", "4")));
    pair.SetValue("changed");
    ASSERT_EQ(section.NumValues(), 4u);
    EXPECT_STREQ(section.GetValue(2u)->Value(), "3");
    EXPECT_EQ(section.GetValue(4u), nullptr);

    EXPECT_TRUE(section.SetValue("k", "5"));
    EXPECT_STREQ(section.GetValue(0u)->Value(), "5");
    EXPECT_STREQ(section.GetValue(1u)->Value(), "2") << "only the first of that key";
    EXPECT_TRUE(section.SetValue("new", ""));
    EXPECT_EQ(section.GetValue(4u)->Value(), nullptr);
    EXPECT_FALSE(section.HasValue("new"));
    EXPECT_FALSE(section.SetValue("", "x"));
    EXPECT_FALSE(section.SetValue(static_cast<const char*>(nullptr), "x"));
    EXPECT_TRUE(section.SetValue(3, ""));
    EXPECT_EQ(section.GetValue(3u)->Value(), nullptr);
    EXPECT_FALSE(section.SetValue(5, "x"));
    EXPECT_FALSE(section.SetValue(-1, "x"));

    // The text of a pair may be the argument that removes it.
    section.RemoveKey(section.GetValue(0u)->Key());
    ASSERT_EQ(section.NumValues(), 3u);
    EXPECT_STREQ(section.GetValue(0u)->Key(), "other");
    section.RemoveKey(99u);
    section.RemoveKey("missing");
    section.RemoveKey(static_cast<const char*>(nullptr));
    EXPECT_EQ(section.NumValues(), 3u);
    section.RemoveKey(1u);
    EXPECT_STREQ(section.GetValue(1u)->Key(), "new");
    section.Clear();
    EXPECT_EQ(section.NumValues(), 0u);

    section.AddParent("P");
    section.AddParent("");
    section.AddParent(nullptr);
    EXPECT_EQ(section.NumParents(), 1);
    section.RemoveParents();
    EXPECT_EQ(section.NumParents(), 0);
}

TEST(IniSection, SortedSectionFindsByBinarySearchAndKeepsItsOrder) {
    CIniSection section("S");
    for (const char* key : {"m", "C", "x", "a"})
        section.AddValue(key, key);
    section.Sort();
    EXPECT_TRUE(section.KeepSorted());
    section.SetValue("E", "e");
    std::string order;
    for (unsigned i = 0; i < section.NumValues(); ++i)
        order += section.GetValue(i)->Key();
    EXPECT_EQ(order, "aCEmx");
    // Appended without sorting: a search that relies on the order need not find it, a set does.
    section.AddValue("b", "b");
    section.SetValue("b", "new");
    EXPECT_STREQ(section.GetValue(5u)->Value(), "new");
    EXPECT_EQ(section.NumValues(), 6u);
    section.SetKeepSorted(false);
    EXPECT_TRUE(section.HasValue("B"));
}

TEST(IniSection, SortedSectionWithRepeatedKeysAnswersTheSameEachTime) {
    CIniSection section("S");
    for (const char* key : {"b", "a", "B", "A", "c", "b"})
        section.AddValue(key, std::to_string(section.NumValues()).c_str());
    section.Sort();
    std::string answers[2];
    for (std::string& answer : answers) {
        for (const char* key : {"a", "b", "c", "b", "a", "a"}) {
            char value[8];
            section.GetString(key, "", value, sizeof value);
            answer += value;
        }
    }
    EXPECT_EQ(answers[0], answers[1]);
    EXPECT_EQ(answers[0][1], answers[0][3]);
    EXPECT_EQ(answers[0][4], answers[0][5]);
}

TEST(IniDocument, SetValueAddsWhatIsMissing) {
    CIniFileReader document;
    CapturedLog log;
    for (const auto& [section, key] :
         {std::pair{"", "k"}, {"s", ""}, {static_cast<const char*>(nullptr), "k"}})
        EXPECT_FALSE(document.SetValue(section, key, "v"));
    EXPECT_FALSE(document.SetValue("s", nullptr, "v"));
    EXPECT_EQ(log.Lines(),
              std::vector<std::string>(4, "CIniFileReader::SetValue: departing, NULL input"));

    EXPECT_TRUE(document.SetValue("Zebra", "b", "1"));
    EXPECT_TRUE(document.SetValue("ZEBRA", "B", "2"));
    EXPECT_TRUE(document.SetValue("Ant", "b", nullptr));
    EXPECT_EQ(Shown(Content(document)), "{Zebra: b=2;}{Ant: b=;}");
    EXPECT_TRUE(document.SetValue(1, 0, "x"));
    EXPECT_FALSE(document.SetValue(1, 1, "x"));
    EXPECT_FALSE(document.SetValue(2, 0, "x"));
    EXPECT_FALSE(document.SetValue(-1, 0, "x"));
    document.Sort();
    EXPECT_TRUE(document.SetValue("Mouse", "z", "1"));
    EXPECT_TRUE(document.SetValue("mouse", "a", "2"));
    EXPECT_TRUE(document.SetValue("Ant", "a", "3"));
    EXPECT_EQ(Shown(Content(document)), "{Ant: a=3; b=x;}{Mouse: a=2; z=1;}{Zebra: b=2;}");
    EXPECT_TRUE(document.GetSection("mouse")->KeepSorted());
    document.GetSection("Ant")->SetKeepSorted(false);
    EXPECT_TRUE(document.SetValue("Ant", "A0", "4"));
    EXPECT_STREQ(document.GetSection("Ant")->GetValue(1u)->Key(), "A0");
    EXPECT_TRUE(document.GetSection("Ant")->KeepSorted());
    EXPECT_TRUE(document.SetValue(std::string(70, 'n').c_str(), "k", "v"));
    EXPECT_STREQ(document.SectionName(2), std::string(63, 'n').c_str());
}

TEST(IniDocument, SortedDocumentStaysSortedUnderRandomSets) {
    constexpr unsigned seed = 9;
    std::mt19937 random(seed);
    CIniFileReader document;
    document.Sort();
    std::vector<std::pair<std::string, std::string>> model;
    for (int i = 0; i < 3000; ++i) {
        const std::string name = "s" + std::to_string(random() % 30);
        const std::string key = "k" + std::to_string(random() % 30);
        const std::string value = std::to_string(i);
        ASSERT_TRUE(document.SetValue(name.c_str(), key.c_str(), value.c_str()));
        const std::string place = name + "/" + key;
        const auto known = std::find_if(model.begin(), model.end(),
                                        [&](const auto& pair) { return pair.first == place; });
        if (known == model.end())
            model.emplace_back(place, value);
        else
            known->second = value;
    }
    std::sort(model.begin(), model.end());
    std::vector<std::pair<std::string, std::string>> actual;
    for (const IniSectionText& section : Content(document)) {
        for (const auto& [key, value] : section.pairs)
            actual.emplace_back(section.name + "/" + key, value);
    }
    EXPECT_TRUE(std::is_sorted(actual.begin(), actual.end())) << "seed " << seed;
    EXPECT_EQ(actual, model) << "seed " << seed;
}
