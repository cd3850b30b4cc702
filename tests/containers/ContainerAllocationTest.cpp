#include "tests/support/AllocationFault.h"
#include "utilities/containers/HashTable.h"
#include "utilities/containers/MegaArrayList.h"
#include "utilities/containers/MegaList.h"
#include "utilities/containers/MyArrayList.h"
#include "utilities/containers/MyList.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// One script with the first, then the second, ... allocation failing: what could not be added is
// missing, everything else is as it would be, and the answers are those that the headers tell.

namespace {

int AddSorted(CMyArrayList& list, void* item, int value) {
    return list.AddSorted(item, value);
}
int AddSorted(CMegaArrayList& list, void* item, int value) {
    return list.AddSorted(item, value, addSortedDefault);
}
int AddSorted(CMyList& list, void* item, int value) {
    return list.AddSorted(item, value, false);
}
int AddSorted(CMegaList& list, void* item, int value) {
    return list.AddSorted(item, value, false);
}
int InsertAfter(CMyList& list, void* item, int index) {
    return list.InsertAfter(item, index);
}
int InsertAfter(CMegaList& list, void* item, int index) {
    return list.InsertAfter(item, 0, index);
}

/// A list, and what it must hold.
template <class List>
class Script {
public:
    Script() { values.reserve(200); }

    int Size() const { return static_cast<int>(model.size()); }
    int Lower(int value) const {
        return static_cast<int>(std::count_if(model.begin(), model.end(),
                                              [=](const int* item) { return *item < value; }));
    }

    void* NewItem(int value) {
        values.push_back(value);
        return &values.back();
    }

    /// What came of the insertion of the newest item.
    void Inserted(const char* operation, int answer, int place, int onFailure) {
        const bool taken = list.NumNodes() > Size();
        if (taken)
            model.insert(model.begin() + place, &values.back());
        else
            ++refused;
        EXPECT_EQ(answer, taken ? place : onFailure) << operation;
        Check(list);
    }

    void RemoveAt(int index) {
        list.RemoveByIndex(index);
        model.erase(model.begin() + index);
        Check(list);
    }

    /// Copies hold all or nothing, and work on.
    void Copy() {
        List copy(list);
        List assigned;
        assigned.AppendToTail(&values, 0);
        assigned = list;
        for (List* each : {&copy, &assigned}) {
            if (each->NumNodes() > 0)
                Check(*each);
            else
                ++refused;
            each->AppendToTail(&values, 0);
        }
    }

    List list;
    int refused = 0;

private:
    void Check(List& checked) {
        ASSERT_EQ(checked.NumNodes(), Size());
        for (int i = 0; i < Size(); ++i)
            ASSERT_EQ(checked.Index(i, nullptr), model[static_cast<std::size_t>(i)]) << i;
    }

