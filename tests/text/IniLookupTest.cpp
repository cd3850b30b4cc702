#include "tests/support/CapturedLog.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"
#include "tests/text/IniDocuments.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

namespace {

/// Shows what a document remembers.
class Peek : public CIniFileReader {
public:
    using CIniFileReader::CheckForClosingQuote;
    using CIniFileReader::lastSectionIndex;
};

} // namespace

TEST(IniLookup, SortedAndUnsortedAgreeWithAPlainSearch) {
    constexpr unsigned seed = 5;
    std::mt19937 random(seed);
    const auto name = [&random](const char* letters, unsigned number) {
        return std::string(1, letters[random() % 2]) + std::to_string(number);
    };
    for (int round = 0; round < 60; ++round) {
        std::string text;
        std::map<std::pair<unsigned, unsigned>, std::string> model;
        const unsigned sections = 1 + random() % 6 + 7 * (random() % 6); // no multiple of 7
        for (unsigned s = 0; s < sections; ++s) {
            const unsigned section = s * 7 % sections;
            text += "[" + name("sS", section) + "]\n";
            const unsigned pairs = 1 + random() % 30;
            for (unsigned k = 0; k < pairs; ++k) {
                const std::string value = std::to_string(random() % 1000);
                text += name("kK", k * 11 % 37) + "=" + value + "\n";
                model[{section, k * 11 % 37}] = value;
            }
        }
        CIniFileReader documents[2];
        ASSERT_TRUE(Load(documents[0], text, false));
        ASSERT_TRUE(Load(documents[1], text, true));
        ASSERT_TRUE(documents[1].KeepSorted() && documents[1].GetSection(0)->KeepSorted());
        for (int i = 0; i < 400; ++i) {
            const unsigned section = random() % (sections + 2);
            const unsigned key = random() % 40;
            const auto known = model.find({section, key});
            const std::string sectionName = name("sS", section);
            const std::string keyName = name("kK", key);
            const CIniFileReader& document = documents[i % 2];
            SCOPED_TRACE("seed 5: " + sectionName + ", " + keyName + " in\n" + text);
            ASSERT_EQ(Get(document, sectionName.c_str(), keyName.c_str()),
                      known != model.end() ? known->second : "(none)");
            ASSERT_EQ(document.KeyExists(sectionName.c_str(), keyName.c_str()),
                      known != model.end());
            ASSERT_EQ(document.SectionExists(sectionName.c_str()), section < sections);
        }
    }
}

TEST(IniLookup, OutOfRangeIsNothing) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[A]\na=NOPE_NO_KEY\nb=nope_no_key\nempty=\n"));
    EXPECT_FALSE(document.KeyExists("A", "a")) << "the mark of a missing key";
    EXPECT_TRUE(document.KeyExists("A", "b"));
    EXPECT_EQ(Get(document, "A", "empty"), "(none)");
    EXPECT_FALSE(document.KeyExists("A", "empty"));
    EXPECT_FALSE(document.SectionExists("") || document.SectionExists(nullptr));
    EXPECT_EQ(document.SectionName(1), nullptr);
    for (const int place : {-1, 1}) {
        EXPECT_EQ(document.GetSection(place), nullptr);
        EXPECT_EQ(document.GetNumValues(place), 0);
        EXPECT_EQ(document.GetValue(place, 0), nullptr);
    }
    EXPECT_EQ(document.GetValue(0, 3), nullptr);
    EXPECT_EQ(document.GetValue(0, -1), nullptr);
}

TEST(IniLookup, ResultIsCutAndTheRestZeroed) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[A]\nk=value\n"));
    const struct {
        const char* section;
        const char* key;
        const char* defaultValue;
        unsigned size;
        bool found;
        std::string text;
    } rows[] = {
        {"A", "k", "d", 6, true, "value"},           {"A", "k", "d", 3, true, "va"},
        {"A", "x", "default", 12, true, "default"},  {"A", "x", nullptr, 4, true, ""},
        {"B", "k", "default", 12, false, "default"}, {"B", "k", "default", 4, false, "def"},
        {"B", "k", nullptr, 4, false, ""},           {nullptr, "k", "d", 4, false, "d"},
    };
    for (const auto& row : rows) {
        GuardedBytes buffer(row.size);
        EXPECT_EQ(
            document.GetString(row.section, row.key, row.defaultValue, buffer.Data(), row.size),
            row.found);
        EXPECT_EQ(buffer.View(), row.text + std::string(row.size - row.text.size(), '\0'));
    }
    char untouched = 'x';
    EXPECT_FALSE(document.GetString("A", "k", "d", &untouched, 0));
    EXPECT_FALSE(document.GetString("A", nullptr, "d", &untouched, 1));
    EXPECT_FALSE(document.GetString("A", "k", "d", nullptr, 1));
    EXPECT_EQ(untouched, 'x');
}

