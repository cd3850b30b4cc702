#include "utilities/containers/MegaList.h"
#include "utilities/containers/MyList.h"

#include <climits>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

struct Integers {
    using List = CMyList;
    using Node = _tNode_t;
    using Value = long long;
    static constexpr std::size_t offset = 48;
    static int InsertAfter(List& list, void* item, Value, int index) {
        return list.InsertAfter(item, index);
    }
    static Value Inserted(Value) { return 0; }
};

struct Doubles {
    using List = CMegaList;
    using Node = _tMegaNode_t;
    using Value = double;
    static constexpr std::size_t offset = 8;
    static int InsertAfter(List& list, void* item, Value value, int index) {
        return list.InsertAfter(item, value, index);
    }
    static Value Inserted(Value value) { return value; }
};

template <class Value>
struct Entry {
    int* item;
    Value value;
    bool operator==(const Entry&) const = default;
};

/// The rules of list, cursor and flag, told in indices.
template <class Kind>
struct Model {
    using Value = typename Kind::Value;
    std::vector<Entry<Value>> entries;
    int cursor = 0;
    bool sorted = true;

    int Size() const { return static_cast<int>(entries.size()); }
    Value At(int index) const { return entries[static_cast<std::size_t>(index)].value; }
    void Put(int index, int* item, Value value) {
        entries.insert(entries.begin() + index, {item, value});
    }

    int Append(int* item, Value value) {
        sorted = cursor == 0;
        Put(Size(), item, value);
        return Size() - 1;
    }
    int Head(int* item, Value value) {
        sorted = cursor == 0;
        cursor += Size() > 0 ? 1 : 0;
        Put(0, item, value);
        return 0;
    }
    int After(int* item, Value value, int index) {
        sorted = cursor == 0;
        cursor = Size() == 0 ? 0 : std::clamp(index, 0, Size() - 1) + 1;
        Put(cursor, item, value);
        return cursor;
    }
    int AddSorted(int* item, Value value, bool after) {
        const bool before = sorted;
        int index = 0;
        if (Size() == 0 || value < At(0) || (!after && value == At(0))) {
            index = Head(item, value);
        } else if (value > At(Size() - 1) || (after && value == At(Size() - 1))) {
            index = Append(item, value);
        } else {
            for (index = 1; index < Size() && (At(index) < value || (after && At(index) == value));)
                ++index;
            Put(index, item, value);
            cursor = index - 1;
        }
        sorted = before;
        return index;
    }
    int Previous(Value value) {
        cursor = 0;
        if (At(0) < value) {
            while (cursor + 1 < Size() && At(cursor + 1) <= value)
                ++cursor;
        }
        return cursor;
    }
    int Find(const int* item) {
        for (int i = 0; i < Size(); ++i) {
            if (entries[static_cast<std::size_t>(i)].item == item) {
                cursor = std::max(i - 1, 0);
                return i;
            }
        }
        cursor = std::max(Size() - 1, 0);
        return -1;
    }
    void Remove(int index) {
        cursor = std::max(index - 1, 0);
        entries.erase(entries.begin() + index);
    }
    bool Verify() {
        Value previous = -2147483647;
        sorted = true;
        for (int i = 0; sorted && i < Size(); ++i) {
            cursor = i;
            sorted = At(i) > previous;
            previous = At(i);
        }
        return sorted;
    }
};

/// The fields behind the lock, as a host that shares the record sees them.
template <class Node>
struct Record {
    Node* head;
    Node* tail;
    Node* cursor;
    int count;
    int cursorIndex;
    bool sorted;
};

template <class Kind>
class LinkedLists : public testing::Test {
protected:
    using Value = typename Kind::Value;
    using List = typename Kind::List;
    using Fields = Record<typename Kind::Node>;

    static Fields Look(const List& list) {
        static_assert(sizeof list == Kind::offset + sizeof(Fields));
        Fields fields;
        std::memcpy(&fields, reinterpret_cast<const char*>(&list) + Kind::offset, sizeof fields);
        return fields;
    }

