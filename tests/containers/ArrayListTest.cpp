#include "tests/support/CapturedLog.h"
#include "utilities/containers/MegaArrayList.h"
#include "utilities/containers/MyArrayList.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace {

/// The fields as a host that shares the record sees them.
struct Record {
    void* virtualTable;
    void* block;
    int capacity;
    int count;
    unsigned step;
    bool sorted;
};

template <class List>
Record Look(const List& list) {
    static_assert(sizeof list == sizeof(Record));
    Record record;
    std::memcpy(&record, static_cast<const void*>(&list), sizeof record);
    return record;
}

struct Integers {
    using List = CMyArrayList;
    using Value = long long;
    static constexpr unsigned step = 10;
    static int Add(List& list, void* item, Value value, int) { return list.AddSorted(item, value); }
    static bool Remove(List& list, void* item, Value value) { return list.Remove(item, value); }
    static int Find(List& list, void* item, Value value) { return list.MemberIndex(item, value); }
    static void RemoveAll(List& list, bool keep) {
        keep ? list.RemoveAllButLeaveAllocation() : list.RemoveAll();
    }
    /// 0: in front of equal elements, 1: behind them.
    static bool LandsBehind(const std::vector<std::pair<int*, Value>>& model, Value value, int) {
        return !model.empty() && value == model.back().second && value != model.front().second;
    }
};

struct Doubles {
    using List = CMegaArrayList;
    using Value = double;
    static constexpr unsigned step = 10;
    static int Add(List& list, void* item, Value value, int where) {
        return list.AddSorted(item, value, static_cast<_AddSortedLoc>(where));
    }
    static bool Remove(List& list, void* item, Value value) {
        return list.Remove(item, value, true);
    }
    static int Find(List& list, void* item, Value value) {
        return list.GetIndexOfItem(item, value, true);
    }
    static void RemoveAll(List& list, bool keep) { EXPECT_TRUE(list.RemoveAll(keep)); }
    static bool LandsBehind(const std::vector<std::pair<int*, Value>>&, Value, int where) {
        return where == addSortedAfterEquals;
    }
};

/// What a list must hold, kept by simple means, and the capacity that its growth must reach.
template <class Kind>
class Model {
public:
    using Value = typename Kind::Value;
    std::vector<std::pair<int*, Value>> elements;
    int capacity = 0;
    bool hasBlock = false;

    int Lower(Value value) const {
        return static_cast<int>(std::count_if(elements.begin(), elements.end(),
                                              [&](const auto& e) { return e.second < value; }));
    }
    int Upper(Value value) const {
        return static_cast<int>(std::count_if(elements.begin(), elements.end(),
                                              [&](const auto& e) { return e.second <= value; }));
    }
    int Size() const { return static_cast<int>(elements.size()); }

    void Insert(int index, int* item, Value value) {
        elements.insert(elements.begin() + index, {item, value});
        const int step = static_cast<int>(Kind::step);
        if (!hasBlock)
            capacity = (Size() / step + 1) * step;
        else if (Size() > capacity)
            capacity += step;
        hasBlock = true;
    }
    void Remove(int index) {
        elements.erase(elements.begin() + index);
        const int step = static_cast<int>(Kind::step);
        if (Size() <= capacity - step) {
            hasBlock = Size() > 0;
            if (hasBlock)
                capacity -= step;
        }
    }
    int IndexOf(const int* item) const {
        const auto found = std::find_if(elements.begin(), elements.end(),
                                        [&](const auto& e) { return e.first == item; });
        return found == elements.end() ? -1 : static_cast<int>(found - elements.begin());
    }
};

template <class Kind>
class ArrayLists : public testing::Test {
protected:
    using Value = typename Kind::Value;

    void Same() {
        const Record record = Look(list);
        ASSERT_EQ(record.count, model.Size());
        ASSERT_EQ(record.block != nullptr, model.hasBlock);
        ASSERT_EQ(record.capacity, model.capacity);
        for (int i = 0; i < model.Size(); ++i) {
            Value value = -1;
            const auto& expected = model.elements[static_cast<std::size_t>(i)];
            ASSERT_EQ(list.Index(i, &value), expected.first);
            ASSERT_EQ(value, expected.second);
        }
    }

