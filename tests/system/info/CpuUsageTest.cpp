#include "utilities/system/info/CpuUsage.h"

#include "common/Owner.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestKey.h"
#include "tests/support/Watchdog.h"
#include "tests/system/info/BlockBuilder.h"
#include "utilities/containers/MyArrayList.h"

#include <gtest/gtest.h>
#include <map>

namespace {

/// Stands for the registry's performance data while it lives.
class FakeCounters {
public:
    FakeCounters()
        : patch(GetModuleHandleA("vtrutils.dll"), "ADVAPI32.dll", "RegQueryValueExA",
                reinterpret_cast<void*>(&FakeCounters::Query)) {
        current = this;
    }

    /// All objects at once, with this value for all that is asked for but the process identifiers.
    void Set(long long value, long long time) {
        const std::vector<CounterShape> process{{784, 4}, {6, 8}};
        const DWORD own = GetCurrentProcessId();
        Answer("238", time, {238, {{6, 8}}, {{L"0", {-1}}, {L"_Total", {value}}}});
        Answer("2", time, {2, {{240, 8}}, {{L"", {value}}}});
        Answer("230", time,
               {230,
                process,
                {{L"App", {8, value}}, {L"app", {12, value}}, {L"test", {own, 1000 * value}}}});
    }

    std::map<std::string, std::string> blocks;
    DWORD smallest = 0;         ///< smaller buffers are answered with "more data"
    std::vector<DWORD> sizes{}; ///< of the buffers since it was cleared

private:
    void Answer(const char* name, long long time, const ObjectShape& object) {
        blocks[name] = BlockBytes(time, {object});
    }

    static LSTATUS WINAPI Query(HKEY key, const char* name, DWORD*, DWORD*, BYTE* out,
                                DWORD* size) {
        EXPECT_EQ(key, HKEY_PERFORMANCE_DATA);
        const auto found = current->blocks.find(name);
        current->sizes.push_back(*size);
        if (*size < current->smallest) {
            *size = 0; // means nothing
            return ERROR_MORE_DATA;
        }
        if (found == current->blocks.end())
            return ERROR_FILE_NOT_FOUND;
        *size = static_cast<DWORD>(found->second.copy(reinterpret_cast<char*>(out), *size));
        return ERROR_SUCCESS;
    }

