#ifndef VTRUTILS_GALLERY_PAGES_SYSTEM_LOADMETER_H
#define VTRUTILS_GALLERY_PAGES_SYSTEM_LOADMETER_H

#include "utilities/system/info/CpuUsage.h"

#include <optional>
#include <string>

namespace gallery {

/// Measures the processor load of the machine and of one process, where the system counts it. One
/// thread at a time.
class LoadMeter {
public:
    /// Finds out whether the system offers counters, and measures from now on.
    void Start();
    bool Offered() const { return offered; }

    /// The process is called as its program, with or without ".exe", in any case.
    void Watch(const std::wstring& name);

    /// In percent of all processors, since the last call; nothing at the first call and where there
    /// is nothing to measure.
    struct Load {
        std::optional<double> machine;
        std::optional<double> process;
        bool processRuns = false;
    };
    Load Take();

private:
    bool offered = false;
    CCpuUsage machine;
    bool machineBegun = false;
    std::wstring program; ///< without ".exe"
    CCpuUsage process;
    bool processBegun = false;
};

} // namespace gallery

#endif
