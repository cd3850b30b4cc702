#include "tests/support/AllocationFault.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/HeapUse.h"
#include "tests/support/TestFolder.h"
#include "tests/text/ini/IniDocuments.h"

#include <gtest/gtest.h>

namespace {

bool Edit(CIniFileReader& document) {
    CIniValue pair("p", "q");
    bool good = document.SetValue("Added", "k", "v");
    good = document.SetValue("Added", "k", "longer") && good;
    good = document.SetValue("S0", "l", "w") && good;
    good = document.SetValue(0, 0, "longest of all") && good;
    CIniSection* section = document.GetSection("Added");
    return pair.Key() != nullptr && pair.Value() != nullptr && section != nullptr &&
           section->AddValue(pair) && document.SetFileName("name") && good;
}

} // namespace

TEST(IniAllocation, EveryFailureIsReportedAndLeavesAValidDocument) {
    std::string text = "top=1\n";
    for (int s = 0; s < 12; ++s) {
        text += "[S" + std::to_string(s) + "] : [S" + std::to_string(s / 2 + 7) + "]\n";
        for (int k = 0; k < 12; ++k)
            text += "k" + std::to_string(k * (s + 1)) + "=" + std::to_string(s) + "\n";
    }
    const TestFolder folder;
    const std::string file = folder.Write("a.ini", text);
    AllocationFault fault("vtrutils.dll");
    CIniFileReader whole;
    ASSERT_TRUE(Load(whole, text));
    EXPECT_LT(fault.Count(), 2 * 145u) << "parsing takes one block a pair";
    ASSERT_TRUE(whole.Init(file.c_str(), true) && Edit(whole));
    whole.Sort();

    unsigned refused = 0;
    const auto fail = [&](unsigned n) {
        CIniFileReader document;
        const CapturedLog log;
        const bool loaded = document.Init(file.c_str(), true);
        if (!loaded && !log.Lines().empty() && log.Lines().back().ends_with("departing, no memory"))
            refused += document.NumSections() == 0 ? 1u : 1000u;
        const bool edited = Edit(document);
        fault.FailAt(0);
        for (unsigned s = 0; s < document.NumSections(); ++s) {
            const CIniSection& section = *document.GetSection(static_cast<int>(s));
            for (unsigned i = 1; section.KeepSorted() && i < section.NumValues(); ++i)
                EXPECT_LE(_stricmp(section.GetValue(i - 1)->Key(), section.GetValue(i)->Key()), 0);
        }
        EXPECT_EQ(Content(document).find(" ="), std::string::npos) << "a pair without key";
        document.Sort();
        EXPECT_TRUE(!loaded || !edited || Content(document) == Content(whole)) << n;
        document.SetValue("Added", "again", "v");
        EXPECT_EQ(Get(document, "Added", "again"), "v");
    };
    // The first rounds, and what is run on a thread of its own, leave behind what the run-time
    // keeps.
    const DWORD thread = GetCurrentThreadId();
    const unsigned failures = fault.ForEachAllocation([&](unsigned n) {
        const std::size_t used = HeapUse();
        fail(n);
        EXPECT_TRUE(HeapUse() == used || n < 5 || GetCurrentThreadId() != thread) << n;
    });
    EXPECT_GT(failures, 200u);
    EXPECT_TRUE(refused > 50 && refused < 1000) << refused << " without what they inherit";
    EXPECT_TRUE(refused > 50 && refused < 1000) << refused << " without what they inherit";
}