    static FakeCounters* current;
    ImportPatch patch;
};

FakeCounters* FakeCounters::current = nullptr;

TEST(CpuUsage, IsTheShareOfTheTimeThatHasPassed) {
    // Beside the value of the machine, which counts idle time, that of a process.
    static constexpr struct {
        long long value, time;
        int machine, process;
    } rows[] = {
        {1LL << 60, 1000, 0, 0},
        {(1LL << 60) + 333, 2000, 67, 33},
        {(1LL << 60) + 1332, 3000, 0, 99},
        {(1LL << 60) + 1332, 4000, 100, 0},
        {(1LL << 60) + 1333, 4000, 0, 0},
        {(1LL << 60) + 1999, 3000, 0, 0},
        {(1LL << 60) + 3999, 4000, 0, 200},
        {4000, 1LL << 62, 125, 0},
        {LLONG_MAX, (1LL << 62) + 1, 0, INT_MAX},
        {LLONG_MIN, (1LL << 62) + 2, INT_MAX, 0},
    };
    FakeCounters counters;
    CCpuUsage machine, byName, byId;
    for (const auto& row : rows) {
        counters.Set(row.value, row.time);
        EXPECT_EQ(machine.GetCpuUsage(), row.machine) << row.value;
        EXPECT_EQ(byName.GetCpuUsage("APP"), row.process) << row.value;
        EXPECT_EQ(byId.GetCpuUsage(12, nullptr), row.process) << row.value;
    }
    counters.Set(500, 1000);
    machine.GetCpuUsage();
    CCpuUsage copy(machine), assigned;
    assigned = machine;
    counters.Set(750, 2000);
    EXPECT_EQ(copy.GetCpuUsage(), 75);
    EXPECT_EQ(assigned.GetCpuUsage(), 75);
    EXPECT_EQ(byName.GetCpuUsage(nullptr), 0);
    counters.blocks.clear();
    EXPECT_EQ(machine.GetCpuUsage(), 0) << "the query failed";
}

TEST(CpuUsage, CountsTheChildrenThatStillRun) {
    const vtr::KernelHandle process(
        reinterpret_cast<HANDLE>(_spawnlp(_P_NOWAIT, "cmd.exe", "cmd.exe", "/c", "exit", nullptr)));
    ASSERT_EQ(WaitForSingleObject(process.Get(), 20'000), WAIT_OBJECT_0);
    HANDLE ended = process.Get(), running = GetCurrentProcess(), none = nullptr;
    CMyArrayList children;
    for (HANDLE* child : {&ended, &running, &none, &running})
        children.AppendToTail(child, 0);
    children.AppendToTail(nullptr, 0);
    FakeCounters counters;
    CCpuUsage usage;
    counters.Set(0, 0);
    EXPECT_EQ(usage.GetCpuUsage(8, &children), 0);
    counters.Set(1, 1000);
    counters.sizes.clear();
    EXPECT_EQ(usage.GetCpuUsage(8, &children), 200) << "itself and twice the process that runs";
    EXPECT_EQ(counters.sizes.size(), 3U) << "a query for each";
}

TEST(CpuUsage, AsksWithAGreaterBufferUntilTheAnswerFits) {
    const Watchdog watchdog("a query that is never satisfied");
    FakeCounters counters;
    CCpuUsage usage;
    counters.smallest = MAXDWORD;
    usage.GetCpuUsage();
    // It has given up, and starts anew.
    EXPECT_LT(counters.sizes.back(), 65U << 20);
    counters.sizes.clear();
    counters.smallest = 122'881;
    counters.Set(1, 2);
    usage.GetCpuUsage();
    usage.GetCpuUsage();
    EXPECT_EQ(counters.sizes, (std::vector<DWORD>{102'400, 112'640, 122'880, 133'120, 133'120}));
    AllocationFault fault("vtrutils.dll");
    counters.smallest = 150'000;
    counters.Set(1, 3);
    fault.FailFrom(1);
    EXPECT_EQ(usage.GetCpuUsage(), 0);
    EXPECT_EQ(usage.GetCpuUsage(), 0);
    fault.FailAt(0);
}

/// In processes that run as if on older systems.
TEST(CpuUsage, DependsOnTheClassOfTheSystem) {
    if (GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") == nullptr)
        GTEST_SKIP() << "Windows does not pretend to be another version";
    const auto isRun = [](const char* version) {
        if (std::getenv("VTRUTILS_OWN_PROCESS") != nullptr)
            return InOwnProcess(version);
        const TestKey key("Software\\Wine\\AppDefaults\\info_test.exe");
        key.SetText("Version", version);
        return InOwnProcess(version);
    };
    const bool is98 = isRun("win98");
    if (!is98 && !isRun("nt40"))
        return;
    FakeCounters counters;
    CCpuUsage usage;
    counters.Set(0, 1000);
    counters.blocks.erase("238");
    EXPECT_EQ(usage.GetCpuUsage(), is98 ? -1 : 0);
    counters.Set(250, 2000);
    counters.blocks.erase("238");
    EXPECT_EQ(usage.GetCpuUsage(), is98 ? -1 : 75);
    EXPECT_EQ(usage.EnablePerformaceCounters(1), 1);
}

TEST(CpuUsage, SwitchesTheCountersInKeysThatAreThere) {
    const std::string services = "SYSTEM\\CurrentControlSet\\Services\\";
    const auto isDisabled = [&](const char* service) {
        DWORD value = 99;
        DWORD size = sizeof value;
        RegGetValueA(HKEY_LOCAL_MACHINE, (services + service + "\\Performance").c_str(),
                     "Disable Performance Counters", RRF_RT_REG_DWORD, nullptr, &value, &size);
        return value;
    };
    CCpuUsage usage;
    EXPECT_EQ(usage.EnablePerformaceCounters(1), 0);
    EXPECT_EQ(isDisabled("PerfOS"), 99U) << "no key is made";
    const TestKey first(services + "PerfOS\\Performance", HKEY_LOCAL_MACHINE);
    EXPECT_EQ(usage.EnablePerformaceCounters(0), 0);
    EXPECT_EQ(isDisabled("PerfProc"), 99U);
    const TestKey second(services + "PerfProc\\Performance", HKEY_LOCAL_MACHINE);
    for (const DWORD expected : {0U, 1U}) { // the first call enables, and no other
        EXPECT_EQ(usage.EnablePerformaceCounters(0), 1);
        usage.GetCpuUsage();
        EXPECT_EQ(isDisabled("PerfOS"), expected);
        EXPECT_EQ(isDisabled("PerfProc"), expected);
    }
}

} // namespace
