#include "utilities/containers/HashTable.h"
#include "tests/support/CodePage.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

struct Key {
    std::string text;
    char* Get() { return text.data(); }
};

/// The bucket that holds the table's only entry.
int BucketOf(CHashTable& table, unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
        if (table.GetTable(i)->NumNodes() == 1)
            return static_cast<int>(i);
    }
    return -1;
}

TEST(HashTable, PutsKeysInTheirBuckets) {
    struct Row {
        const char* name;
        std::string key;
        int buckets;
        int bucket;
    };
    const Row rows[] = {
        {"empty", "", 25, 0},
        {"sum", "ab", 25, 20},
        {"order does not count", "ba", 25, 20},
        {"a signed byte", "\xFF", 25, 20},
        {"signed bytes wrap around", "\x80\x7F", 25, 20},
        {"back above zero", "\xFF\x02", 25, 1},
        {"many buckets", "ab", 1009, 195},
        {"one bucket", "ab", 1, 0},
        {"none counts as one", "ab", 0, 0},
        {"fewer than none", "ab", -5, 0},
    };
    for (const Row& row : rows) {
        CHashTable table(row.buckets);
        Key key{row.key};
        EXPECT_TRUE(table.AddEntry(key.Get(), 1)) << row.name;
        const unsigned count = row.buckets > 0 ? static_cast<unsigned>(row.buckets) : 1;
        EXPECT_EQ(BucketOf(table, count), row.bucket) << row.name;
        EXPECT_EQ(table.GetTable(count), nullptr) << row.name;
    }
}

TEST(HashTable, DoesWhatAListOfEntriesDoes) {
    struct Entry {
        std::string key;
        long long value;
    };
    constexpr unsigned seed = 5;
    std::mt19937 random(seed);
    std::vector<Key> keys;
    for (const char* text : {"", "a", "A", "ab", "ba", "ab\xE4", "ab\xC4", "key", "Key", "yek"}) {
        keys.push_back({text});
        keys.push_back({text}); // the same text elsewhere
    }
    CHashTable table(7);
    std::vector<Entry> model;
    for (int round = 0; round < 20'000; ++round) {
        Key& key = keys[random() % keys.size()];
        long long value = random() % 3;
        const auto first = [&](bool anyValue) {
            return std::find_if(model.begin(), model.end(), [&](const Entry& entry) {
                return entry.key == key.text && (anyValue || entry.value == value);
            });
        };
        if (random() % 2 == 0) {
            ASSERT_TRUE(table.AddEntry(key.Get(), value));
            model.push_back({key.text, value});
        } else {
            const auto found = first(false);
            ASSERT_EQ(table.Remove(key.Get(), value), found != model.end());
            if (found != model.end())
                model.erase(found);
        }
        const auto found = first(true);
        long long answer = -1;
        ASSERT_EQ(table.Find(key.Get(), answer), found != model.end());
        ASSERT_EQ(answer, found != model.end() ? found->value : -1)
            << "seed " << seed << ", round " << round;
        if (random() % 1000 == 0) {
            table.RemoveAll();
            model.clear();
        }
    }
}

TEST(HashTable, ComparesCharactersOfTheCodePage) {
    // All in one bucket, so that comparing decides.
    Key lead{"\x83\x41"};
    Key swapped{"\x41\x83"};
    for (const int codePage : {932, 1252}) {
        const CodePage page(codePage);
        CHashTable table(1);
        table.AddEntry(lead.Get(), 1);
        long long value = 0;
        EXPECT_FALSE(table.Find(swapped.Get(), value)) << codePage;
        EXPECT_TRUE(table.Find(std::string("\x83\x41").c_str(), value)) << codePage;
        EXPECT_FALSE(table.Find("\x83\x61", value)) << "with case in " << codePage;
    }
}

TEST(HashTable, HasBucketsOfItsOwnWhenCopied) {
    Key key{"key"};
    Key other{"other"};
    CHashTable table(25);
    table.AddEntry(key.Get(), 7);
    CHashTable copy(table);
    CHashTable assigned(3);
    assigned.AddEntry(other.Get(), 1);
    assigned = table;
    const CHashTable& self = assigned;
    assigned = self;
    table.RemoveAll();
    for (CHashTable* each : {&copy, &assigned}) {
        long long value = 0;
        EXPECT_TRUE(each->Find("key", value));
        EXPECT_EQ(value, 7);
        EXPECT_FALSE(each->Find("other", value));
        EXPECT_NE(each->GetTable(24), nullptr);
        EXPECT_NE(each->GetTable(24), table.GetTable(24));
    }
}

TEST(HashTable, TakesNullForNoKey) {
    CHashTable table(1);
    long long value = 3;
    EXPECT_TRUE(table.AddEntry(nullptr, 1));
    EXPECT_EQ(table.GetTable(0)->NumNodes(), 0);
    EXPECT_FALSE(table.Find(nullptr, value));
    EXPECT_FALSE(table.Remove(nullptr, 1));
    table.GetTable(0)->AppendToTail(nullptr, 1);
    EXPECT_FALSE(table.Find("", value));
    EXPECT_EQ(value, 3);
}

} // namespace
