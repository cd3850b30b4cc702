#include "tests/support/CapturedLog.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"
#include "tests/text/IniDocuments.h"

#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <random>

namespace {

/// Shows what a document remembers.
class Peek : public CIniFileReader {
public:
    int Last() const { return lastSectionIndex; }
    void SetLast(int index) { lastSectionIndex = index; }
    using CIniFileReader::CheckForClosingQuote;
};

std::string Lower(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

const char* const cars = "x=0\n[Beta]\nb=2\nempty=\n[Alpha]\na=1\nB=5\n[beta]\nb=3\n";

} // namespace

TEST(IniLookup, FindsTheFirstIgnoringCase) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, cars));
    EXPECT_FALSE(document.Initialized());
    EXPECT_EQ(document.NumSections(), 4u);
    EXPECT_EQ(Get(document, "BETA", "B"), "2");
    EXPECT_EQ(Get(document, "alpha", "b"), "5");
    EXPECT_EQ(Get(document, "alpha", "missing"), "(none)");
    EXPECT_EQ(Get(document, "beta", "empty"), "(none)");
    EXPECT_EQ(Get(document, "missing", "b"), "(none)");
    EXPECT_TRUE(document.SectionExists("ALPHA"));
    EXPECT_FALSE(document.SectionExists("Gamma"));
    EXPECT_FALSE(document.SectionExists(""));
    EXPECT_FALSE(document.SectionExists(nullptr));
    EXPECT_TRUE(document.KeyExists("alpha", "a"));
    EXPECT_FALSE(document.KeyExists("beta", "empty"));
    EXPECT_FALSE(document.KeyExists("missing", "a"));
    EXPECT_STREQ(document.GetSection("alpha")->Name(), "Alpha");
    EXPECT_EQ(document.GetSection("gamma"), nullptr);
    EXPECT_STREQ(document.GetSection(0)->Name(), "");
    EXPECT_EQ(document.GetSection(-1), nullptr);
    EXPECT_EQ(document.GetSection(4), nullptr);
    EXPECT_EQ(document.SectionName(4), nullptr);
    EXPECT_EQ(document.GetNumValues(2), 2);
    EXPECT_EQ(document.GetNumValues(4), 0);
    EXPECT_EQ(document.GetNumValues(-1), 0);
    EXPECT_STREQ(document.GetValue(2, 1)->Key(), "B");
    EXPECT_EQ(document.GetValue(2, 2), nullptr);
    EXPECT_EQ(document.GetValue(2, -1), nullptr);
    EXPECT_EQ(document.GetValue(4, 0), nullptr);
    EXPECT_EQ(document.GetValue(-1, 0), nullptr);
}

TEST(IniLookup, ResultIsCutAndTheRestZeroed) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[A]\nk=value\n"));
    static constexpr struct {
        const char* name;
        const char* section;
        const char* key;
        const char* defaultValue;
        unsigned size;
        bool found;
        const char* text;
        bool zeroed;
    } rows[] = {
        {"exact", "A", "k", "d", 6, true, "value", false},
        {"cut", "A", "k", "d", 3, true, "va", false},
        {"size of one", "A", "k", "d", 1, true, "", false},
        {"default", "A", "x", "default", 12, true, "default", true},
        {"default cut", "A", "x", "default", 4, true, "def", true},
        {"no default", "A", "x", nullptr, 4, true, "", true},
        {"no section", "B", "k", "default", 12, false, "default", true},
        {"no section, cut", "B", "k", "default", 4, false, "def", true},
        {"no section, no default", "B", "k", nullptr, 4, false, "", true},
        {"null section", nullptr, "k", "d", 4, false, "d", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        GuardedBytes buffer(row.size);
        EXPECT_EQ(
            document.GetString(row.section, row.key, row.defaultValue, buffer.Data(), row.size),
            row.found);
        EXPECT_STREQ(buffer.Data(), row.text);
        for (std::size_t i = std::strlen(row.text); row.zeroed && i < row.size; ++i)
            EXPECT_EQ(buffer[i], '\0') << i;
    }
    char untouched = 'x';
    EXPECT_FALSE(document.GetString("A", "k", "d", &untouched, 0));
    EXPECT_FALSE(document.GetString("A", nullptr, "d", &untouched, 1));
    EXPECT_FALSE(document.GetString("A", "k", "d", nullptr, 1));
    EXPECT_EQ(untouched, 'x');
}

TEST(IniLookup, RemembersTheSectionReadLast) {
    Peek document;
    ASSERT_TRUE(Load(document, cars));
    EXPECT_EQ(document.Last(), -1);
    EXPECT_EQ(Get(document, nullptr, "x"), "(none)");
    document.SetLast(0);
    EXPECT_EQ(Get(document, nullptr, "x"), "0");
    EXPECT_EQ(Get(document, "", "x"), "0");
    // The next section of that name is taken, although an earlier one has it too.
    EXPECT_EQ(Get(document, "Alpha", "a"), "1");
    EXPECT_EQ(document.Last(), 2);
    EXPECT_EQ(Get(document, "beta", "b"), "3");
    EXPECT_EQ(document.Last(), 3);
    EXPECT_EQ(Get(document, "beta", "b"), "3");
    EXPECT_EQ(Get(document, "missing", "b"), "(none)");
    EXPECT_EQ(document.Last(), 3) << "a miss is not remembered";
    EXPECT_EQ(Get(document, "alpha", "a"), "1");
    EXPECT_EQ(document.Last(), 2);
    document.Reset();
    EXPECT_EQ(document.Last(), -1);
    document.SetLast(99);
    ASSERT_EQ(Get(document, "alpha", "a"), "(none)") << "an index out of range is not followed";
}

