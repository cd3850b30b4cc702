#include "utilities/containers/HashTable.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/CodePage.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <vector>

namespace {

TEST(HashTable, DoesWhatAListOfEntriesDoes) {
    AllocationFault fault("vtrutils.dll");
    std::string keys[] = {"", "a", "A", "ab", "ba", "ab\xE4", "ab\xC4", "ab", "", "A"};
    CHashTable table(7);
    std::vector<std::pair<std::string, long long>> model;
    EachRound(5, 20'000, [&](Dice& dice, int) {
        std::string& key = keys[dice.Below(10)];
        const long long value = dice.Below(3);
        const int choice = dice.Below(1000);
        if (choice == 0) {
            table.RemoveAll();
            model.clear();
        } else if (choice < 20) {
            fault.FailAt(static_cast<unsigned>(choice / 2));
            CHashTable copy(table), assigned(3);
            assigned = copy;
            // One without memory for its buckets has no entries and takes none.
            long long found = -1;
            assigned.AddEntry(key.data(), value);
            const bool has = assigned.Find(key.c_str(), found);
            ASSERT_EQ(assigned.Remove(key.data(), found), has);
            fault.FailAt(0);
            assigned = copy;
            if (assigned.GetTable(6) != nullptr)
                table = assigned;
            assigned.RemoveAll();
        } else if (choice < 500) {
            const auto entry = std::ranges::find(model, std::pair(key, value));
            ASSERT_EQ(table.Remove(key.data(), value), entry != model.end());
            if (entry != model.end())
                model.erase(entry);
        } else {
            ASSERT_TRUE(table.AddEntry(key.data(), value));
            model.emplace_back(key, value);
        }
        const auto first = std::ranges::find(model, key, [](const auto& e) { return e.first; });
        long long answer = -1;
        ASSERT_EQ(table.Find(key.c_str(), answer), first != model.end());
        ASSERT_EQ(answer, first != model.end() ? first->second : -1);
    });
}

TEST(HashTable, ComparesBytesAndTakesNullForNoKey) {
    char key[] = "\x83\x41";
    CHashTable table(1); // so that comparing decides
    for (char* each : {static_cast<char*>(nullptr), key})
        EXPECT_TRUE(table.AddEntry(each, 1));
    const CodePage japanese(932);
    long long value = 0;
    EXPECT_TRUE(table.Find(key, value));
    for (const char* other : {"\x83\x61", "", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(table.Find(other, value));
    EXPECT_EQ(table.GetTable(0)->NumNodes(), 1);
    EXPECT_EQ(table.GetTable(1), nullptr);
}

} // namespace
