#include "tests/support/ThreadTeam.h"
#include "utilities/containers/ByteQueue.h"
#include "utilities/containers/MyList.h"
#include "utilities/containers/Stack.h"

#include <gtest/gtest.h>

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

/// Each of eight threads puts one in and takes one out, which may be another's, again and again:
/// there is always one for it.
template <class Put, class Take>
void ExpectNothingLost(const char* name, Put put, Take take) {
    constexpr unsigned long long team = 8, each = 50'000;
    std::atomic<unsigned long long> sum{0};
    RunTeam(name, team, [&](unsigned number) {
        unsigned long long own = 0;
        for (unsigned i = 1; i <= each; ++i) {
            put(number * each + i);
            std::size_t item = 0;
            while ((item = take()) == 0)
                SwitchToThread();
            own += item;
        }
        sum += own;
    });
    EXPECT_EQ(sum, team * each * (team * each + 1) / 2) << name;
}

TEST(LockedContainer, LosesNothingAmongEightThreads) {
    const auto pointer = [](std::size_t item) { return reinterpret_cast<void*>(item); };
    const auto number = [](void* item) { return reinterpret_cast<std::size_t>(item); };
    CByteQueue queue;
    ExpectNothingLost(
        "CByteQueue",
        [&](std::size_t item) {
            queue.AddData(reinterpret_cast<unsigned char*>(&item), sizeof item);
        },
        [&] {
            std::size_t item = 0;
            queue.GetData(reinterpret_cast<unsigned char*>(&item), sizeof item);
            return item;
        });
    CStack stack;
    ExpectNothingLost(
        "CStack", [&](std::size_t item) { stack.Push(pointer(item)); },
        [&] { return number(stack.Pop()); });
    CMyList list;
    for (int i = 0; i < 100; ++i) // to walk past, so that threads meet
        list.AppendToTail(nullptr, 0);
    ExpectNothingLost(
        "CMyList", [&](std::size_t item) { list.AppendToTail(pointer(item), 0); },
        [&] {
            // Another thread may take the same one out first.
            void* last = list.Index(list.NumNodes() - 1, nullptr);
            return last != nullptr && list.Remove(last) ? number(last) : 0;
        });
}

} // namespace
