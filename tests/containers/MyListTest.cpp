#include "utilities/containers/MyList.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/Rounds.h"
#include "utilities/containers/MegaList.h"

#include <algorithm>
#include <climits>
#include <stdexcept>

namespace {

struct Integers : CMyList {
    using Node = _tNode_t;
    using Value = long long;
    static constexpr std::size_t offset = vtr::ByPointer(48, 28);
    int PutAfter(void* item, Value, int index) { return InsertAfter(item, index); }
    static Value Kept(Value) { return 0; }
};

struct Doubles : CMegaList {
    using Node = _tMegaNode_t;
    using Value = double;
    static constexpr std::size_t offset = vtr::ByPointer(8, 4);
    int PutAfter(void* item, Value value, int index) { return InsertAfter(item, value, index); }
    static Value Kept(Value value) { return value; }
};

/// The fields after the lock, as a host that shares the record sees them.
template <class Node>
struct Record {
    Node *head, *tail, *cursor;
    int count, cursorIndex;
    bool sorted;
};

template <class List>
auto& RecordOf(List& list) {
    using Fields = Record<typename List::Node>;
    static_assert(sizeof list == List::offset + sizeof(Fields));
    return *reinterpret_cast<Fields*>(reinterpret_cast<char*>(&list) + List::offset);
}

template <class Value>
struct Entry {
    void* item = nullptr;
    Value value = -7;
    bool operator==(const Entry&) const = default;
};

/// The rules of the list, told in indices.
template <class Value>
struct Model {
    std::vector<Entry<Value>> entries;

    int Size() const { return static_cast<int>(entries.size()); }
    bool Has(int index) const { return index >= 0 && index < Size(); }
    /// As a search tells it that finds nothing at other places.
    Entry<Value> At(int index) const {
        return Has(index) ? entries.begin()[index] : Entry<Value>{};
    }
    /// How many in a row, from the first on, hold the condition.
    template <class Condition>
    int Run(Condition holds) const {
        return static_cast<int>(std::ranges::find_if_not(entries, holds) - entries.begin());
    }

    int Insert(int index, Entry<Value> entry) {
        entries.insert(entries.begin() + index, entry);
        return index;
    }
    int AddSorted(Entry<Value> added, bool after) {
        const auto passes = [&](const auto& e) {
            return e.value < added.value || (after && e.value == added.value);
        };
        const int index = Run(passes);
        return Insert(index > 0 && passes(entries.back()) ? Size() : index, added);
    }
    int FindPrevious(Value value) const {
        const int atMost = Run([=](const auto& e) { return e.value <= value; });
        return At(0).value < value ? atMost - 1 : 0;
    }
    int Find(const void* item) const {
        return Run([=](const auto& e) { return e.item != item; });
    }
    void Remove(int index) {
        if (Has(index))
            entries.erase(entries.begin() + index);
    }
    bool Verify() const {
        Value previous = -2147483647;
        for (const auto& entry : entries) {
            if (entry.value <= previous)
                return false;
            previous = entry.value;
        }
        return true;
    }
};

template <class List>
class LinkedLists : public testing::Test {
protected:
    using Value = typename List::Value;

    void Same() {
        const auto& fields = RecordOf(list);
        std::vector<Entry<Value>> entries;
        for (const auto* node = fields.head; node != nullptr; node = node->next)
            entries.push_back({node->item, node->sortValue});
        ASSERT_EQ(entries, model.entries);
        ASSERT_EQ(fields.count, model.Size());
    }

    void Insert(int way, void* item, Value value, int place, unsigned failing) {
        const int size = model.Size(), after = std::min(std::max(place, 0) + 1, size);
        fault.FailAt(failing);
        const int answer = way == 0   ? list.AppendToTail(item, value)
                           : way == 1 ? list.InsertNewHead(item, value)
                           : way == 2 ? list.PutAfter(item, value, place)
                                      : list.AddSorted(item, value, way == 3);
        fault.FailAt(0);
        if (failing != 0) {
            ASSERT_EQ(answer, -1);
            return;
        }
        const Entry<Value> entry{item, way == 2 ? List::Kept(value) : value};
        ASSERT_EQ(answer, way == 0   ? model.Insert(size, entry)
                          : way == 1 ? model.Insert(0, entry)
                          : way == 2 ? model.Insert(after, entry)
                                     : model.AddSorted(entry, way == 3));
    }

