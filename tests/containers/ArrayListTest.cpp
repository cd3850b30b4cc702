#include "tests/support/AllocationFault.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/Dice.h"
#include "utilities/containers/MegaArrayList.h"
#include "utilities/containers/MyArrayList.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace {

struct Integers : CMyArrayList {
    using Value = long long;
    static constexpr bool isMega = false;
    int Add(void* item, Value value, int) { return AddSorted(item, value); }
    void Clear(bool keep) { keep ? RemoveAllButLeaveAllocation() : RemoveAll(); }
};

/// With the operations of the other list.
struct Doubles : CMegaArrayList {
    using Value = double;
    static constexpr bool isMega = true;
    int Add(void* item, Value value, int where) {
        return AddSorted(item, value, static_cast<_AddSortedLoc>(where));
    }
    void* ElemBySortValue(Value value, int* index, _tscanDir) {
        return CMegaArrayList::ElemBySortValue(value, index);
    }
    int MemberIndex(void* item, Value value) { return GetIndexOfItem(item, value, true); }
    int Member(void* item, Value value) { return CMegaArrayList::Member(item, value, true); }
    bool Remove(void* item, Value value) { return CMegaArrayList::Remove(item, value, true); }
    void Clear(bool keep) { EXPECT_TRUE(RemoveAll(keep)); }
};

/// What a list must hold, kept by simple means.
template <class List>
struct Model {
    using Value = typename List::Value;
    std::vector<int*> items;
    std::vector<Value> values;
    bool sorted = true;

    int Size() const { return static_cast<int>(items.size()); }
    int* Item(int index) const { return index < 0 ? nullptr : items.begin()[index]; }
    int Lower(Value value) const {
        return static_cast<int>(std::ranges::lower_bound(values, value) - values.begin());
    }
    int Upper(Value value) const {
        return static_cast<int>(std::ranges::upper_bound(values, value) - values.begin());
    }
    /// Where the item is first in [from, to), or -1.
    int First(const int* item, int from, int to) const {
        while (from < to && Item(from) != item)
            ++from;
        return from < to ? from : -1;
    }
    /// Ties: integers go in front, but behind the last if it is not the first's equal.
    int Place(Value value, int where) const {
        const bool isLast = Size() > 0 && value == values.back() && value != values.front();
        const bool behind = List::isMega ? where == addSortedAfterEquals : isLast;
        return behind ? Upper(value) : Lower(value);
    }
    void Remove(int index) {
        if (index < 0 || index >= Size())
            return;
        items.erase(items.begin() + index);
        values.erase(values.begin() + index);
    }
};

template <class List>
class ArrayLists : public testing::Test {
protected:
    using Value = typename List::Value;

    /// By value, or at the same place by index, at the tail or as head.
    void Insert(int* item, Value value, int way, unsigned failing) {
        const int index = model.Place(value, way);
        const bool byTail = way == 4 && index == model.Size(), byHead = way == 4 && index == 0;
        fault.FailAt(failing);
        const int answer = way < 3  ? list.Add(item, value, way)
                           : byTail ? list.AppendToTail(item, value)
                           : byHead ? list.InsertNewHead(item, value)
                                    : list.InsertToIndex(index, item, value);
        fault.FailAt(0);
        if (list.NumNodes() == model.Size()) {
            const bool atTail = index == model.Size();
            ASSERT_EQ(answer, way < 3                           ? index - (atTail && !List::isMega)
                              : byTail || (atTail && index > 0) ? index - 1
                              : byHead || atTail                ? 0
                                                                : -1);
            ++refused;
            return;
        }
        ASSERT_EQ(answer, index);
        model.sorted = way < 3 ? model.sorted : byTail && byHead;
        model.items.insert(model.items.begin() + index, item);
        model.values.insert(model.values.begin() + index, value);
    }

    /// Lists of 26 elements or more look among those with the value, if that is not negative.
    void Remove(int* item, Value value) {
        const bool inRun = value >= 0 && model.Size() >= 26;
        const int anywhere = model.First(item, 0, model.Size());
        const int found =
            inRun ? model.First(item, model.Lower(value), model.Upper(value)) : anywhere;
        ASSERT_EQ(list.MemberIndex(item, value), found);
        ASSERT_EQ(list.Member(item, value), found < 0 ? 0 : inRun && List::isMega ? found : 1);
        ASSERT_EQ(list.Remove(item, value), anywhere >= 0);
        model.Remove(found < 0 ? anywhere : found);
    }

    void Same() {
        ASSERT_EQ(list.NumNodes(), model.Size());
        if constexpr (!List::isMega) {
            ASSERT_EQ(list.IsSorted(), model.sorted);
        }
        for (int i = 0; i < model.Size(); ++i) {
            Value value = -7;
            ASSERT_EQ(list.Index(i, &value), model.Item(i));
            ASSERT_EQ(value, model.values.begin()[i]);
        }
        ASSERT_EQ(list.Index(model.Size(), nullptr), nullptr);
    }