    void CheckSearches(Value value) {
        const int lower = model.Lower(value);
        const int upper = model.Upper(value);
        const bool hit = upper > lower;
        const int size = model.Size();
        if (size == 0)
            return;
        const int without = size >= 25 ? 0 : -1;
        int index = -7;
        Value found = -7;
        void* item = list.PrevElemBySortValue(value, &index, &found);
        if (upper == 0) {
            ASSERT_EQ(index, without);
        } else if (hit && size >= 3 && size < 25) {
            ASSERT_EQ(index, lower);
        } else {
            ASSERT_GE(index, hit ? lower : upper - 1);
            ASSERT_LT(index, upper);
        }
        ASSERT_EQ(item,
                  index < 0 ? nullptr : model.elements[static_cast<std::size_t>(index)].first);
        list.FirstOfValue(value, &index);
        ASSERT_EQ(index, hit ? lower : -1);
        list.LastOfValue(value, &index);
        ASSERT_EQ(index, hit ? upper - 1 : -1);
    }

    typename Kind::List list;
    Model<Kind> model;
};

using Kinds = testing::Types<Integers, Doubles>;
TYPED_TEST_SUITE(ArrayLists, Kinds);

TYPED_TEST(ArrayLists, DoWhatASimpleModelDoes) {
    constexpr unsigned seed = 31;
    constexpr int rounds = 6000;
    std::mt19937 random(seed);
    std::vector<int> items(rounds);
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        // Grows past the thresholds of the searches and shrinks to nothing, again and again.
        const bool growing = round / 100 % 2 == 0;
        const unsigned spread = round / 200 % 2 == 0 ? 12 : 1000;
        const int size = this->model.Size();
        const typename TypeParam::Value value =
            static_cast<typename TypeParam::Value>(random() % spread);
        const int place = size == 0 ? 0 : static_cast<int>(random() % static_cast<unsigned>(size));
        if (growing || size == 0) {
            int* item = &items[static_cast<std::size_t>(round)];
            const int where = static_cast<int>(random() % 3);
            const bool behind = TypeParam::LandsBehind(this->model.elements, value, where);
            const int index = behind ? this->model.Upper(value) : this->model.Lower(value);
            ASSERT_EQ(TypeParam::Add(this->list, item, value, where), index);
            this->model.Insert(index, item, value);
        } else if (random() % 2 == 0) {
            this->list.RemoveByIndex(place);
            this->model.Remove(place);
        } else {
            const auto [item, known] = this->model.elements[static_cast<std::size_t>(place)];
            ASSERT_EQ(TypeParam::Find(this->list, item, known), place);
            ASSERT_EQ(TypeParam::Find(this->list, item, -1), place) << "by identity";
            ASSERT_EQ(TypeParam::Find(this->list, item, known + 1), size >= 26 ? -1 : place);
            ASSERT_FALSE(TypeParam::Remove(this->list, &random, known));
            // With the wrong value the whole list is looked through in the end.
            ASSERT_TRUE(TypeParam::Remove(this->list, item, known + random() % 2));
            this->model.Remove(place);
        }
        this->Same();
        this->CheckSearches(value);
        this->CheckSearches(static_cast<typename TypeParam::Value>(random() % (spread + 2)) - 1);
        if (this->HasFatalFailure())
            return;
    }
}

TYPED_TEST(ArrayLists, GrowAndShrinkByOneStep) {
    int item = 0;
    for (int i = 0; i < 3000; ++i) {
        ASSERT_EQ(this->list.AppendToTail(&item, 7), i);
        this->model.Insert(i, &item, 7);
        ASSERT_EQ(Look(this->list).capacity, this->model.capacity);
    }
    this->Same();
    for (int i = 2999; i >= 0; --i) {
        this->list.RemoveByIndex(i % 2 == 0 ? i : 0);
        this->model.Remove(0);
        ASSERT_EQ(Look(this->list).capacity, this->model.capacity);
    }
    this->Same();
    EXPECT_EQ(Look(this->list).block, nullptr);
}

