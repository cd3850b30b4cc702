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

using UnixName = char*(CDECL*)(const wchar_t*);

/// Null outside of Wine, whose `CreateSymbolicLinkW` makes nothing, and whose `DeleteFileW` deletes
/// what the link names.
UnixName UnixNames() {
    return reinterpret_cast<UnixName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
}

/// Runs a program outside of Wine on a name in the folder. It cannot be waited for, but what it
/// does to the folder can.
bool RunOn(const std::string& folder, const std::string& link, const std::string& command) {
    char* const path = UnixNames()(std::wstring(folder.begin(), folder.end()).c_str());
    std::string line = "Z:\\bin\\" + command + " \"" + std::string(path) + "/" + link + "\"";
    HeapFree(GetProcessHeap(), 0, path);
    const vtr::Owner<ChangeKind> change(FindFirstChangeNotificationA(
        folder.c_str(), /*bWatchSubtree=*/FALSE, FILE_NOTIFY_CHANGE_FILE_NAME));
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    return change &&
           CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &start, &process) &&
           WaitForSingleObject(change.Get(), 10'000) == WAIT_OBJECT_0;
}

bool IsFolder(const std::string& path) {
    const DWORD kind = GetFileAttributesA(path.c_str());
    return kind != INVALID_FILE_ATTRIBUTES && (kind & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace

SymbolicLink::SymbolicLink(std::string inFolder, std::string name, const std::string& target)
    : folder(std::move(inFolder)), link(std::move(name)) {
    const bool made = UnixNames() != nullptr
                          ? RunOn(folder, link, "ln -s \"" + target + "\"")
                          : CreateSymbolicLinkA(
                                (folder + link).c_str(), target.c_str(),
                                IsFolder(folder + target) ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0) != 0;
    if (!made)
        throw std::runtime_error("no link: " + link);
}

SymbolicLink::~SymbolicLink() {
    if (UnixNames() != nullptr)
        RunOn(folder, link, "rm -f");
    else if (IsFolder(folder + link))
        RemoveDirectoryA((folder + link).c_str());
    else
        DeleteFileA((folder + link).c_str());
}
