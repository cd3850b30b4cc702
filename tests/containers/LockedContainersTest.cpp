#include "tests/support/ThreadTeam.h"
#include "utilities/containers/ByteQueue.h"
#include "utilities/containers/MyList.h"
#include "utilities/containers/Stack.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>

namespace {

unsigned char byte = 0;

template <class Container>
struct Operation {
    const char* name;
    void (*act)(Container& one, Container& other);
};

/// Each operation waits for the lock of `one`, and meanwhile does not hold that of `other`: two
/// that are assigned to each other would wait for ever. The locks stand at this place in the
/// records.
template <class Container>
void ExpectToWait(std::size_t offset, std::initializer_list<Operation<Container>> operations) {
    const auto sectionOf = [offset](Container& container) {
        return reinterpret_cast<CRITICAL_SECTION*>(reinterpret_cast<char*>(&container) + offset);
    };
    for (const auto& operation : operations) {
        const Watchdog watchdog(operation.name);
        Container one, other;
        const auto meanwhile = [&] {
            if (TryEnterCriticalSection(sectionOf(other)))
                LeaveCriticalSection(sectionOf(other));
            else
                ADD_FAILURE() << operation.name << " holds both locks";
        };
        EXPECT_TRUE(WaitsAt(
            *sectionOf(one), [&] { operation.act(one, other); }, meanwhile))
            << operation.name;
    }
}

TEST(LockedContainer, WaitForTheLockInEachOperation) {
    ExpectToWait<CMyList>(
        8,
        {
            {"AddSorted", [](auto& list, auto&) { list.AddSorted(&list, 1, true); }},
            {"AppendToTail", [](auto& list, auto&) { list.AppendToTail(&list, 1); }},
            {"InsertNewHead", [](auto& list, auto&) { list.InsertNewHead(&list, 1); }},
            {"InsertAfter", [](auto& list, auto&) { list.InsertAfter(&list, 1); }},
            {"Index", [](auto& list, auto&) { list.Index(0, nullptr); }},
            {"NodeByIndex", [](auto& list, auto&) { list.NodeByIndex(0); }},
            {"ElemBySortValue", [](auto& list, auto&) { list.ElemBySortValue(0, nullptr); }},
            {"PrevElem", [](auto& list, auto&) { list.PrevElemBySortValue(0, nullptr, nullptr); }},
            {"Member", [](auto& list, auto&) { list.Member(&list); }},
            {"Remove", [](auto& list, auto&) { list.Remove(&list); }},
            {"RemoveByNode", [](auto& list, auto&) { list.RemoveByNode(nullptr); }},
            {"RemoveByIndex", [](auto& list, auto&) { list.RemoveByIndex(0); }},
            {"RemoveAll", [](auto& list, auto&) { list.RemoveAll(); }},
            {"NumNodes", [](auto& list, auto&) { list.NumNodes(); }},
            {"VerifyIsSorted", [](auto& list, auto&) { list.VerifyIsSorted(); }},
            {"copy", [](auto& list, auto&) { CMyList copy(list); }},
            {"assign from", [](auto& list, auto& other) { other = list; }},
            {"assign to", [](auto& list, auto& other) { list = other; }},
        });
    ExpectToWait<CByteQueue>(
        16, {
                {"AddData", [](auto& queue, auto&) { queue.AddData(&byte, 1); }},
                {"GetData", [](auto& queue, auto&) { queue.GetData(&byte, 1); }},
                {"Total", [](auto& queue, auto&) { queue.TotalBytesAvailable(); }},
                {"RemoveEverything", [](auto& queue, auto&) { queue.RemoveEverything(); }},
                {"SetRecycleBuffers", [](auto& queue, auto&) { queue.SetRecycleBuffers(true); }},
                {"Lock, and again",
                 [](auto& queue, auto&) {
                     queue.Lock();
                     queue.RecycleBuffers();
                     queue.Unlock();
                 }},
                {"copy", [](auto& queue, auto&) { CByteQueue copy(queue); }},
                {"assign from", [](auto& queue, auto& other) { other = queue; }},
                {"assign to", [](auto& queue, auto& other) { queue = other; }},
            });
    ExpectToWait<CStack>(8, {
                                {"Push", [](auto& stack, auto&) { stack.Push(nullptr); }},
                                {"Pop", [](auto& stack, auto&) { stack.Pop(); }},
                                {"ClearStack", [](auto& stack, auto&) { stack.ClearStack(); }},
                                {"NumNodes", [](auto& stack, auto&) { stack.NumNodes(); }},
                            });
}

/// What is put in by four threads and taken out by four others, each of which asks again while
/// there is nothing.
template <class Put, class Take>
void ExpectNothingLost(const char* name, Put put, Take take) {
    constexpr unsigned pairs = 4, each = 100'000;
    std::vector<unsigned> taken[pairs];
    RunTeam(name, 2 * pairs, [&](unsigned number) {
        for (unsigned i = 0; i < each; ++i) {
            if (number < pairs) {
                put(number * each + i);
                continue;
            }
            unsigned item = 0;
            while (!take(item))
                SwitchToThread();
            taken[number - pairs].push_back(item);
        }
    });
    std::vector<unsigned> counts(pairs * each);
    for (const auto& items : taken) {
        unsigned next[pairs] = {};
        for (const unsigned item : items) {
            ASSERT_LT(item, pairs * each) << name;
            ASSERT_GE(item % each, next[item / each]) << name << ": out of order";
            next[item / each] = item % each + 1;
            ++counts[item];
        }
    }
    EXPECT_EQ(std::count(counts.begin(), counts.end(), 1u), pairs * each) << name;
}

TEST(LockedContainer, LosesNothingAmongEightThreads) {
    std::vector<unsigned> items(400'000);
    std::iota(items.begin(), items.end(), 0u);
    CByteQueue queue;
    ExpectNothingLost(
        "CByteQueue",
        [&](unsigned item) { queue.AddData(reinterpret_cast<unsigned char*>(&item), sizeof item); },
        [&](unsigned& item) {
            return queue.GetData(reinterpret_cast<unsigned char*>(&item), sizeof item) != 0;
        });
    CStack stack;
    ExpectNothingLost(
        "CStack", [&](unsigned item) { stack.Push(&items[item]); },
        [&](unsigned& item) {
            const void* popped = stack.Pop();
            item = popped != nullptr ? *static_cast<const unsigned*>(popped) : 0;
            return popped != nullptr;
        });
    CMyList list;
    ExpectNothingLost(
        "CMyList", [&](unsigned item) { list.AppendToTail(&items[item], 0); },
        [&](unsigned& item) {
            // Another thread may take the same one out first.
            void* first = list.Index(0, nullptr);
            item = first != nullptr ? *static_cast<unsigned*>(first) : 0;
            return first != nullptr && list.Remove(first);
        });
}

} // namespace