TYPED_TEST(ArrayLists, KeepTheirBlockWhenAsked) {
    int item = 0;
    for (int i = 0; i < 25; ++i)
        this->list.InsertNewHead(&item, 1);
    TypeParam::RemoveAll(this->list, true);
    EXPECT_EQ(this->list.NumNodes(), 0);
    EXPECT_NE(Look(this->list).block, nullptr);
    EXPECT_EQ(this->list.Index(0, nullptr), nullptr);
    EXPECT_EQ(this->list.InsertToIndex(3, &item, 1), 0);
    EXPECT_EQ(Look(this->list).capacity, 30);
    TypeParam::RemoveAll(this->list, false);
    EXPECT_EQ(Look(this->list).block, nullptr);
}

TYPED_TEST(ArrayLists, TakeIndicesAsTheyCome) {
    int items[4] = {};
    const int indices[] = {5, 1, 1, -3};
    const int results[] = {0, 1, 1, 0};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(this->list.InsertToIndex(indices[i], &items[i], i), results[i]) << indices[i];
    const int order[] = {3, 0, 2, 1};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(this->list.Index(i, nullptr), &items[order[i]]) << i;
    EXPECT_EQ(this->list.Index(4, nullptr), nullptr);
    EXPECT_EQ(this->list.Index(-1, nullptr), nullptr);
    this->list.RemoveByIndex(4);
    this->list.RemoveByIndex(-1);
    EXPECT_EQ(this->list.NumNodes(), 4);
}

TYPED_TEST(ArrayLists, WriteResultsAsDocumented) {
    int index = 77;
    typename TypeParam::Value value = 77;
    EXPECT_EQ(this->list.PrevElemBySortValue(5, &index, &value), nullptr);
    EXPECT_EQ(this->list.FirstOfValue(5, &index), nullptr);
    EXPECT_EQ(this->list.FirstOfValueAtIndex(0, &index), nullptr);
    EXPECT_EQ(index, 77) << "an empty list writes nothing";
    int item = 0;
    this->list.AppendToTail(&item, 5);
    EXPECT_EQ(this->list.PrevElemBySortValue(4, &index, &value), nullptr);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(value, 77);
    EXPECT_EQ(this->list.PrevElemBySortValue(6, nullptr, nullptr), &item);
    this->list.AppendToTail(nullptr, 6);
    EXPECT_EQ(this->list.FirstOfValue(6, &index), nullptr);
    EXPECT_EQ(index, -1) << "a null item is no result";
    EXPECT_EQ(this->list.LastOfValue(6, &index), nullptr);
    EXPECT_EQ(index, 1);
}

TYPED_TEST(ArrayLists, CopyElementsIntoAFreshBlock) {
    using List = typename TypeParam::List;
    int items[30];
    for (int i = 0; i < 30; ++i)
        this->list.AppendToTail(&items[i], i);
    List copy(this->list);
    EXPECT_EQ(Look(copy).capacity, 40) << "room for 30 and the whole steps above";
    EXPECT_NE(Look(copy).block, Look(this->list).block);
    this->list.RemoveByIndex(0);
    copy = this->list;
    EXPECT_EQ(copy.NumNodes(), 29);
    EXPECT_EQ(copy.Index(0, nullptr), &items[1]);
    List& self = copy;
    copy = self;
    copy.Copy(self);
    EXPECT_EQ(copy.NumNodes(), 29);
    copy = List();
    EXPECT_EQ(copy.NumNodes(), 0);
    EXPECT_EQ(Look(copy).block, nullptr);
}

/// A list whose elements have these values and whose items tell their places.
std::vector<long long>& Fill(CMyArrayList& list, std::vector<long long> values) {
    static std::vector<long long> kept;
    kept = std::move(values);
    for (long long& value : kept)
        list.AppendToTail(&value, value);
    return kept;
}