    void Remove(int way, void* item, int place) {
        typename List::Node foreign;
        auto* node = way == 1 && model.Has(place) ? list.NodeByIndex(place) : &foreign;
        const bool looks = way == 2 || node == &foreign;
        const int index = way == 0 || !looks ? place : model.Find(way == 2 ? item : &foreign);
        if (way == 0)
            list.RemoveByIndex(place);
        else
            ASSERT_EQ(way == 1 ? list.RemoveByNode(node) : list.Remove(item), model.Has(index));
        model.Remove(index);
    }

    void Search(int way, void* item, Value value, int place) {
        int index = -7;
        Entry<Value> found;
        const bool bySortValue = (way == 1 || way == 2) && model.Size() > 0;
        const int previous = bySortValue ? model.FindPrevious(value) : -7;
        const bool hit = model.At(previous).value == value;
        if (way == 0) {
            found.item = list.Index(place, &found.value);
            ASSERT_EQ(found, model.At(place));
        } else if (way == 1) {
            found.item = list.PrevElemBySortValue(value, &index, &found.value);
            ASSERT_EQ(index, previous);
            ASSERT_EQ(found, model.At(previous));
        } else if (way == 2) {
            ASSERT_EQ(list.ElemBySortValue(value, &index), hit ? model.At(previous).item : nullptr);
            ASSERT_EQ(index, hit || previous < 0 ? previous : -1);
        } else if (way == 3) {
            ASSERT_EQ(list.Member(item), model.Has(model.Find(item)));
        } else {
            ASSERT_EQ(list.VerifyIsSorted(), model.Verify());
        }
    }

    void Step(Dice& dice, int round) {
        Value value = dice.Below(15);
        if (value < 2)
            value -= 2147483647; // about where the first value counts as unsorted
        const int place = dice.Below(model.Size() + 3) - 1;
        void* item = &items[dice.Below(60)];
        const int choice = dice.Below(10), growing = round / 60 % 2 == 0 ? 5 : 2;
        if (dice.Below(500) == 0) {
            list.RemoveAll();
            model.entries.clear();
        } else if (dice.Below(200) == 0) {
            // Assigned to one that holds something else, from a copy.
            List other(list);
            list.AppendToTail(&other, 9);
            list = other;
        } else if (choice < growing)
            Insert(dice.Below(5), item, value, place, dice.Below(9) == 0);
        else if (choice < 7)
            Remove(dice.Below(3), item, place);
        else
            Search(dice.Below(5), item, value, place);
        if (!this->HasFatalFailure())
            Same();
    }

    AllocationFault fault{"vtrutils.dll"};
    int items[60]; ///< so few that some are there twice
    List list;
    Model<Value> model;
};

using Kinds = testing::Types<Integers, Doubles>;
TYPED_TEST_SUITE(LinkedLists, Kinds);

TYPED_TEST(LinkedLists, DoWhatASimpleModelDoes) {
    EachRound(47, 20'000, [this](Dice& dice, int round) { this->Step(dice, round); });
}

TYPED_TEST(LinkedLists, ThrowOnlyWhenTheyAreTooLong) {
    auto& full = this->list;
    full.AppendToTail(nullptr, 1);
    RecordOf(full).count = INT_MAX;
    EXPECT_THROW(full.AppendToTail(nullptr, 2), std::length_error);
    EXPECT_THROW(full.AddSorted(nullptr, 2, true), std::length_error);
    RecordOf(full).count = 1;
    const auto& self = full;
    full = self;
    EXPECT_EQ(full.NumNodes(), 1);
    this->fault.FailAt(1);
    EXPECT_EQ(TypeParam(full).NumNodes(), 0) << "a copy without memory";
}

} // namespace
