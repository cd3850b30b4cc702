#ifndef VTRUTILS_SYSTEM_INFO_CPUUSAGE_H
#define VTRUTILS_SYSTEM_INFO_CPUUSAGE_H

#include "utilities/Export.h"

class CMyArrayList;

/// Processor load in percent since the last call, from the performance data of Windows, which are
/// in the registry. One object measures one thing: the variants of `GetCpuUsage` share what it
/// remembers. The performance data are read into one buffer of the process, so that only one object
/// may be used at a time.
///
/// The first call gives 0; it also switches the counters on as `EnablePerformaceCounters(1)` does,
/// whether that succeeds or not. A counter that is not found counts as 0, and so does all that a
/// query would have told if it fails. 0 too if no time has passed since the last call.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CCpuUsage {
public:
    CCpuUsage() noexcept;
    /// The copy goes on from the last query of the other.
    CCpuUsage(const CCpuUsage& other) noexcept;
    CCpuUsage& operator=(const CCpuUsage& other) noexcept;
    virtual ~CCpuUsage();

    /// Of the whole machine, rounded. -1, on every call, on systems other than the NT family from
    /// version 4 on.
    int GetCpuUsage() noexcept;

    /// Of the first process that the performance data list under this name, which is that of its
    /// program without ".exe", in any case and in the ANSI page. Not rounded, and 100 for each
    /// processor that it keeps busy. 0 for null.
    int GetCpuUsage(const char* processName) noexcept;

    /// Of one process and those of its children that still run, not rounded. Each item of
    /// `children` points to a record that begins with the handle of a process, such as a
    /// PROCESS_INFORMATION; null items are passed over. Records and handles stay the caller's, and
    /// handles must allow to ask for the exit code. Null is no children.
    int GetCpuUsage(unsigned long processId, CMyArrayList* children) noexcept;

    /// Switches the performance counters of processors and processes on or, with 0, off, for the
    /// whole machine; few users have the right to. Changes values of existing keys and makes no
    /// keys. 1 if both were written; 0 if one cannot be opened or written, and then the second may
    /// be as it was. 1, with nothing written, before NT 5.
    int EnablePerformaceCounters(int enable) noexcept;

private:
    friend struct vtr::Internals<CCpuUsage>;

    bool firstCall;
    long long previousCounter;
    long long previousTime; ///< in units of 100 ns
};

#endif