TEST(MyArrayList, PutsTiesInFrontExceptAtTheTail) {
    struct Row {
        const char* name;
        std::vector<long long> before;
        long long value;
        int index;
    };
    const Row rows[] = {
        {"empty", {}, 5, 0},
        {"equal to the only one", {5}, 5, 0},
        {"equal to first and last", {5, 5}, 5, 0},
        {"equal to the first", {5, 7}, 5, 0},
        {"equal to an inner one", {3, 5, 5, 7}, 5, 1},
        {"equal to the last", {3, 5, 5}, 5, 3},
        {"between", {3, 7}, 5, 1},
        {"below 32 bits", {-3'000'000'000, 7}, -2'999'999'999, 1},
    };
    for (const Row& row : rows) {
        CMyArrayList list;
        Fill(list, row.before);
        int item = 0;
        EXPECT_EQ(list.AddSorted(&item, row.value), row.index) << row.name;
        EXPECT_EQ(list.Index(row.index, nullptr), &item) << row.name;
    }
}

TEST(MyArrayList, AnswersEachDirection) {
    struct Row {
        const char* name;
        int count; ///< elements with the values 10, 20, 30, ...
        long long value;
        int before, after, exact;
    };
    const Row rows[] = {
        {"empty", 0, 10, 77, 77, 77},
        {"below all of two", 2, 5, -1, -1, -1},
        {"below all of 24", 24, 5, -1, -1, -1},
        {"below all of 25", 25, 5, 0, 1, -1},
        {"hit in 24", 24, 20, 1, 2, 1},
        {"hit in 25", 25, 20, 1, 2, 1},
        {"between in 24", 24, 25, 1, 2, -1},
        {"between in 25", 25, 25, 1, 2, -1},
        {"the last of 24", 24, 240, 23, -1, 23},
        {"the last of 25", 25, 250, 24, -1, 24},
        {"above all of 25", 25, 251, 24, -1, -1},
    };
    for (const Row& row : rows) {
        CMyArrayList list;
        for (int i = 1; i <= row.count; ++i)
            list.AppendToTail(&list, i * 10);
        const int expected[] = {row.before, row.after, row.exact, row.count == 0 ? 77 : -1};
        for (int dir = 0; dir < 4; ++dir) {
            int index = 77;
            void* item = list.ElemBySortValue(row.value, &index, static_cast<_tscanDir>(dir));
            EXPECT_EQ(index, expected[dir]) << row.name << ", direction " << dir;
            EXPECT_EQ(item != nullptr, index >= 0 && index != 77) << row.name;
        }
    }
}

TEST(MyArrayList, TracksWhetherItIsSorted) {
    int item = 0;
    CMyArrayList list;
    EXPECT_TRUE(list.IsSorted());
    list.AppendToTail(&item, 5);
    EXPECT_TRUE(list.IsSorted()) << "first of an empty list";
    for (const long long value : {9, 1, 5, 5})
        list.AddSorted(&item, value);
    EXPECT_TRUE(list.IsSorted()) << "head, tail and middle keep it";
    list.AppendToTail(&item, 10);
    EXPECT_FALSE(list.IsSorted());
    list.AddSorted(&item, 2);
    EXPECT_FALSE(list.IsSorted());
    EXPECT_TRUE(list.VerifyListIsSorted());
    EXPECT_TRUE(list.IsSorted());
    list.InsertToIndex(1, &item, 4);
    EXPECT_FALSE(list.IsSorted());
    EXPECT_FALSE(list.VerifyListIsSorted());
    CMyArrayList copy(list);
    EXPECT_FALSE(copy.IsSorted());
    list.RemoveAllButLeaveAllocation();
    EXPECT_TRUE(list.IsSorted());
    list.InsertToIndex(0, &item, 4);
    EXPECT_FALSE(list.IsSorted()) << "as a new head";
    list.RemoveAll();
    EXPECT_TRUE(list.IsSorted());
    list.InsertNewHead(&item, 4);
    EXPECT_FALSE(list.IsSorted());
}

TEST(MyArrayList, CountsAsUnsortedAfterEveryAppendButTheFirst) {
    CMyArrayList list;
    for (int i = 0; i < 25; ++i) {
        EXPECT_TRUE(list.VerifyListIsSorted());
        list.AppendToTail(&list, i);
        EXPECT_EQ(list.IsSorted(), i == 0) << i;
    }
}

TEST(MyArrayList, VerifiesFromTheSmallest32BitValuePlusOne) {
    for (const auto& [value, sorted] :
         {std::pair(-2147483647LL, true), std::pair(-2147483648LL, false),
          std::pair(-3'000'000'000LL, false)}) {
        CMyArrayList list;
        list.AddSorted(&list, value);
        EXPECT_EQ(list.VerifyListIsSorted(), sorted) << value;
    }
}

TEST(MyArrayList, AdjustsAndScales) {
    constexpr long long most = std::numeric_limits<long long>::max();
    CMyArrayList list;
    Fill(list, {-5, 3, most});
    const auto values = [&list] {
        std::vector<long long> all(3);
        for (int i = 0; i < 3; ++i)
            list.Index(i, &all[static_cast<std::size_t>(i)]);
        return all;
    };
    list.AdjustAllSortValues(-2);
    EXPECT_EQ(values(), (std::vector<long long>{-7, 1, most - 2}));
    list.AdjustAllSortValues(4);
    EXPECT_EQ(values(), (std::vector<long long>{-3, 5, -most})) << "wraps around";
    list.ScaleAllSortValues(0.5);
    EXPECT_EQ(values(), (std::vector<long long>{-1, 2, -(1LL << 62)})) << "towards zero";
    list.ScaleAllSortValues(4);
    EXPECT_EQ(values(), (std::vector<long long>{-4, 8, -most - 1}));
    list.ScaleAllSortValues(-1);
    EXPECT_EQ(values(), (std::vector<long long>{4, -8, most}));
    list.ScaleAllSortValues(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(values(), (std::vector<long long>{0, 0, 0}));
}

TEST(MyArrayList, GrowsByTheStepItWasGiven) {
    struct Row {
        const char* name;
        unsigned step;
        int first, second; ///< capacity after the first element and after the one that overflows it
    };
    const Row rows[] = {{"none", 0, 2, 3}, {"one", 1, 2, 3}, {"seven", 7, 7, 14}};
    for (const Row& row : rows) {
        CMyArrayList list(row.step);
        list.AppendToTail(&list, 0);
        EXPECT_EQ(Look(list).capacity, row.first) << row.name;
        while (list.NumNodes() <= row.first)
            list.AppendToTail(&list, 0);
        EXPECT_EQ(Look(list).capacity, row.second) << row.name;
        const CMyArrayList copy(list);
        EXPECT_EQ(Look(copy).step, Look(list).step) << row.name;
    }
    CMyArrayList huge(~0u);
    EXPECT_EQ(huge.AppendToTail(&huge, 0), -1) << "a step beyond any block";
}

TEST(MyArrayList, FindsTheFirstOfTwoEqualPointers) {
    for (const int count : {25, 26}) {
        CMyArrayList list;
        int item = 0;
        for (int i = 0; i < count; ++i)
            list.AppendToTail(i == 3 || i == 20 ? &item : nullptr, i / 10);
        EXPECT_EQ(list.MemberIndex(&item, 2), count == 25 ? 3 : 20) << count;
        EXPECT_EQ(list.Member(&item, 1), count == 25 ? 1 : 0) << count;
        EXPECT_EQ(list.Member(&item, -1), 1);
        EXPECT_TRUE(list.Remove(&item, 2));
        EXPECT_EQ(list.MemberIndex(&item, -1), count == 25 ? 19 : 3) << count;
    }
}

TEST(MegaArrayList, LandsWhereAskedAmongEquals) {
    struct Row {
        const char* name;
        std::vector<double> before;
        double value;
        int byDefault, after, front;
    };
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
    const Row rows[] = {
        {"empty", {}, 2, 0, 0, 0},
        {"inner run", {1, 2, 2, 2, 3}, 2, 1, 4, 1},
        {"run at the front", {2, 2, 3}, 2, 0, 2, 0},
        {"run at the end", {1, 2, 2}, 2, 1, 3, 1},
        {"only one", {2}, 2, 0, 1, 0},
        {"below all", {2, 3}, 1, 0, 0, 0},
        {"above all", {2, 3}, 4, 2, 2, 2},
        {"no number", {1, 2, 3}, noNumber, 0, 0, 0},
    };
    for (const Row& row : rows) {
        const int expected[] = {row.byDefault, row.after, row.front};
        for (int where = 0; where < 3; ++where) {
            CMegaArrayList list;
            int others = 0, item = 0;
            for (const double value : row.before)
                list.AppendToTail(&others, value);
            const int index = list.AddSorted(&item, row.value, static_cast<_AddSortedLoc>(where));
            EXPECT_EQ(index, expected[where]) << row.name << ", " << where;
            EXPECT_EQ(list.Index(index, nullptr), &item) << row.name << ", " << where;
        }
    }
}

TEST(MegaArrayList, AnswersMemberWithAnIndexWhereItSearchesByValue) {
    CMegaArrayList list;
    std::vector<int> items(26);
    for (int i = 0; i < 25; ++i)
        list.AppendToTail(&items[static_cast<std::size_t>(i)], i);
    EXPECT_EQ(list.Member(&items[7], 7, true), 1) << "25 elements";
    list.AppendToTail(&items[25], 25);
    EXPECT_EQ(list.Member(&items[7], 7, true), 7) << "26 elements";
    EXPECT_EQ(list.Member(&items[0], 0, true), 0) << "found at index 0";
    EXPECT_EQ(list.GetIndexOfItem(&items[0], 0, true), 0);
    EXPECT_EQ(list.Member(&items[0], 0, false), 1);
    EXPECT_EQ(list.Member(&items[7], 8, true), 0) << "not in the run";
    EXPECT_EQ(list.Member(&items[7], -1, true), 1) << "a negative value searches by identity";
    EXPECT_EQ(list.Member(&list, 7, false), 0);
}

TEST(MegaArrayList, SetsValuesInPlace) {
    CMegaArrayList list;
    int items[2];
    EXPECT_FALSE(list.SetSortValue(&items[0], 1));
    EXPECT_FALSE(list.SetSortValueByIndex(0, 1));
    list.AppendToTail(&items[0], 1);
    list.AppendToTail(&items[1], 2);
    EXPECT_TRUE(list.SetSortValue(&items[0], 3));
    EXPECT_TRUE(list.SetSortValueByIndex(1, 2.5));
    EXPECT_FALSE(list.SetSortValueByIndex(2, 1));
    list.ScaleAllSortValues(2);
    list.AdjustAllSortValues(-0.5);
    double value = 0;
    EXPECT_EQ(list.Index(0, &value), &items[0]);
    EXPECT_EQ(value, 5.5);
    list.Index(1, &value);
    EXPECT_EQ(value, 4.5);
}

TEST(MegaArrayList, LogsWhatIsWrong) {
    CapturedLog log;
    CMegaArrayList list;
    EXPECT_EQ(list.Index(3, nullptr), nullptr);
    EXPECT_TRUE(list.VerifyListIsSorted());
    for (const double value : {1.0, 4.0, 2.5, 0.5})
        list.AppendToTail(&list, value);
    EXPECT_EQ(list.Index(4, nullptr), nullptr) << "no line while there is a block";
    EXPECT_FALSE(list.VerifyListIsSorted());
    EXPECT_EQ(log.Lines(),
              (std::vector<std::string>{"ERR>>Index called for index 3 and list is NULL!!!",
                                        "CMegaArrayList::VerifyListIsSorted() fails on item 2 with "
                                        "sort value of 2.5 being bigger than 4"}));
}

TEST(MegaArrayList, KeepsAFlagThatOnlyForcingSets) {
    // Read where it stands: no operation tells it.
    const auto flag = [](const CMegaArrayList& list) {
        return reinterpret_cast<const unsigned char*>(&list)[24];
    };
    CMegaArrayList list;
    EXPECT_EQ(flag(list), 1);
    CMegaArrayList copy(list);
    EXPECT_EQ(flag(copy), 0);
    copy.ForceSorted();
    EXPECT_EQ(flag(copy), 1);
}

} // namespace
