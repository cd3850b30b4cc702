#include "utilities/system/info/CpuUsage.h"

#include "common/Handles.h"
#include "utilities/base/Layout.h"
#include "utilities/containers/MyArrayList.h"
#include "utilities/system/info/PerformanceData.h"
#include "utilities/system/info/VersionRecord.h"
#include "utilities/system/info/WindowsVersion.h"

#include <algorithm>
#include <climits>

namespace {

constexpr vtr::CounterName processorTime{238, 6};
constexpr vtr::CounterName totalProcessorTime{2, 240};
constexpr vtr::CounterName timeOfProcess{230, 6};
constexpr DWORD processIdentifier = 784;

constexpr char processorCounters[] = "SYSTEM\\CurrentControlSet\\Services\\PerfOS\\Performance";
constexpr char processCounters[] = "SYSTEM\\CurrentControlSet\\Services\\PerfProc\\Performance";

/// Found out once in the process.
vtr::SystemClass CurrentClass() {
    static const vtr::SystemClass current =
        vtr::ClassOfSystem(vtr::VersionRecord::ReadBasic().Get());
    return current;
}

bool WriteDisabled(const char* path, DWORD disabled) {
    HKEY opened = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, /*ulOptions=*/0, KEY_SET_VALUE, &opened) !=
        ERROR_SUCCESS)
        return false;
    const vtr::RegistryKey key(opened);
    return RegSetValueExA(key.Get(), "Disable Performance Counters", /*Reserved=*/0, REG_DWORD,
                          reinterpret_cast<const BYTE*>(&disabled),
                          sizeof disabled) == ERROR_SUCCESS;
}

/// A counter and the time of its reading; 0 is what was not found.
struct Sample {
    long long counter = 0;
    long long time = 0;
};

Sample SampleOfMachine(vtr::SystemClass system) {
    const bool hasInstances = system == vtr::SystemClass::nt5;
    const vtr::CounterName& name = hasInstances ? processorTime : totalProcessorTime;
    const vtr::PerformanceBlock block = vtr::QueryPerformanceData(name.object);
    Sample sample;
    block.Time(sample.time);
    hasInstances ? block.OfInstance(name, "_Total", sample.counter)
                 : block.Counter(name, sample.counter);
    return sample;
}

Sample SampleOfProcess(const char* name) {
    const vtr::PerformanceBlock block = vtr::QueryPerformanceData(timeOfProcess.object);
    Sample sample;
    block.Time(sample.time);
    block.OfInstance(timeOfProcess, name, sample.counter);
    return sample;
}

Sample SampleOfProcess(DWORD id) {
    const vtr::PerformanceBlock block = vtr::QueryPerformanceData(timeOfProcess.object);
    Sample sample;
    block.Time(sample.time);
    block.OfInstance(timeOfProcess, processIdentifier, id, sample.counter);
    return sample;
}

/// 0 if it has ended or cannot be asked.
DWORD IdOfRunning(HANDLE process) {
    const DWORD id = GetProcessId(process);
    DWORD exitCode = 0;
    return id != 0 && GetExitCodeProcess(process, &exitCode) && exitCode == STILL_ACTIVE ? id : 0;
}

/// Sums and differences of counters may be anything.
long long Sum(long long left, long long right) {
    return static_cast<long long>(static_cast<unsigned long long>(left) +
                                  static_cast<unsigned long long>(right));
}

double Difference(long long now, long long before) {
    long long exact = 0;
    return __builtin_sub_overflow(now, before, &exact)
               ? static_cast<double>(now) - static_cast<double>(before)
               : static_cast<double>(exact);
}

int Percent(double value) {
    return static_cast<int>(std::clamp<double>(value, 0, INT_MAX));
}

} // namespace

template <>
struct vtr::Internals<CCpuUsage> {
    static_assert(sizeof(CCpuUsage) == vtr::ByPointer(32, 24));
    VTR_FIELD_AT(CCpuUsage, firstCall, 8, 4);
    VTR_FIELD_AT(CCpuUsage, previousCounter, 16, 8);
    VTR_FIELD_AT(CCpuUsage, previousTime, 24, 16);

    /// The share of the time by which the counter has grown since the last sample; false if there
    /// is none. Remembers the sample.
    static bool TakeShare(CCpuUsage& usage, const Sample& sample, double& share) {
        const double time = Difference(sample.time, usage.previousTime);
        share = time > 0 ? Difference(sample.counter, usage.previousCounter) / time : 0;
        const bool hasShare = !usage.firstCall && time > 0;
        usage.firstCall = false;
        usage.previousCounter = sample.counter;
        usage.previousTime = sample.time;
        return hasShare;
    }

    static void SwitchOn(CCpuUsage& usage) {
        if (usage.firstCall)
            usage.EnablePerformaceCounters(1);
    }
};

using Internals = vtr::Internals<CCpuUsage>;

CCpuUsage::CCpuUsage() noexcept : firstCall(true), previousCounter(0), previousTime(0) {}

CCpuUsage::CCpuUsage(const CCpuUsage& other) noexcept = default;

CCpuUsage& CCpuUsage::operator=(const CCpuUsage& other) noexcept = default;

CCpuUsage::~CCpuUsage() = default;

int CCpuUsage::GetCpuUsage() noexcept {
    const vtr::SystemClass system = CurrentClass();
    if (system != vtr::SystemClass::nt4 && system != vtr::SystemClass::nt5)
        return -1;
    Internals::SwitchOn(*this);
    double idle = 0;
    // The counters of the whole machine count the time in which it has nothing to do.
    return Internals::TakeShare(*this, SampleOfMachine(system), idle)
               ? Percent((1 - idle) * 100 + 0.5)
               : 0;
}

int CCpuUsage::GetCpuUsage(const char* processName) noexcept {
    Internals::SwitchOn(*this);
    double busy = 0;
    return Internals::TakeShare(*this, SampleOfProcess(processName), busy) ? Percent(busy * 100)
                                                                           : 0;
}

int CCpuUsage::GetCpuUsage(unsigned long processId, CMyArrayList* children) noexcept {
    Internals::SwitchOn(*this);
    Sample sample = SampleOfProcess(processId);
    const int count = children != nullptr ? children->NumNodes() : 0;
    for (int i = 0; i < count; ++i) {
        const void* child = children->FastIndex(i);
        const DWORD id = child != nullptr ? IdOfRunning(*static_cast<const HANDLE*>(child)) : 0;
        if (id != 0)
            sample.counter = Sum(sample.counter, SampleOfProcess(id).counter);
    }
    double busy = 0;
    return Internals::TakeShare(*this, sample, busy) ? Percent(busy * 100) : 0;
}

int CCpuUsage::EnablePerformaceCounters(int enable) noexcept {
    if (CurrentClass() != vtr::SystemClass::nt5)
        return 1;
    const DWORD disabled = enable != 0 ? 0 : 1;
    return WriteDisabled(processorCounters, disabled) && WriteDisabled(processCounters, disabled)
               ? 1
               : 0;
}
