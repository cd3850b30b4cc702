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
template <class Container, std::size_t count>
void ExpectToWait(std::size_t offset, const Operation<Container> (&operations)[count]) {
    const auto sectionOf = [offset](Container& container) {
        return reinterpret_cast<CRITICAL_SECTION*>(reinterpret_cast<char*>(&container) + offset);
    };
    for (const auto& operation : operations) {
        SCOPED_TRACE(operation.name);
        const Watchdog watchdog(operation.name);
        Container one, other;
        const auto meanwhile = [&] {
            const bool free = TryEnterCriticalSection(sectionOf(other));
            EXPECT_TRUE(free) << "holds both locks";
            if (free)
                LeaveCriticalSection(sectionOf(other));
        };
        EXPECT_TRUE(WaitsAt(
            *sectionOf(one), [&] { operation.act(one, other); }, meanwhile));
    }
}

constexpr Operation<CMyList> ofLists[] = {
    {"AddSorted", [](auto& list, auto&) { list.AddSorted(&list, 1, true); }},
    {"AppendToTail", [](auto& list, auto&) { list.AppendToTail(&list, 1); }},
    {"Index", [](auto& list, auto&) { list.Index(0, nullptr); }},
    {"ElemBySortValue", [](auto& list, auto&) { list.ElemBySortValue(0, nullptr); }},
    {"Member", [](auto& list, auto&) { list.Member(&list); }},
    {"Remove", [](auto& list, auto&) { list.Remove(&list); }},
    {"RemoveByIndex", [](auto& list, auto&) { list.RemoveByIndex(0); }},
    {"RemoveAll", [](auto& list, auto&) { list.RemoveAll(); }},
    {"NumNodes", [](auto& list, auto&) { list.NumNodes(); }},
    {"copy", [](auto& list, auto&) { CMyList copy(list); }},
    {"assign from", [](auto& list, auto& other) { other = list; }},
    {"assign to", [](auto& list, auto& other) { list = other; }},
};
constexpr Operation<CByteQueue> ofQueues[] = {
    {"AddData", [](auto& queue, auto&) { queue.AddData(&byte, 1); }},
    {"GetData", [](auto& queue, auto&) { queue.GetData(&byte, 1); }},
    {"TotalBytesAvailable", [](auto& queue, auto&) { queue.TotalBytesAvailable(); }},
    {"RemoveEverything", [](auto& queue, auto&) { queue.RemoveEverything(); }},
    {"Lock, and again",
     [](auto& queue, auto&) { queue.Lock(), queue.RecycleBuffers(), queue.Unlock(); }},
    {"copy", [](auto& queue, auto&) { CByteQueue copy(queue); }},
    {"assign from", [](auto& queue, auto& other) { other = queue; }},
    {"assign to", [](auto& queue, auto& other) { queue = other; }},
};
constexpr Operation<CStack> ofStacks[] = {
    {"Push", [](auto& stack, auto&) { stack.Push(nullptr); }},
    {"Pop", [](auto& stack, auto&) { stack.Pop(); }},
    {"ClearStack", [](auto& stack, auto&) { stack.ClearStack(); }},
    {"NumNodes", [](auto& stack, auto&) { stack.NumNodes(); }},
};

TEST(LockedContainer, WaitForTheLockInEachOperation) {
    ExpectToWait(8, ofLists);
    ExpectToWait(16, ofQueues);
    ExpectToWait(8, ofStacks);
}

} // namespace