    std::vector<int> values;
    std::vector<int*> model;
};

template <class List>
class ArrayAllocation : public testing::Test {};
using Arrays = testing::Types<CMyArrayList, CMegaArrayList>;
TYPED_TEST_SUITE(ArrayAllocation, Arrays);

TYPED_TEST(ArrayAllocation, FailsWithTheListWhole) {
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([](unsigned n) {
        SCOPED_TRACE(n);
        Script<TypeParam> script;
        auto& list = script.list;
        for (int round = 0; round < 8; ++round) {
            const int size = script.Size();
            script.Inserted("tail", list.AppendToTail(script.NewItem(9), 9), size, size - 1);
            script.Inserted("head", list.InsertNewHead(script.NewItem(1), 1), 0, 0);
            const int lower = script.Lower(5);
            script.Inserted("sorted", AddSorted(list, script.NewItem(5), 5), lower, lower);
            script.Inserted("index", list.InsertToIndex(1, script.NewItem(1), 1), 1, -1);
            const int end = script.Size();
            script.Inserted("end", list.InsertToIndex(end, script.NewItem(9), 9), end, end - 1);
        }
        script.Copy();
        while (script.Size() > 0)
            script.RemoveAt(script.Size() / 2);
        EXPECT_LE(script.refused, 1);
    });
    // Growth to 40 slots, two copies, and shrinking.
    EXPECT_GE(failures, 10u);
}

TYPED_TEST(ArrayAllocation, MovesTheBlockSeldom) {
    AllocationFault fault("vtrutils.dll");
    TypeParam list;
    const auto allocations = [&](int from, int to) {
        fault.FailAt(0);
        for (int i = from; i < to; ++i)
            list.AppendToTail(&list, 0);
        for (int i = from; i > to; --i)
            list.RemoveByIndex(i - 1);
        return fault.Count();
    };
    EXPECT_EQ(allocations(0, 60), 6u) << "a small one at each step";
    EXPECT_LE(allocations(60, 100'000), 12u) << "a large one when it has doubled";
    for (int i = 0; i < 40; ++i)
        EXPECT_EQ(allocations(100'000, 65'530) + allocations(65'530, 100'000), 0u);
    EXPECT_GE(allocations(100'000, 100), 3u) << "but it does shrink";
}

template <class List>
class ChainAllocation : public testing::Test {};
using Chains = testing::Types<CMyList, CMegaList>;
TYPED_TEST_SUITE(ChainAllocation, Chains);

TYPED_TEST(ChainAllocation, FailsWithTheListWhole) {
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([](unsigned n) {
        SCOPED_TRACE(n);
        Script<TypeParam> script;
        auto& list = script.list;
        for (int round = 0; round < 4; ++round) {
            script.Inserted("tail", list.AppendToTail(script.NewItem(9), 9), script.Size(), -1);
            script.Inserted("head", list.InsertNewHead(script.NewItem(1), 1), 0, -1);
            script.Inserted("sorted", AddSorted(list, script.NewItem(5), 5), script.Lower(5), -1);
        }
        for (const int index : {2, 0, 99}) {
            const int place = std::min(index + 1, script.Size());
            script.Inserted("after", InsertAfter(list, script.NewItem(0), index), place, -1);
        }
        script.Copy();
        while (script.Size() > 0)
            script.RemoveAt(script.Size() / 2);
        EXPECT_LE(script.refused, 1);
    });
    EXPECT_EQ(failures, 15u + 2 * 15 + 3) << "one node each, and those that the copies start with";
}

TEST(HashTableAllocation, FailsWithTheTableWhole) {
    std::vector<std::string> keys;
    for (int i = 0; i < 30; ++i)
        keys.push_back("key" + std::to_string(i * i));
    const auto found = [&keys](CHashTable& table) {
        int number = 0;
        for (int i = 0; i < 30; ++i) {
            long long value = -1;
            if (table.Find(keys[static_cast<std::size_t>(i)].c_str(), value)) {
                EXPECT_EQ(value, i);
                ++number;
            }
        }
        return number;
    };
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([&](unsigned n) {
        SCOPED_TRACE(n);
        CHashTable table(3);
        for (int i = 0; i < 30; ++i)
            EXPECT_TRUE(table.AddEntry(keys[static_cast<std::size_t>(i)].data(), i));
        const int held = found(table);
        const bool hasBuckets = table.GetTable(0) != nullptr;
        EXPECT_GE(held, hasBuckets ? 29 : 0);
        CHashTable copy(table);
        CHashTable assigned(5);
        assigned.AddEntry(keys[0].data(), 0);
        assigned = table;
        int whole = 0;
        for (CHashTable* each : {&copy, &assigned}) {
            whole += found(*each) == held;
            EXPECT_TRUE(found(*each) == held || each->GetTable(0) == nullptr) << "all or nothing";
            long long value = 3;
            const bool has = each->Find(keys[3].c_str(), value);
            EXPECT_EQ(each->Remove(keys[3].data(), value), has);
            each->RemoveAll();
            EXPECT_EQ(found(*each), 0);
        }
        EXPECT_GE(whole, 1);
    });
    EXPECT_GE(failures, 15u);
}

} // namespace
