#include "tests/support/AllocationFault.h"
#include "tests/support/TestFolder.h"
#include "tests/text/IniDocuments.h"

#include <gtest/gtest.h>

namespace {

/// Whatever failed, the document can be read, sorted, edited and emptied.
void ExpectUsable(CIniFileReader& document) {
    for (const IniSectionText& section : Content(document)) {
        for (const auto& [key, value] : section.pairs)
            EXPECT_FALSE(key.empty());
    }
    document.Sort();
    EXPECT_TRUE(document.SetValue("Added", "k", "v"));
    EXPECT_EQ(Get(document, "Added", "k"), "v");
    document.Reset();
}

bool IsInOrder(const CIniSection& section) {
    for (unsigned i = 1; i < section.NumValues(); ++i) {
        if (_stricmp(section.GetValue(i - 1)->Key(), section.GetValue(i)->Key()) > 0)
            return false;
    }
    return true;
}

std::string SmallDocument() {
    std::string text = "top=1\n";
    for (int s = 0; s < 12; ++s) {
        text += "[S" + std::to_string(s) + "] : [S" + std::to_string(s / 2 + 7) + "]\n";
        for (int k = 0; k < 12; ++k)
            text += "k" + std::to_string(k * (s + 1)) + "=" + std::to_string(s) + "\n";
    }
    return text;
}

} // namespace

TEST(IniAllocation, EveryFailureLeavesAValidDocument) {
    const TestFolder folder;
    const std::string text = SmallDocument();
    const std::string file = folder.Write("a.ini", text);
    CIniFileReader whole;
    ASSERT_TRUE(whole.Init(file.c_str(), true));
    const IniText expected = Content(whole);

    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([&](unsigned n) {
        CIniFileReader document;
        const bool loaded = document.Init(file.c_str(), true);
        fault.FailAt(0);
        for (unsigned i = 0; i < document.NumSections(); ++i) {
            const CIniSection& section = *document.GetSection(static_cast<int>(i));
            EXPECT_TRUE(!section.KeepSorted() || IsInOrder(section)) << "allocation " << n;
        }
        document.Sort();
        EXPECT_TRUE(!loaded || Content(document) == expected) << "allocation " << n;
        ExpectUsable(document);
    });
    EXPECT_GT(failures, 0u);
}

TEST(IniAllocation, EveryFailureOfAnEditIsReported) {
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([&](unsigned n) {
        CIniFileReader document;
        bool set[6];
        set[0] = document.SetValue("A", "k", "v");
        set[1] = document.SetValue("A", "l", "w");
        document.Sort();
        set[2] = document.SetValue("A", "k", "longer");
        set[3] = document.SetValue(0, 0, "longest of all");
        CIniValue pair("p", "q");
        CIniSection* section = document.GetSection("A");
        set[4] = section != nullptr && pair.Key() != nullptr && section->AddValue(pair);
        set[5] = document.SetFileName("name");
        fault.FailAt(0);
        const bool allSet = set[0] && set[1] && set[2] && set[3] && set[4] && set[5];
        const bool pairWhole = pair.Key() != nullptr && pair.Value() != nullptr;
        const bool complete =
            Shown(Content(document)) == "{A: k=longest of all; l=w; p=q;}" && pairWhole;
        EXPECT_TRUE(complete || !allSet || !pairWhole) << "allocation " << n;
        ExpectUsable(document);
    });
    EXPECT_GT(failures, 8u);
}

TEST(IniAllocation, ParsingTakesOneBlockAPair) {
    std::string text = "[S]\n";
    for (int k = 0; k < 1000; ++k)
        text += "key" + std::to_string(k) + " = some value\n";
    AllocationFault fault("vtrutils.dll");
    CIniFileReader document;
    ASSERT_TRUE(Load(document, text));
    EXPECT_LT(fault.Count(), 1020u);
}