    void CheckSearches(Value value) {
        const int size = model.Size(), lower = model.Lower(value), upper = model.Upper(value);
        const bool hit = upper > lower;
        int index = -7, other = -7;
        Value found = -7;
        void* item = list.PrevElemBySortValue(value, &index, &found);
        const int without = size == 0 ? -7 : size >= 25 ? 0 : -1;
        const int inRun = size >= 25 && index >= lower && index < upper ? index : lower;
        ASSERT_EQ(index, upper == 0 ? without : hit && size >= 3 ? inRun : upper - 1);
        ASSERT_EQ(item, model.Item(index));
        ASSERT_EQ(found, index < 0 ? -7 : model.values.begin()[index]);
        if (size == 0)
            return;
        const int after = std::max(index + 1, lower);
        const int scanned[] = {index, index < 0 || after == size ? -1 : after, hit ? index : -1,
                               -1};
        for (int direction = 0; direction < 4; ++direction) {
            item = list.ElemBySortValue(value, &other, static_cast<_tscanDir>(direction));
            ASSERT_EQ(other, scanned[List::isMega ? scanExact : direction]) << direction;
            ASSERT_EQ(item, model.Item(other));
        }
        list.FirstOfValue(value, &other);
        ASSERT_EQ(other, hit ? lower : -1);
        list.LastOfValue(value, &other);
        ASSERT_EQ(other, hit ? upper - 1 : -1);
    }

    AllocationFault fault{"vtrutils.dll"};
    List list;
    Model<List> model;
    int refused = 0; ///< insertions for which memory ran out
};

using Kinds = testing::Types<Integers, Doubles>;
TYPED_TEST_SUITE(ArrayLists, Kinds);

TYPED_TEST(ArrayLists, DoWhatASimpleModelDoes) {
    constexpr unsigned seed = 31;
    Dice dice(seed);
    std::vector<int> items(40); // so few that some are there twice
    for (int round = 0; round < 8000; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        // Grows past the thresholds of searches and blocks and shrinks to nothing, again and again.
        const bool growing = round / 100 % 2 == 0;
        const typename TypeParam::Value value = dice.Below(round / 200 % 2 == 0 ? 12 : 1000);
        const int choice = dice.Below(400), place = dice.Below(this->model.Size() + 2) - 1;
        int* item = &items.begin()[dice.Below(40)];
        if (choice == 0) {
            this->list = TypeParam(this->list);
        } else if (choice < 3) {
            this->list.Clear(/*keep=*/choice == 1);
            this->model = {};
        } else if (choice < 10) {
            ASSERT_TRUE(this->list.VerifyListIsSorted());
            this->model.sorted = true;
        } else if (growing) {
            this->Insert(item, value, dice.Below(5), choice % 4 == 0);
        } else if (choice % 2 == 0) {
            this->Remove(this->model.Item(std::min(place, this->model.Size() - 1)), value);
            this->Remove(item, -1);
        } else {
            this->list.RemoveByIndex(place);
            this->model.Remove(place);
        }
        this->Same();
        for (const typename TypeParam::Value each :
             {value, value + 1, typename TypeParam::Value{-1}})
            this->CheckSearches(each);
        if (this->HasFatalFailure())
            return;
    }
    EXPECT_GT(this->refused, 10);
}

TYPED_TEST(ArrayLists, TakeOddArguments) {
    auto& odd = this->list;
    int index = 77, items[2];
    EXPECT_EQ(odd.FirstOfValueAtIndex(0, &index), nullptr);
    EXPECT_EQ(index, 77) << "an empty list writes nothing";
    EXPECT_EQ(odd.InsertToIndex(5, &items[1], 5), 0);
    EXPECT_EQ(odd.InsertToIndex(-3, &items[0], 5), 0) << "a negative index counts as 0";
    EXPECT_EQ(odd.FirstOfValueAtIndex(1, &index), &items[0]);
    odd.AppendToTail(nullptr, 6);
    EXPECT_EQ(odd.FirstOfValue(6, &index), nullptr);
    EXPECT_EQ(index, -1) << "a null item is no result";
    EXPECT_EQ(odd.LastOfValue(6, &index), nullptr);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(odd.PrevElemBySortValue(5, nullptr, nullptr), &items[0]);
    const auto& self = odd;
    odd = self;
    EXPECT_EQ(odd.NumNodes(), 3);
    this->fault.FailAt(1);
    TypeParam copy(odd);
    EXPECT_EQ(copy.NumNodes(), 0) << "no memory";
    copy.AppendToTail(&items[0], 1);
    this->fault.FailAt(1);
    copy = odd;
    EXPECT_EQ(copy.NumNodes(), 0) << "no memory";
}

TEST(MyArrayList, AdjustsAndScales) {
    constexpr long long most = std::numeric_limits<long long>::max();
    CMyArrayList list;
    for (const long long value : {-5LL, 3LL, most})
        list.AppendToTail(&list, value);
    const auto expect = [&list](const char* name, std::vector<long long> values) {
        for (int i = 0; i < 3; ++i) {
            long long value = 77;
            list.Index(i, &value);
            EXPECT_EQ(value, values.begin()[i]) << name;
        }
    };
    list.AdjustAllSortValues(-2);
    expect("added", {-7, 1, most - 2});
    list.AdjustAllSortValues(4);
    expect("wraps around", {-3, 5, -most});
    list.ScaleAllSortValues(0.5);
    expect("towards zero", {-1, 2, -(1LL << 62)});
    list.ScaleAllSortValues(4);
    expect("to the lowest", {-4, 8, -most - 1});
    list.ScaleAllSortValues(-1);
    expect("to the highest", {4, -8, most});
    list.ScaleAllSortValues(std::numeric_limits<double>::quiet_NaN());
    expect("no number", {0, 0, 0});
}

