#include "utilities/system/info/PerformanceBlock.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/Watchdog.h"
#include "tests/system/info/BlockBuilder.h"

#include <gtest/gtest.h>

namespace {

constexpr DWORD process = 230, time = 6, id = 784;

const ObjectShape processes{process,
                            {{id, 4}, {time, 8}},
                            {{L"Idle", {0, 1}},
                             {L"player", {11, 2LL << 40}},
                             {L"PLAYER", {12, 3}},
                             {L"svchost#1", {-1, 4}},
                             {L"_Total", {0, 5}}}};
const ObjectShape machine{2, {{10, 8}, {240, 8}, {242, 4}}, {{L"", {8, -9, 0x90000000}}}};
const ObjectShape bare{7, {{time, 8}}, {}};

/// What is found, in order; -7 where nothing is.
std::vector<long long> Look(const char* bytes, std::size_t length) {
    const vtr::PerformanceBlock block(bytes, length);
    std::vector<long long> found(1, -7);
    block.Time(found[0]);
    const auto add = [&found](auto find) {
        found.push_back(-7);
        find(found.back());
    };
    for (const char* name : {"idle", "Player", "SvcHost#1", "_TOTAL", "player.exe", ""})
        add([&](auto& value) { block.OfInstance({process, time}, name, value); });
    for (const long long wanted : {11LL, 12LL, 0xFFFFFFFFLL, 13LL})
        add([&](auto& value) { block.OfInstance({process, time}, id, wanted, value); });
    for (const DWORD title : {10U, 240U, 242U, 6U})
        add([&](auto& value) { block.Counter({2, title}, value); });
    add([&](auto& value) { block.Counter({process, time}, value); });
    add([&](auto& value) { block.OfInstance({2, 240}, "", value); });
    add([&](auto& value) { block.OfInstance({bare.title, time}, "x", value); });
    return found;
}

TEST(PerformanceBlock, GivesWhatIsThereWhereverTheBlockEnds) {
    const std::vector<long long> expected = {
        77, 1, 2LL << 40, 4, 5, -7, -7, 2LL << 40, 3, 4, -7, 8, -9, 0x90000000, -7, -7, -7, -7};
    std::string whole = BlockBytes(77, {bare, processes, machine});
    EXPECT_EQ(Look(whole.data(), whole.size()), expected);
    EXPECT_EQ(Look(nullptr, 0), std::vector<long long>(expected.size(), -7));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        GuardedBytes cut(std::string_view(whole).substr(0, length), /*terminated=*/false);
        const std::vector<long long> found = Look(cut.Data(), length);
        for (std::size_t i = 0; i < found.size(); ++i)
            ASSERT_TRUE(found[i] == expected[i] || found[i] == -7) << length << ", " << i;
        ASSERT_EQ(found[13], -7) << "the last counter, in " << length << " bytes";
    }
    const DWORD end = sizeof(PERF_DATA_BLOCK);
    std::memcpy(&whole[offsetof(PERF_DATA_BLOCK, TotalByteLength)], &end, sizeof end);
    EXPECT_EQ(Look(whole.data(), whole.size())[1], -7) << "it says itself that it ends before";
}

constexpr std::size_t object = sizeof(PERF_DATA_BLOCK);
constexpr std::size_t counter = object + sizeof(PERF_OBJECT_TYPE);
constexpr std::size_t timeCounter = counter + sizeof(PERF_COUNTER_DEFINITION);
constexpr std::size_t idle = timeCounter + sizeof(PERF_COUNTER_DEFINITION);
constexpr std::size_t idleValues = idle + sizeof(PERF_INSTANCE_DEFINITION) + sizeof L"Idle";
constexpr std::size_t player = idleValues + sizeof(PERF_COUNTER_BLOCK) + 12;

TEST(PerformanceBlock, FindsNothingWhereLengthsAndOffsetsLeadAstray) {
    const Watchdog watchdog("a block that leads in circles");
    static constexpr struct {
        const char* name;
        std::size_t at;
        DWORD value;
    } rows[] = {
        {"objects begin outside", offsetof(PERF_DATA_BLOCK, HeaderLength), 0xFFFFFFFF},
        {"an object leads to itself", object, 0},
        {"definitions outside", object + offsetof(PERF_OBJECT_TYPE, DefinitionLength), 1 << 20},
        {"a counter leads to itself", counter, 0},
        {"a value outside", timeCounter + offsetof(PERF_COUNTER_DEFINITION, CounterOffset), 9},
        {"an odd size", timeCounter + offsetof(PERF_COUNTER_DEFINITION, CounterSize), 3},
        {"an instance leads to itself", idle, 0},
        {"a name outside", player + offsetof(PERF_INSTANCE_DEFINITION, NameOffset), 0x10000},
        {"an endless name", player + offsetof(PERF_INSTANCE_DEFINITION, NameLength), 0xFFFFFFFF},
    };
    ObjectShape one = processes;
    one.instances.resize(2);
    const std::string whole = BlockBytes(1, {one});
    ASSERT_EQ(Look(whole.data(), whole.size())[2], 2LL << 40);
    for (const auto& row : rows) {
        GuardedBytes block(whole, /*terminated=*/false);
        std::memcpy(block.Data() + row.at, &row.value, sizeof row.value);
        EXPECT_EQ(Look(block.Data(), whole.size())[2], -7) << row.name;
    }
    // And anything, anywhere: only to end.
    const std::string all = BlockBytes(1, {one, machine});
    for (std::size_t at = 0; at + sizeof(DWORD) <= all.size(); at += 2) {
        GuardedBytes block(all, /*terminated=*/false);
        for (const DWORD value : {0u, 1u, 4u, static_cast<unsigned>(all.size() - at), 0x7FFFFFFFu,
                                  0x80000000u, 0xFFFFFFFFu}) {
            std::memcpy(block.Data() + at, &value, sizeof value);
            Look(block.Data(), all.size());
        }
    }
}

} // namespace