    void Same(const List& other) {
        const Fields fields = Look(other);
        std::vector<Entry<Value>> entries;
        const typename Kind::Node* last = nullptr;
        for (const auto* node = fields.head; node != nullptr; node = node->next) {
            if (node == fields.cursor) {
                ASSERT_EQ(static_cast<int>(entries.size()), fields.cursorIndex);
            }
            entries.push_back({static_cast<int*>(node->item), node->sortValue});
            last = node;
        }
        ASSERT_EQ(entries, model.entries);
        ASSERT_EQ(fields.tail, last);
        ASSERT_EQ(fields.count, model.Size());
        ASSERT_EQ(fields.cursor == nullptr, last == nullptr);
        ASSERT_EQ(fields.cursorIndex, model.cursor);
        ASSERT_EQ(fields.sorted, model.sorted);
    }

    void Insert(unsigned choice, int* item, Value value, int place) {
        switch (choice % 6) {
        case 0:
            ASSERT_EQ(list.AppendToTail(item, value), model.Append(item, value));
            break;
        case 1:
            ASSERT_EQ(list.InsertNewHead(item, value), model.Head(item, value));
            break;
        case 2:
            ASSERT_EQ(Kind::InsertAfter(list, item, value, place),
                      model.After(item, Kind::Inserted(value), place));
            break;
        default:
            ASSERT_EQ(list.AddSorted(item, value, choice % 2 == 0),
                      model.AddSorted(item, value, choice % 2 == 0));
        }
    }

    void Remove(unsigned choice, int place) {
        const bool inside = place >= 0 && place < model.Size();
        if (choice % 3 == 0) {
            list.RemoveByIndex(place);
            if (inside)
                model.Remove(place);
        } else if (inside && choice % 3 == 1) {
            auto* node = list.NodeByIndex(place);
            ASSERT_TRUE(list.RemoveByNode(node));
            model.Remove(place);
        } else if (inside) {
            ASSERT_TRUE(list.Remove(model.entries[static_cast<std::size_t>(place)].item));
            model.Remove(place);
        } else {
            typename Kind::Node foreign = {};
            ASSERT_FALSE(list.RemoveByNode(&foreign));
            ASSERT_FALSE(list.Remove(&foreign));
            model.Find(nullptr);
        }
    }

    void Search(unsigned choice, Value value, int place) {
        int index = -7;
        Value found = -7;
        switch (choice % 5) {
        case 0: {
            void* item = list.Index(place, &found);
            const bool inside = place >= 0 && place < model.Size();
            ASSERT_EQ(item != nullptr, inside);
            if (inside) {
                model.cursor = place;
                ASSERT_EQ(item, model.entries[static_cast<std::size_t>(place)].item);
                ASSERT_EQ(found, model.At(place));
            }
            break;
        }
        case 1:
            list.PrevElemBySortValue(value, &index, &found);
            ASSERT_EQ(index, model.Size() > 0 ? model.Previous(value) : -7);
            ASSERT_EQ(found, model.Size() > 0 ? model.At(index) : -7);
            break;
        case 2: {
            void* item = list.ElemBySortValue(value, &index);
            const int expected = model.Size() > 0 ? model.Previous(value) : -7;
            const bool hit = model.Size() > 0 && model.At(expected) == value;
            ASSERT_EQ(item != nullptr, hit);
            ASSERT_EQ(index, model.Size() == 0 || hit ? expected : -1);
            break;
        }
        case 3: {
            const bool inside = place >= 0 && place < model.Size();
            int* item = inside ? model.entries[static_cast<std::size_t>(place)].item : nullptr;
            ASSERT_EQ(list.Member(item), inside ? 1 : 0);
            model.Find(item);
            break;
        }
        default:
            ASSERT_EQ(list.VerifyIsSorted(), model.Verify());
        }
    }

    List list;
    Model<Kind> model;
};

using Kinds = testing::Types<Integers, Doubles>;
TYPED_TEST_SUITE(LinkedLists, Kinds);

TYPED_TEST(LinkedLists, DoWhatASimpleModelDoes) {
    constexpr unsigned seed = 47;
    constexpr int rounds = 12'000;
    std::mt19937 random(seed);
    std::vector<int> items(rounds);
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        const auto value = static_cast<typename TypeParam::Value>(random() % 15) - 1;
        const int place =
            static_cast<int>(random() % static_cast<unsigned>(this->model.Size() + 3)) - 1;
        const unsigned growing = round / 60 % 2 == 0 ? 6 : 2;
        const unsigned choice = static_cast<unsigned>(random() % 10);
        if (choice < growing)
            this->Insert(static_cast<unsigned>(random()), &items[static_cast<std::size_t>(round)],
                         value, place);
        else if (choice < 8)
            this->Remove(static_cast<unsigned>(random()), place);
        else
            this->Search(static_cast<unsigned>(random()), value, place);
        if (!this->HasFatalFailure())
            this->Same(this->list);
        if (this->HasFatalFailure())
            return;
        if (random() % 500 == 0) {
            const bool sorted = this->model.sorted;
            this->list.RemoveAll();
            this->model = {};
            this->model.sorted = sorted;
            this->Same(this->list);
        }
    }
}