TEST(IniLookup, RemembersTheSectionReadLast) {
    Peek document;
    ASSERT_TRUE(Load(document, "x=0\n[Beta]\nb=2\n[Alpha]\na=1\n[beta]\nb=3\n"));
    EXPECT_EQ(Get(document, nullptr, "x"), "(none)");
    document.lastSectionIndex = 0;
    EXPECT_EQ(Get(document, nullptr, "x"), "0");
    EXPECT_EQ(Get(document, "", "x"), "0");
    EXPECT_EQ(Get(document, "Alpha", "a"), "1");
    // The next section of that name is taken, although an earlier one has it too.
    EXPECT_EQ(Get(document, "beta", "b"), "3");
    EXPECT_EQ(document.lastSectionIndex, 3);
    EXPECT_EQ(Get(document, "missing", "b"), "(none)");
    EXPECT_EQ(document.lastSectionIndex, 3) << "a miss is not remembered";
    EXPECT_EQ(Get(document, "beta", "b"), "3");
    EXPECT_EQ(Get(document, "alpha", "a"), "1");
    EXPECT_EQ(document.lastSectionIndex, 2);
    document.Reset();
    EXPECT_EQ(document.lastSectionIndex, -1);
    document.lastSectionIndex = 99;
    EXPECT_EQ(Get(document, "alpha", "a"), "(none)") << "an index out of range is not followed";
}

TEST(IniLookup, SortReversesEqualNamesAndIsLogged) {
    const CapturedLog log;
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[b]\nz=1\nA=2\na=3\nM=4\n[B]\nk=1\n[a]\nk=2\n", true));
    EXPECT_EQ(Content(document), "{a: k=2;}{B: k=1;}{b: a=3; A=2; M=4; z=1;}");
    ASSERT_EQ(log.Lines().size(), 2u);
    EXPECT_TRUE(log.Lines()[0].starts_with("CIniFileReader::Sort: sorting 3 section names took "));
    EXPECT_TRUE(log.Lines()[1].starts_with(
        "CIniFileReader::Sort: sorting 3 sections + section names took "));
    document.Sort();
    EXPECT_EQ(Content(document), "{a: k=2;}{b: A=2; a=3; M=4; z=1;}{B: k=1;}");
    document.SetKeepSorted(false);
    EXPECT_FALSE(document.KeepSorted());
}

TEST(IniLookup, ClosingQuoteAndInnerQuotes) {
    const Peek document;
    static constexpr struct {
        const char* text;
        bool closed;
        int inner;
    } rows[] = {
        {"", false, 0},      {"a\" \t", true, 0}, {"a\"b", false, 1},   {"a\" \"", true, 1},
        {"\"\"\"", true, 2}, {"a\r\"", false, 0}, {"a\"\n\"", true, 0}, {"\"a\"b\" c", false, 3},
    };
    for (const auto& row : rows) {
        int inner = 0;
        const unsigned long length = static_cast<unsigned long>(std::strlen(row.text));
        EXPECT_EQ(document.CheckForClosingQuote(row.text, 0, length, inner), row.closed)
            << row.text;
        EXPECT_EQ(inner, row.inner) << row.text;
    }
    int inner = 5;
    EXPECT_TRUE(document.CheckForClosingQuote("xx\"\"", 2, 3, inner)) << "from and to the places";
    EXPECT_EQ(inner, 5) << "raised, not set";
}

TEST(IniLookup, InitReadsFiles) {
    const TestFolder folder;
    const std::string file = folder.Write("a.ini", "[B]\nb=2\n[A]\na=1\n");
    const std::string refused[] = {"", folder.File("missing.ini"), folder.Path(),
                                   folder.Write("empty.ini", ""), folder.Write("bad.ini", "=1")};
    CIniFileReader document;
    EXPECT_FALSE(document.Init(nullptr, false));
    for (const std::string& name : refused) {
        ASSERT_TRUE(document.Init(file.c_str(), true));
        EXPECT_TRUE(document.Initialized());
        EXPECT_EQ(document.FileName(), file);
        EXPECT_EQ(Content(document), "{A: a=1;}{B: b=2;}");
        EXPECT_FALSE(document.Init(name.c_str(), false)) << name;
        EXPECT_FALSE(document.Initialized()) << name;
        EXPECT_EQ(Content(document), "") << name;
    }
    ASSERT_TRUE(document.Init(file.c_str(), false));
    document.ClearValues();
    EXPECT_FALSE(document.Initialized());
    EXPECT_EQ(Content(document), "");
    EXPECT_EQ(document.FileName(), file);
}