TEST(IniLookup, SentinelIsNotAValue) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[A]\na=NOPE_NO_KEY\nb=nope_no_key\n"));
    EXPECT_FALSE(document.KeyExists("A", "a"));
    EXPECT_TRUE(document.KeyExists("A", "b"));
}

TEST(IniLookup, SortedAndUnsortedAgreeWithAPlainSearch) {
    constexpr unsigned seed = 5;
    std::mt19937 random(seed);
    for (int round = 0; round < 60; ++round) {
        std::string text;
        const unsigned sections = 1 + random() % 6 + 7 * (random() % 6); // no multiple of 7
        for (unsigned s = 0; s < sections; ++s) {
            text +=
                "[" + std::string(1, "sS"[random() % 2]) + std::to_string(s * 7 % sections) + "]\n";
            const unsigned pairs = 1 + random() % 30;
            for (unsigned k = 0; k < pairs; ++k)
                text += std::string(1, "kK"[random() % 2]) + std::to_string(k * 11 % 37) + "=" +
                        std::to_string(random() % 1000) + "\n";
        }
        CIniFileReader unsorted;
        CIniFileReader sorted;
        ASSERT_TRUE(Load(unsorted, text, false));
        ASSERT_TRUE(Load(sorted, text, true));
        ASSERT_TRUE(sorted.KeepSorted() && sorted.GetSection(0)->KeepSorted());
        const IniText content = Content(unsorted);
        for (int i = 0; i < 200; ++i) {
            const std::string section = "s" + std::to_string(random() % (sections + 2));
            const std::string key = "k" + std::to_string(random() % 40);
            std::string expected = "(none)";
            for (const IniSectionText& candidate : content) {
                if (Lower(candidate.name) != section)
                    continue;
                for (const auto& [k, v] : candidate.pairs) {
                    if (Lower(k) == key) {
                        expected = v;
                        break;
                    }
                }
                break;
            }
            ASSERT_EQ(Get(unsorted, section.c_str(), key.c_str()), expected)
                << "seed " << seed << ", round " << round << "\n"
                << text;
            ASSERT_EQ(Get(sorted, section.c_str(), key.c_str()), expected)
                << "seed " << seed << ", round " << round << "\n"
                << text;
        }
    }
}

TEST(IniLookup, SortReversesEqualNamesAndIsLogged) {
    CapturedLog log;
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[b]\nz=1\nA=2\na=3\nM=4\n[B]\nk=1\n[a]\nk=2\n", true));
    EXPECT_EQ(Shown(Content(document)), "{a: k=2;}{B: k=1;}{b: a=3; A=2; M=4; z=1;}");
    ASSERT_EQ(log.Lines().size(), 2u);
    const std::string names = "CIniFileReader::Sort: sorting 3 section names took ";
    const std::string all = "CIniFileReader::Sort: sorting 3 sections + section names took ";
    EXPECT_TRUE(log.Lines()[0].starts_with(names) && log.Lines()[0].ends_with(" ms"));
    EXPECT_TRUE(log.Lines()[1].starts_with(all) && log.Lines()[1].ends_with(" ms"));
    document.Sort();
    EXPECT_EQ(Shown(Content(document)), "{a: k=2;}{b: A=2; a=3; M=4; z=1;}{B: k=1;}");
    document.SetKeepSorted(false);
    EXPECT_FALSE(document.KeepSorted());
    EXPECT_EQ(Get(document, "b", "m"), "4");
}

TEST(IniLookup, ClosingQuoteAndInnerQuotes) {
    const Peek document;
    static constexpr struct {
        const char* text;
        bool closed;
        int inner;
    } rows[] = {
        {"", false, 0},      {"a\"", true, 0},     {"a\" \t", true, 0},
        {"a\"b", false, 1},  {"a\" \"", true, 1},  {"\"\"\"", true, 2},
        {"a\r\"", false, 0}, {"a\"\n\"", true, 0}, {"\"a\"b\" c", false, 3},
    };
    for (const auto& row : rows) {
        int inner = 0;
        EXPECT_EQ(document.CheckForClosingQuote(
                      row.text, 0, static_cast<unsigned long>(std::strlen(row.text)), inner),
                  row.closed)
            << row.text;
        EXPECT_EQ(inner, row.inner) << row.text;
    }
    int inner = 5;
    EXPECT_TRUE(document.CheckForClosingQuote("xx\"\"", 2, 3, inner)) << "from and to the places";
    EXPECT_EQ(inner, 5) << "raised, not set";
}

TEST(IniLookup, InitReadsFiles) {
    const TestFolder folder;
    CIniFileReader document;
    EXPECT_FALSE(document.Init(nullptr, false));
    EXPECT_FALSE(document.Init("", false));
    EXPECT_FALSE(document.Init(folder.File("missing.ini").c_str(), false));
    EXPECT_FALSE(document.Init(folder.Path().c_str(), false));
    EXPECT_FALSE(document.Init(folder.Write("empty.ini", "").c_str(), false));
    const std::string file = folder.Write("a.ini", "[B]\nb=2\n[A]\na=1\n");
    ASSERT_TRUE(document.Init(file.c_str(), true));
    EXPECT_TRUE(document.Initialized());
    EXPECT_EQ(document.FileName(), file);
    EXPECT_EQ(Shown(Content(document)), "{A: a=1;}{B: b=2;}");
    EXPECT_FALSE(document.Init(folder.Write("bad.ini", "=1").c_str(), false));
    EXPECT_FALSE(document.Initialized());
    EXPECT_EQ(document.NumSections(), 0u);
    ASSERT_TRUE(document.Init(file.c_str(), false));
    document.ClearValues();
    EXPECT_FALSE(document.Initialized());
    EXPECT_EQ(document.NumSections(), 0u);
    EXPECT_EQ(document.FileName(), file);
}
