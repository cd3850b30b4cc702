#include "gallery/pages/system/LoadMeter.h"

#include "common/Handles.h"
#include "gallery/pages/system/SystemFacts.h"
#include "gallery/text/Text.h"

#include <algorithm>
#include <cstring>
#include <tlhelp32.h>
#include <winperf.h>

namespace gallery {

namespace {

/// Whether the performance data have this object. A system without it answers with a header alone,
/// from which the load would count as 100 %.
bool HasObject(const wchar_t* number) {
    BYTE block[4096];
    DWORD length = sizeof block;
    const LSTATUS status = RegQueryValueExW(HKEY_PERFORMANCE_DATA, number, /*lpReserved=*/nullptr,
                                            /*lpType=*/nullptr, block, &length);
    if (status == ERROR_MORE_DATA)
        return true;
    PERF_DATA_BLOCK header;
    if (status != ERROR_SUCCESS || length < sizeof header)
        return false;
    std::memcpy(&header, block, sizeof header);
    return header.NumObjectTypes > 0;
}

std::wstring WithoutExe(std::wstring name) {
    constexpr wchar_t extension[] = L".exe";
    constexpr std::size_t length = 4;
    if (name.size() > length && lstrcmpiW(name.c_str() + name.size() - length, extension) == 0)
        name.resize(name.size() - length);
    return name;
}

bool Runs(const std::wstring& program) {
    const vtr::FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.Get(), &entry); more != FALSE;
         more = Process32NextW(snapshot.Get(), &entry)) {
        if (lstrcmpiW(WithoutExe(entry.szExeFile).c_str(), program.c_str()) == 0)
            return true;
    }
    return false;
}

} // namespace

void LoadMeter::Start() {
    offered = HasObject(L"238") && HasObject(L"230");
    machineBegun = false;
    processBegun = false;
}

void LoadMeter::Watch(const std::wstring& name) {
    program = WithoutExe(name);
    processBegun = false;
}

LoadMeter::Load LoadMeter::Take() {
    Load load;
    std::string narrow;
    load.processRuns = Narrow(program, narrow, CP_ACP) && Runs(program);
    if (!offered)
        return load;
    // What the first call after a pause gives is no load of the last second.
    const int ofMachine = machine.GetCpuUsage();
    if (machineBegun && ofMachine >= 0)
        load.machine = std::min(ofMachine, 100);
    machineBegun = true;
    if (!load.processRuns) {
        processBegun = false;
        return load;
    }
    const int ofProcess = process.GetCpuUsage(narrow.c_str());
    if (processBegun)
        load.process = std::min(static_cast<double>(ofProcess) / std::max(Processors(), 1), 100.0);
    processBegun = true;
    return load;
}

} // namespace gallery
