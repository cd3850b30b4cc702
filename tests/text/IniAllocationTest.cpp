#include "tests/support/AllocationFault.h"
#include "tests/support/TestFolder.h"
#include "tests/text/IniDocuments.h"

#include <gtest/gtest.h>

namespace {

/// Whatever failed, the document can be read, sorted, edited and emptied.
void ExpectUsable(CIniFileReader& document) {
    EXPECT_EQ(Content(document).find(" ="), std::string::npos) << "a pair without key";
    document.Sort();
    EXPECT_TRUE(document.SetValue("Added", "k", "v"));
    EXPECT_EQ(Get(document, "Added", "k"), "v");
    document.Reset();
}

} // namespace

TEST(IniAllocation, EveryFailureLeavesAValidDocument) {
    std::string text = "top=1\n";
    for (int s = 0; s < 12; ++s) {
        text += "[S" + std::to_string(s) + "] : [S" + std::to_string(s / 2 + 7) + "]\n";
        for (int k = 0; k < 12; ++k)
            text += "k" + std::to_string(k * (s + 1)) + "=" + std::to_string(s) + "\n";
    }
    const TestFolder folder;
    const std::string file = folder.Write("a.ini", text);
    CIniFileReader whole;
    ASSERT_TRUE(whole.Init(file.c_str(), true));
    const std::string expected = Content(whole);

    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([&](unsigned n) {
        CIniFileReader document;
        const bool loaded = document.Init(file.c_str(), true);
        fault.FailAt(0);
        for (unsigned s = 0; s < document.NumSections(); ++s) {
            const CIniSection& section = *document.GetSection(static_cast<int>(s));
            for (unsigned i = 1; section.KeepSorted() && i < section.NumValues(); ++i)
                EXPECT_LE(_stricmp(section.GetValue(i - 1)->Key(), section.GetValue(i)->Key()), 0);
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
        bool good = document.SetValue("A", "k", "v");
        good = document.SetValue("A", "l", "w") && good;
        document.Sort();
        good = document.SetValue("A", "k", "longer") && good;
        good = document.SetValue(0, 0, "longest of all") && good;
        CIniValue pair("p", "q");
        CIniSection* section = document.GetSection("A");
        good = pair.Key() != nullptr && pair.Value() != nullptr && section != nullptr &&
               section->AddValue(pair) && good;
        good = document.SetFileName("name") && good;
        fault.FailAt(0);
        EXPECT_TRUE(!good || Content(document) == "{A: k=longest of all; l=w; p=q;}") << n;
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