TYPED_TEST(LinkedLists, HaveNodesOfTheirOwnWhenCopied) {
    int items[4] = {};
    for (int i = 0; i < 4; ++i) {
        this->list.AppendToTail(&items[i], i);
        this->model.Append(&items[i], i);
    }
    this->list.Index(2, nullptr);
    this->model.cursor = 2;
    typename TypeParam::List copy(this->list);
    this->Same(copy);
    EXPECT_NE(this->Look(copy).head, this->Look(this->list).head);
    typename TypeParam::List assigned;
    assigned.AppendToTail(&items[0], 9);
    assigned = this->list;
    const auto& self = assigned;
    assigned = self;
    this->list.RemoveAll();
    copy.RemoveByIndex(0);
    this->Same(assigned);
}

TYPED_TEST(LinkedLists, ThrowOnlyWhenTheyAreTooLong) {
    int item = 0;
    this->list.AppendToTail(&item, 1);
    this->list.AppendToTail(&item, 3);
    int* count =
        reinterpret_cast<int*>(reinterpret_cast<char*>(&this->list) + TypeParam::offset + 24);
    ASSERT_EQ(*count, 2);
    *count = INT_MAX;
    const auto tooLong = [&](const char* name, auto insert) {
        try {
            insert();
            ADD_FAILURE() << name << " did not throw";
        } catch (const std::length_error& error) {
            EXPECT_STREQ(error.what(), "list too long") << name;
        }
    };
    tooLong("tail", [&] { this->list.AppendToTail(&item, 2); });
    tooLong("head", [&] { this->list.InsertNewHead(&item, 2); });
    tooLong("after", [&] { TypeParam::InsertAfter(this->list, &item, 2, 0); });
    tooLong("sorted", [&] { this->list.AddSorted(&item, 2, true); });
    *count = 2;
    // The lock was let go: another thread gets in.
    int seen = 0;
    std::thread([&] { seen = this->list.NumNodes(); }).join();
    EXPECT_EQ(seen, 2);
}

TEST(MyList, LandsWhereAskedAmongEquals) {
    CMyList list;
    list.AppendToTail(nullptr, 5);
    list.AppendToTail(nullptr, 5);
    CMyList other(list);
    EXPECT_EQ(list.AddSorted(&list, 5, false), 0);
    EXPECT_EQ(other.AddSorted(&other, 5, true), 2);
}

TEST(MyList, TakesEqualNeighboursForUnsorted) {
    CMyList list;
    EXPECT_TRUE(list.VerifyIsSorted());
    for (const long long value : {1, 2, 3})
        list.AppendToTail(&list, value);
    EXPECT_TRUE(list.VerifyIsSorted());
    list.AddSorted(&list, 2, true);
    EXPECT_FALSE(list.VerifyIsSorted());
    for (const auto& [value, sorted] :
         {std::pair(-2147483646LL, true), std::pair(-2147483647LL, false)}) {
        CMyList lowest;
        lowest.AppendToTail(&lowest, value);
        EXPECT_EQ(lowest.VerifyIsSorted(), sorted) << value;
    }
}

TEST(MyList, WalksOnFromItsCursor) {
    CMyList list;
    std::vector<int> items(30'000);
    for (std::size_t i = 0; i < items.size(); ++i)
        list.AppendToTail(&items[i], static_cast<long long>(i));
    // Walks that began at the head each time would take a billion steps here.
    for (int i = 0; i < list.NumNodes(); ++i)
        ASSERT_EQ(list.Index(i, nullptr), &items[static_cast<std::size_t>(i)]);
    EXPECT_EQ(list.Index(5, nullptr), &items[5]);
    EXPECT_EQ(list.Index(3, nullptr), &items[3]) << "behind the cursor: from the head";
}

} // namespace
