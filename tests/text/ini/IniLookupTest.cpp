#include "tests/support/CapturedLog.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"
#include "tests/text/ini/IniDocuments.h"

#include <gtest/gtest.h>

namespace {

/// Shows what a document remembers.
class Peek : public CIniFileReader {
public:
    using CIniFileReader::CheckForClosingQuote;
    using CIniFileReader::lastSectionIndex;
};

} // namespace

TEST(IniLookup, OutOfRangeIsNothing) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[A]\na=NOPE_NO_KEY\nb=nope_no_key\n"));
    EXPECT_FALSE(document.KeyExists("A", "a")) << "the mark of a missing key";
    EXPECT_TRUE(document.KeyExists("A", "b"));
    EXPECT_FALSE(document.SectionExists("") || document.SectionExists(nullptr));
    EXPECT_EQ(document.SectionName(1), nullptr);
    for (const int place : {-1, 1}) {
        EXPECT_EQ(document.GetSection(place), nullptr);
        EXPECT_EQ(document.GetNumValues(place), 0);
        EXPECT_TRUE(!document.GetValue(place, 0) && !document.SetValue(place, 0, "x"));
        EXPECT_TRUE(!document.GetValue(0, 3 * place) && !document.SetValue(0, 3 * place, "x"));
    }
    const unsigned char one[] = {'a'};
    EXPECT_FALSE(document.InitFromBuffer(nullptr, 5, false));
    EXPECT_FALSE(document.InitFromBuffer(one, 0x80000000u, false));
    EXPECT_TRUE(document.InitFromBuffer(one, 0, true));
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
        {"A", "k", "d", 6, true, "value"},      {"A", "k", "d", 3, true, "va"},
        {"A", "x", "default", 4, true, "def"},  {"A", "x", nullptr, 4, true, ""},
        {"B", "k", "default", 4, false, "def"}, {nullptr, "k", "d", 4, false, "d"},
    };
    for (const auto& row : rows) {
        GuardedBytes buffer(row.size);
        EXPECT_EQ(
            document.GetString(row.section, row.key, row.defaultValue, buffer.Data(), row.size),
            row.found);
        EXPECT_EQ(buffer.View(), row.text + std::string(row.size - row.text.size(), '\0'));
    }
    char untouched = 'x';
    EXPECT_FALSE(document.GetString("A", "k", "d", &untouched, 0) ||
                 document.GetString("A", nullptr, "d", &untouched, 1) ||
                 document.GetString("A", "k", "d", nullptr, 1));
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
    EXPECT_EQ(Get(document, "beta", "b"), "3") << "the next one, although there is an earlier one";
    EXPECT_EQ(Get(document, "missing", "b"), "(none)");
    EXPECT_EQ(document.lastSectionIndex, 3) << "a miss is not remembered";
    EXPECT_EQ(Get(document, "beta", "b"), "3");
    EXPECT_EQ(Get(document, "alpha", "a"), "1");
    EXPECT_EQ(document.lastSectionIndex, 2);
    document.Reset();
    EXPECT_EQ(document.lastSectionIndex, -1);
    document.lastSectionIndex = 99;
    EXPECT_EQ(Get(document, "alpha", "a"), "(none)") << "an index out of range is not followed";
    int innerQuotes = 5;
    EXPECT_TRUE(document.CheckForClosingQuote("\"\"x\" \"\"", 2, 6, innerQuotes));
    EXPECT_EQ(innerQuotes, 6) << "raised by those between the places";
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
}

TEST(IniLookup, InitReadsFiles) {
    const TestFolder folder;
    const std::string file = folder.Write("a.ini", "[B]\nb=2\n[A]\na=1\n");
    CIniFileReader document;
    EXPECT_FALSE(document.Init(nullptr, false));
    for (const std::string& refused :
         {std::string(), folder.File("missing.ini"), folder.Path(), folder.Write("empty.ini", ""),
          folder.Write("bad.ini", "=1")}) {
        ASSERT_TRUE(document.Init(file.c_str(), true));
        EXPECT_TRUE(document.Initialized() && document.FileName() == file);
        EXPECT_EQ(Content(document), "{A: a=1;}{B: b=2;}");
        EXPECT_FALSE(document.Init(refused.c_str(), false)) << refused;
        EXPECT_TRUE(!document.Initialized() && Content(document).empty()) << refused;
    }
    ASSERT_TRUE(document.Init(file.c_str(), false));
    document.ClearValues();
    EXPECT_FALSE(document.Initialized());
    EXPECT_EQ(document.NumSections(), 0u);
}
