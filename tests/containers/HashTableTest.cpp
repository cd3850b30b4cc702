#include "utilities/containers/HashTable.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/CodePage.h"
#include "tests/support/Dice.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

TEST(HashTable, PutsKeysInTheirBuckets) {
    struct Row {
        const char* name;
        std::string key;
        int buckets, count;
        unsigned bucket;
    };
    Row rows[] = {
        {"empty", "", 25, 25, 0},
        {"sum", "ab", 25, 25, 20},
        {"a signed byte wraps around", "\xFF", 25, 25, 20},
        {"back above zero", "\xFF\x02", 25, 25, 1},
        {"fewer than one count as one", "ab", -5, 1, 0},
    };
    for (Row& row : rows) {
        CHashTable table(row.buckets);
        EXPECT_TRUE(table.AddEntry(row.key.data(), 1));
        EXPECT_EQ(table.GetTable(static_cast<unsigned>(row.count)), nullptr) << row.name;
        ASSERT_NE(table.GetTable(row.bucket), nullptr) << row.name;
        EXPECT_EQ(table.GetTable(row.bucket)->NumNodes(), 1) << row.name;
    }
}

TEST(HashTable, DoesWhatAListOfEntriesDoes) {
    constexpr unsigned seed = 5;
    Dice dice(seed);
    AllocationFault fault("vtrutils.dll");
    std::string keys[] = {"", "a", "A", "ab", "ba", "ab\xE4", "ab\xC4", "ab", "", "A"};
    CHashTable table(7);
    std::vector<std::pair<std::string, long long>> model;
    for (int round = 0; round < 20'000; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        std::string& key = keys[dice.Below(10)];
        const long long value = dice.Below(3);
        const auto entry = std::ranges::find(model, std::pair(key, value));
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
    }
}

TEST(HashTable, ComparesCharactersOfTheCodePage) {
    char key[] = "\x83\x41", letter[] = "\x82\x60"; // a wide A
    CHashTable table(1);                            // so that comparing decides
    table.AddEntry(key, 1);
    table.AddEntry(letter, 1);
    for (const int codePage : {932, 1252}) {
        const CodePage page(codePage);
        long long value = 0;
        EXPECT_TRUE(table.Find("\x83\x41", value)) << codePage;
        EXPECT_FALSE(table.Find("\x82\x81", value)) << "with case in " << codePage;
        EXPECT_FALSE(table.Find("\x83\x61", value)) << "with case in " << codePage;
    }
}

TEST(HashTable, TakesNullForNoKey) {
    CHashTable table(1);
    long long value = 3;
    EXPECT_TRUE(table.AddEntry(nullptr, 1));
    EXPECT_EQ(table.GetTable(0)->NumNodes(), 0);
    table.GetTable(0)->AppendToTail(nullptr, 1);
    const CHashTable& self = table;
    table = self;
    for (const char* key : {static_cast<const char*>(nullptr), ""})
        EXPECT_FALSE(table.Find(key, value));
    EXPECT_FALSE(table.Remove(nullptr, 1));
    EXPECT_EQ(table.GetTable(0)->NumNodes(), 1);
}

} // namespace
