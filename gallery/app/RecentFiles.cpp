#include "gallery/app/RecentFiles.h"

#include "gallery/text/Text.h"
#include "vtrfutls/FileNames.h"

#include <algorithm>
#include <ctime>

namespace gallery {

namespace {

/// The library's list has no end of its own.
constexpr int longestList = 20;

char baseName[] = "Recent";

constexpr long long ticksPerSecond = 10'000'000;
constexpr long long secondsFrom1601To1970 = 11'644'473'600;

FILETIME TimeOfTicks(unsigned long long ticks) {
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

FILETIME TimeOfSeconds(long long seconds) {
    return TimeOfTicks(
        static_cast<unsigned long long>((seconds + secondsFrom1601To1970) * ticksPerSecond));
}

long long SecondsOfTicks(unsigned long long ticks) {
    return static_cast<long long>(ticks) / ticksPerSecond - secondsFrom1601To1970;
}

unsigned long LengthOf(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return 0;
    return data.nFileSizeHigh == 0 ? data.nFileSizeLow : MAXDWORD;
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string FolderOf(const char* path) {
    char folder[MAX_PATH] = "";
    ExtractDirectory(path, folder, sizeof folder);
    return folder;
}

} // namespace

RecentFiles::RecentFiles() : files(baseName) {}

void RecentFiles::Load(const std::string& registryKey) {
    files.Init(HKEY_CURRENT_USER, registryKey.c_str());
    // The oldest first, as if they were used again.
    for (int i = Count() - 1; i >= 0; --i) {
        const _MRUData file = files.GetMRUItem(static_cast<unsigned>(i));
        UseFolder(FolderOf(file.path), SecondsOfTicks(file.lastTime));
    }
}

void RecentFiles::Use(const std::wstring& path) {
    std::string narrow;
    if (!Narrow(path, narrow))
        return;
    DropMissing(/*kept=*/-1);
    for (int i = Count(); i >= longestList; --i)
        files.RemoveFile(static_cast<unsigned>(i - 1), /*save=*/false);
    files.AddFile(narrow.c_str(), LengthOf(path));
    UseFolder(FolderOf(narrow.c_str()), _time64(nullptr));
}

void RecentFiles::UseFolder(std::string folder, long long seconds) {
    const _lastDirList* known = folders.ContainsDir(folder.data());
    // The one that was used last stands in front of others of the same second.
    if (known != nullptr)
        folderPaths.erase(std::find(folderPaths.begin(), folderPaths.end(), known->path));
    folderPaths.insert(folderPaths.begin(), known != nullptr ? known->path : folder);
    folders.UpdateOrAdd(folder.data(), seconds, known != nullptr ? known->value + 1 : 1,
                        /*reposition=*/1);
}

void RecentFiles::Remove(int file) {
    files.RemoveFile(static_cast<unsigned>(DropMissing(file)), /*save=*/true);
}

void RecentFiles::Clear() {
    files.ClearMRUList(/*save=*/true);
    folders.DeleteAll();
    folderPaths.clear();
}

std::vector<RecentFiles::File> RecentFiles::Files() const {
    std::vector<File> result;
    for (int i = 0; i < Count(); ++i) {
        const _MRUData file = files.GetMRUItem(static_cast<unsigned>(i));
        const std::wstring path = Widen(file.path);
        result.push_back({path, file.lastLength, TimeOfTicks(file.lastTime), Exists(path)});
    }
    return result;
}

std::vector<RecentFiles::Folder> RecentFiles::Folders() const {
    std::vector<const _lastDirList*> entries;
    for (std::string& path : folderPaths) {
        if (const _lastDirList* entry = folders.ContainsDir(path.data()))
            entries.push_back(entry);
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto* a, const auto* b) { return a->time > b->time; });
    std::vector<Folder> result;
    for (const _lastDirList* entry : entries)
        result.push_back({Widen(entry->path), TimeOfSeconds(entry->time), entry->value});
    return result;
}

/// The library saves the lengths that follow an entry whose file is gone under other numbers than
/// the paths, so such entries go first. Returns where the entry with index `kept` is then.
int RecentFiles::DropMissing(int kept) {
    for (int i = Count() - 1; i >= 0; --i) {
        const auto index = static_cast<unsigned>(i);
        if (i == kept || Exists(Widen(files.GetFileWithPath(index))))
            continue;
        files.RemoveFile(index, /*save=*/false);
        if (i < kept)
            --kept;
    }
    return kept;
}

/// The library has no number of entries.
int RecentFiles::Count() const {
    int count = 0;
    while (files.GetFileWithPath(static_cast<unsigned>(count)) != nullptr)
        ++count;
    return count;
}

} // namespace gallery
