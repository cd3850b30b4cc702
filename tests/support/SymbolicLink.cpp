#include "tests/support/SymbolicLink.h"

#include "common/Owner.h"

#include <stdexcept>
#include <utility>
#include <windows.h>

namespace {

struct ChangeKind {
    using Type = HANDLE;
    static Type None() { return INVALID_HANDLE_VALUE; }
    static bool Close(Type handle) { return FindCloseChangeNotification(handle) != FALSE; }
};

/// Runs a program outside of Wine on a name in the folder, since Wine's `CreateSymbolicLinkW` makes
/// nothing and its `DeleteFileW` deletes what the link names. It cannot be waited for, but what it
/// does to the folder can.
void RunOn(const std::string& folder, const std::string& link, const std::string& command) {
    using UnixName = char*(CDECL*)(const wchar_t*);
    const auto unixName = reinterpret_cast<UnixName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
    if (unixName == nullptr)
        throw std::runtime_error("not under Wine");
    char* const path = unixName(std::wstring(folder.begin(), folder.end()).c_str());
    std::string line = "Z:\\bin\\" + command + " \"" + std::string(path) + "/" + link + "\"";
    HeapFree(GetProcessHeap(), 0, path);
    const vtr::Owner<ChangeKind> change(FindFirstChangeNotificationA(
        folder.c_str(), /*bWatchSubtree=*/FALSE, FILE_NOTIFY_CHANGE_FILE_NAME));
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process) ||
        WaitForSingleObject(change.Get(), 10'000) != WAIT_OBJECT_0)
        throw std::runtime_error("not done: " + line);
}

} // namespace

SymbolicLink::SymbolicLink(std::string inFolder, std::string name, const std::string& target)
    : folder(std::move(inFolder)), link(std::move(name)) {
    RunOn(folder, link, "ln -s \"" + target + "\"");
}

SymbolicLink::~SymbolicLink() {
    RunOn(folder, link, "rm -f");
}
