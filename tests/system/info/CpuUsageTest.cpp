#include "utilities/system/info/CpuUsage.h"

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
    FakeCounters() { current = this; }

    /// All objects at once, with this value for all that is asked for but the process identifiers.
    void Set(long long value, long long time) {
        const InstanceData own{L"test",
                               {static_cast<long long>(GetCurrentProcessId()), 1000 * value}};
        blocks = {
            {"238", BlockBytes(time, {{238, {{6, 8}}, {{L"0", {-1}}, {L"_Total", {value}}}}})},
            {"2", BlockBytes(time, {{2, {{240, 8}}, {{L"", {value}}}}})},
            {"230", BlockBytes(time, {{230,
                                       {{784, 4}, {6, 8}},
                                       {{L"App", {8, value}}, {L"app", {12, value}}, own}}})}};
    }

    std::map<std::string, std::string> blocks;
    DWORD smallest = 0;         ///< smaller buffers are answered with "more data"
    std::vector<DWORD> sizes{}; ///< of the buffers since it was cleared

private:
    static LSTATUS WINAPI Query(HKEY key, const char* name, DWORD*, DWORD*, BYTE* out,
                                DWORD* size) {
        EXPECT_EQ(key, HKEY_PERFORMANCE_DATA);
        current->sizes.push_back(*size);
        if (*size < current->smallest) {
            *size = 0; // means nothing
            return ERROR_MORE_DATA;
        }
        const std::string& block = current->blocks[name];
        *size = static_cast<DWORD>(block.copy(reinterpret_cast<char*>(out), *size));
        return block.empty() ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS;
    }

    inline static FakeCounters* current;
    ImportPatch patch{GetModuleHandleA("vtrutils.dll"), "ADVAPI32.dll", "RegQueryValueExA",
                      reinterpret_cast<void*>(&Query)};
};

TEST(CpuUsage, IsTheShareOfTheTimeThatHasPassed) {
    // Beside the value of the machine, which counts idle time, that of a process.
    constexpr long long start = 1LL << 60;
    static constexpr struct {
        long long value, time;
        int machine, process;
    } rows[] = {
        {start, 1000, 0, 0},          {start + 333, 2000, 67, 33},   {start + 1332, 3000, 0, 99},
        {start + 1332, 4000, 100, 0}, {start + 1333, 4000, 0, 0},    {start + 1999, 3000, 0, 0},
        {start + 3999, 4000, 0, 200}, {LLONG_MAX, 4001, 0, INT_MAX}, {LLONG_MIN, 4002, INT_MAX, 0},
    };
    FakeCounters counters;
    CCpuUsage machine, byName, byId;
    for (const auto& row : rows) {
        counters.Set(row.value, row.time);
        EXPECT_EQ(machine.GetCpuUsage(), row.machine) << row.value;
        EXPECT_EQ(byName.GetCpuUsage("APP"), row.process) << row.value;
        EXPECT_EQ(byId.GetCpuUsage(12, nullptr), row.process) << row.value;
    }
    CCpuUsage copied;
    counters.Set(500, 1000);
    machine.GetCpuUsage();
    copied = machine;
    counters.Set(750, 2000);
    EXPECT_EQ(copied.GetCpuUsage(), 75);
    counters.blocks.clear();
    EXPECT_EQ(machine.GetCpuUsage(), 0) << "the query failed";
}

TEST(CpuUsage, CountsTheChildrenThatStillRun) {
    const vtr::KernelHandle process(
        reinterpret_cast<HANDLE>(_spawnlp(_P_NOWAIT, "cmd.exe", "cmd.exe", "/c", "exit", nullptr)));
    ASSERT_EQ(WaitForSingleObject(process.Get(), 20'000), WAIT_OBJECT_0);
    HANDLE ended = process.Get(), running = GetCurrentProcess(), none = nullptr;
    CMyArrayList children;
    for (HANDLE* child : {&ended, &running, &none, &running, static_cast<HANDLE*>(nullptr)})
        children.AppendToTail(child, 0);
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
    EXPECT_LT(counters.sizes.back(), 65U << 20) << "it has given up, and starts anew";
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
    fault.FailAt(0);
}

TEST(CpuUsage, HasAnotherCounterOnNt4) {
    if (GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") == nullptr)
        GTEST_SKIP() << "Windows does not pretend to be another version";
    if (std::getenv("VTRUTILS_OWN_PROCESS") == nullptr) {
        const TestKey key("Software\\Wine\\AppDefaults\\info_test.exe");
        key.SetText("Version", "nt40");
        InOwnProcess();
        return;
    }
    FakeCounters counters;
    CCpuUsage usage;
    for (const long long time : {1000, 2000}) {
        counters.Set(time / 4, time);
        counters.blocks.erase("238");
        EXPECT_EQ(usage.GetCpuUsage(), time == 1000 ? 0 : 75);
    }
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
    const TestKey first(services + "PerfOS\\Performance", HKEY_LOCAL_MACHINE);
    EXPECT_EQ(usage.EnablePerformaceCounters(0), 0);
    EXPECT_EQ(isDisabled("PerfProc"), 99U) << "no key is made";
    const TestKey second(services + "PerfProc\\Performance", HKEY_LOCAL_MACHINE);
    for (const DWORD expected : {0U, 1U}) { // the first call enables, and no other
        EXPECT_EQ(usage.EnablePerformaceCounters(0), 1);
        usage.GetCpuUsage();
        EXPECT_TRUE(isDisabled("PerfOS") == expected && isDisabled("PerfProc") == expected);
    }
}

} // namespace
