#include "utilities/containers/MyArrayList.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/Rounds.h"
#include "utilities/containers/MegaArrayList.h"

#include <algorithm>
#include <limits>

namespace {

template <unsigned given>
struct Integers : CMyArrayList {
    using Value = long long;
    static constexpr bool isMega = false;
    Integers() : CMyArrayList(given) {}
    int Add(void* item, Value value, int) { return AddSorted(item, value); }
    void Clear(bool keep) { keep ? RemoveAllButLeaveAllocation() : RemoveAll(); }
    bool Flag() const { return IsSorted(); }
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
    bool Flag() const { return true; }
};

/// What a list must hold, kept by simple means.
template <class List>
struct Model {
    using Value = typename List::Value;
    struct Entry {
        int* item = nullptr;
        Value value = -7;
    };
    std::vector<Entry> entries;
    bool sorted = true;

    int Size() const { return static_cast<int>(entries.size()); }
    Entry At(int index) const { return index < 0 ? Entry{} : entries.begin()[index]; }
    int Lower(Value value) const {
        const auto found = std::ranges::lower_bound(entries, value, {}, &Entry::value);
        return static_cast<int>(found - entries.begin());
    }
    int Upper(Value value) const {
        const auto found = std::ranges::upper_bound(entries, value, {}, &Entry::value);
        return static_cast<int>(found - entries.begin());
    }
    /// Where the item is first in [from, to), or -1.
    int First(const int* item, int from, int to) const {
        while (from < to && At(from).item != item)
            ++from;
        return from < to ? from : -1;
    }
    /// Ties: integers go in front, but behind the last if it is not the first's equal.
    int Place(Value value, int where) const {
        const bool isLast = Size() > 0 && Upper(value) == Size() && Lower(value) > 0;
        return (List::isMega ? where == addSortedAfterEquals : isLast) ? Upper(value)
                                                                       : Lower(value);
    }
    void Insert(int index, Entry entry) { entries.insert(entries.begin() + index, entry); }
    void Remove(int index) {
        if (index >= 0 && index < Size())
            entries.erase(entries.begin() + index);
    }
};

template <class List>
class ArrayLists : public testing::Test {
protected:
    using Value = typename List::Value;