TEST(MyArrayList, IsSortedFromTheSmallest32BitValuePlusOneOn) {
    CMyArrayList list;
    list.AddSorted(&list, -2147483647);
    EXPECT_TRUE(list.VerifyListIsSorted());
    list.InsertNewHead(&list, -2147483646);
    EXPECT_FALSE(list.VerifyListIsSorted()) << "descends";
    EXPECT_FALSE(CMyArrayList(list).IsSorted());
    list.Remove(&list, -2147483646);
    list.AdjustAllSortValues(-1);
    EXPECT_FALSE(list.VerifyListIsSorted());
}

/// The fields as a host that shares the record sees them.
struct Record {
    void* virtualTable;
    void* block;
    int capacity, count;
    bool megaSorted; ///< the step in the other list
};

template <class List>
Record Look(const List& list) {
    Record record;
    std::memcpy(&record, static_cast<const void*>(&list), sizeof record);
    return record;
}

template <class List>
void ExpectSteps(List list, int step) {
    int expected = (1 / step + 1) * step;
    for (int i = 1; i <= 200; ++i) {
        list.AppendToTail(&list, 0);
        expected += i > expected ? step : 0;
        ASSERT_EQ(Look(list).capacity, expected) << i;
    }
    EXPECT_EQ(Look(List(list)).capacity, (200 / step + 1) * step) << "room for all";
    AllocationFault fault("vtrutils.dll");
    for (int left = 199; left > 0; --left) {
        fault.FailAt(1); // then the block stays larger than it need be
        list.RemoveByIndex(left);
        expected -= left <= expected - step ? step : 0;
        ASSERT_EQ(Look(list).capacity, expected) << left;
    }
    list.RemoveByIndex(0);
    EXPECT_EQ(Look(list).block, nullptr);
}

TEST(ArrayListBlocks, GrowAndShrinkBySteps) {
    ExpectSteps(CMegaArrayList(), 10);
    ExpectSteps(CMyArrayList(), 10);
    ExpectSteps(CMyArrayList(7), 7);
    ExpectSteps(CMyArrayList(0), 1);
    CMyArrayList huge(~0u);
    EXPECT_EQ(huge.AppendToTail(&huge, 0), -1) << "a step beyond any block";
    CMegaArrayList kept;
    kept.AppendToTail(&kept, 0);
    EXPECT_TRUE(kept.RemoveAll(/*keepAllocation=*/true));
    EXPECT_NE(Look(kept).block, nullptr);
}

TEST(ArrayListBlocks, MoveSeldom) {
    AllocationFault fault("vtrutils.dll");
    CMyArrayList list;
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
    EXPECT_EQ(allocations(100'000, 65'530) + allocations(65'530, 100'000), 0u);
    EXPECT_GE(allocations(100'000, 100), 3u) << "but it does shrink";
}

TEST(MegaArrayList, SetsValuesInPlaceAndLogsThatTheyDescend) {
    CapturedLog log;
    CMegaArrayList list;
    int items[3];
    EXPECT_FALSE(list.SetSortValueByIndex(0, 1));
    EXPECT_EQ(list.Index(3, nullptr), nullptr);
    for (int& item : items)
        list.AppendToTail(&item, -1e300);
    EXPECT_TRUE(list.VerifyListIsSorted());
    EXPECT_FALSE(list.SetSortValue(&list, 1));
    EXPECT_TRUE(list.SetSortValue(&items[0], 0.5));
    EXPECT_TRUE(list.SetSortValueByIndex(1, 2));
    EXPECT_TRUE(list.SetSortValueByIndex(2, 1.25));
    list.ScaleAllSortValues(2);
    list.AdjustAllSortValues(0.5);
    EXPECT_EQ(list.Member(&items[1], 99, false), 1);
    EXPECT_FALSE(list.VerifyListIsSorted());
    EXPECT_EQ(log.Lines(),
              (std::vector<std::string>{"ERR>>Index called for index 3 and list is NULL!!!",
                                        "CMegaArrayList::VerifyListIsSorted() fails on item 2 with "
                                        "sort value of 3 being bigger than 4.5"}));
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(list.AddSorted(&list, noNumber, addSortedAfterEquals), 0) << "equals nothing";
    // Read where it stands: nothing in the library does.
    EXPECT_EQ(Look(list).megaSorted, true) << "the sorted flag";
    CMegaArrayList copy(list);
    EXPECT_EQ(Look(copy).megaSorted, false);
    copy.ForceSorted();
    EXPECT_EQ(Look(copy).megaSorted, true);
}

} // namespace
