#include "tests/containers/ArrayListRecord.h"
#include "utilities/containers/MegaArrayList.h"
#include "utilities/containers/MyArrayList.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

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
        const ArrayListRecord record = Look(list);
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

} // namespace