    /// By value, or at the same place by index, at the tail or as head.
    void Insert(int* item, Value value, int way, unsigned failing) {
        const int index = model.Place(value, way), size = model.Size();
        const bool byTail = way == 4 && index == size, byHead = way == 4 && index == 0;
        fault.FailAt(failing);
        const int answer = way < 3  ? list.Add(item, value, way)
                           : byTail ? list.AppendToTail(item, value)
                           : byHead ? list.InsertNewHead(item, value)
                                    : list.InsertToIndex(index, item, value);
        fault.FailAt(0);
        if (list.NumNodes() == size) {
            ++refused;
            return;
        }
        ASSERT_EQ(answer, index);
        model.sorted = way < 3 ? model.sorted : byTail && byHead;
        model.Insert(index, {item, value});
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
        ASSERT_EQ(list.Flag(), List::isMega || model.sorted);
        for (int i = 0; i < model.Size(); ++i) {
            Value value = -7;
            ASSERT_EQ(list.Index(i, &value), model.At(i).item);
            ASSERT_EQ(value, model.At(i).value);
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
        ASSERT_EQ(item, model.At(index).item);
        ASSERT_EQ(found, model.At(index).value);
        if (size == 0)
            return;
        const int after = std::max(index + 1, lower);
        const int scanned[] = {index, index < 0 || after == size ? -1 : after, hit ? index : -1,
                               -1};
        for (int direction = 0; direction < 4; ++direction) {
            item = list.ElemBySortValue(value, &other, static_cast<_tscanDir>(direction));
            ASSERT_EQ(other, scanned[List::isMega ? scanExact : direction]) << direction;
            ASSERT_EQ(item, model.At(other).item);
        }
        list.FirstOfValue(value, &other);
        ASSERT_EQ(other, hit ? lower : -1);
        list.LastOfValue(value, &other);
        ASSERT_EQ(other, hit ? upper - 1 : -1);
    }

    void Step(Dice& dice, int round) {
        // Grows past the thresholds of searches and blocks and shrinks to nothing, again and again.
        const bool growing = round / 100 % 2 == 0;
        const Value value = dice.Below(round / 200 % 2 == 0 ? 12 : 1000);
        const int choice = dice.Below(400), place = dice.Below(model.Size() + 2) - 1;
        int* item = &some[dice.Below(40)];
        if (choice == 0) {
            list = List(list);
        } else if (choice < 3) {
            list.Clear(/*keep=*/choice == 1);
            model = {};
        } else if (choice < 10) {
            ASSERT_TRUE(list.VerifyListIsSorted());
            model.sorted = true;
        } else if (growing) {
            Insert(item, value, dice.Below(5), choice % 4 == 0);
        } else if (choice % 2 == 0) {
            Remove(model.At(std::min(place, model.Size() - 1)).item, value);
            Remove(item, -1);
        } else {
            fault.FailAt(choice % 3 == 0); // then the block stays larger than it need be
            list.RemoveByIndex(place);
            fault.FailAt(0);
            model.Remove(place);
        }
        Same();
        for (const Value each : {value, value + 1, Value{-1}})
            CheckSearches(each);
    }

    AllocationFault fault{"vtrutils.dll"};
    int some[40]; ///< so few that some are there twice
    List list;
    Model<List> model;
    int refused = 0; ///< insertions for which memory ran out
};

using Kinds = testing::Types<Integers<7>, Integers<0>, Doubles>;
TYPED_TEST_SUITE(ArrayLists, Kinds);

TYPED_TEST(ArrayLists, DoWhatASimpleModelDoes) {
    EachRound(31, 8000, [this](Dice& dice, int round) { this->Step(dice, round); });
    EXPECT_GT(this->refused, 10);
}

TYPED_TEST(ArrayLists, TakeOddArguments) {
    auto& odd = this->list;
    int index = 77, items[2];
    EXPECT_EQ(odd.FirstOfValueAtIndex(0, &index), nullptr);
    EXPECT_EQ(index, 77) << "an empty list writes nothing";
    odd.InsertToIndex(5, &items[1], 5);
    EXPECT_EQ(odd.InsertToIndex(-3, &items[0], 5), 0) << "a negative index counts as 0";
    EXPECT_EQ(odd.FirstOfValueAtIndex(1, nullptr), &items[0]);
    const auto& self = odd;
    odd = self;
    EXPECT_EQ(odd.PrevElemBySortValue(5, nullptr, nullptr), &items[1]);
    this->fault.FailAt(1);
    EXPECT_EQ(TypeParam(odd).NumNodes(), 0) << "no memory";
}

TEST(MyArrayList, AdjustsScalesAndVerifiesItsValues) {
    constexpr long long most = std::numeric_limits<long long>::max();
    CMyArrayList list;
    for (const long long value : {-5LL, 3LL, most})
        list.AppendToTail(&list, value);
    const auto values = [&list] {
        std::vector<long long> all(3);
        for (int i = 0; i < 3; ++i)
            list.Index(i, &all[static_cast<std::size_t>(i)]);
        return all;
    };
    using Values = std::vector<long long>;
    list.AdjustAllSortValues(2);
    EXPECT_EQ(values(), (Values{-3, 5, -most})) << "wraps around";
    list.ScaleAllSortValues(0.5);
    EXPECT_EQ(values(), (Values{-1, 2, -(1LL << 62)})) << "towards zero";
    EXPECT_FALSE(list.VerifyListIsSorted());
    list.ScaleAllSortValues(-4);
    EXPECT_EQ(values(), (Values{4, -8, most})) << "to the highest";
    list.ScaleAllSortValues(std::numeric_limits<double>::quiet_NaN());
    list.AdjustAllSortValues(-2147483647);
    EXPECT_TRUE(list.VerifyListIsSorted());
    list.AdjustAllSortValues(-1);
    EXPECT_FALSE(list.VerifyListIsSorted()) << "too low";
}

TEST(MegaArrayList, SetsValuesInPlaceAndLogsThatTheyDescend) {
    CapturedLog log;
    CMegaArrayList list;
    int items[3];
    EXPECT_FALSE(list.SetSortValueByIndex(0, 1));
    for (int& item : items)
        list.AppendToTail(&item, -1e300);
    EXPECT_TRUE(list.VerifyListIsSorted());
    EXPECT_FALSE(list.SetSortValue(&list, 1));
    EXPECT_TRUE(list.SetSortValue(&items[0], 0.5));
    EXPECT_TRUE(list.SetSortValueByIndex(1, 2));
    list.SetSortValueByIndex(2, 1.25);
    list.ScaleAllSortValues(2);
    list.AdjustAllSortValues(0.5);
    EXPECT_FALSE(list.VerifyListIsSorted());
    EXPECT_EQ(log.Lines(),
              std::vector<std::string>{"CMegaArrayList::VerifyListIsSorted() fails on item 2 "
                                       "with sort value of 3 being bigger than 4.5"});
}

} // namespace
