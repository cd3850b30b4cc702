#include "gallery/app/RecentFiles.h"

#include "gallery/text/Language.h"
#include "gallery/text/Text.h"

#include <algorithm>
#include <ctime>

namespace gallery {

namespace {

/// The library's list has no end of its own.
constexpr int longestList = 20;

/// The longest path, in UTF-8, that the library's list of folders holds whole.
constexpr std::size_t longestFolder = 263;

constexpr long long ticksPerSecond = 10'000'000;
constexpr long long secondsFrom1601To1970 = 11'644'473'600;

FILETIME TimeOfTicks(unsigned long long ticks) {
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

FILETIME TimeOfSeconds(long long seconds) {
    return TimeOfTicks(
        static_cast<unsigned long long>((seconds + secondsFrom1601To1970) * ticksPerSecond));
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

/// The library has no number of entries.
int Count(const CMRUList& files) {
    int count = 0;
    while (files.GetFileWithPath(static_cast<unsigned>(count)) != nullptr)
        ++count;
    return count;
}

/// The library saves the lengths that follow an entry whose file is gone under other numbers than
/// the paths, so such entries go first.
void DropMissing(CMRUList& files, unsigned codePage) {
    for (int i = Count(files) - 1; i >= 0; --i) {
        const auto index = static_cast<unsigned>(i);
        if (!Exists(Widen(files.GetFileWithPath(index), codePage)))
            files.RemoveFile(index, /*save=*/false);
    }
}

/// That of the system's code page keeps the name that it had when there was no other.
std::string NameOfList(unsigned codePage) {
    return codePage == GetACP() ? "Recent" : "Recent-" + std::to_string(codePage);
}

} // namespace

RecentFiles::List::List(const std::string& newLanguage, unsigned newCodePage)
    : language(newLanguage), codePage(newCodePage),
      files(std::make_unique<CMRUList>(NameOfList(newCodePage).data())) {}

void RecentFiles::Load(const std::string& registryKey) {
    for (const std::string& language : Languages()) {
        const unsigned codePage = CodePageOf(language);
        if (std::none_of(lists.begin(), lists.end(),
                         [=](const List& list) { return list.codePage == codePage; }))
            lists.emplace_back(language, codePage);
    }
    std::stable_partition(lists.begin(), lists.end(),
                          [](const List& list) { return list.codePage == GetACP(); });
    for (const List& list : lists) {
        const LanguageScope scope(list.language);
        list.files->Init(HKEY_CURRENT_USER, registryKey.c_str());
    }
}

void RecentFiles::Use(const std::wstring& path) {
    std::string narrow;
    const auto list = std::find_if(lists.begin(), lists.end(), [&](const List& one) {
        return Narrow(path, narrow, one.codePage);
    });
    if (list == lists.end())
        return;
    const LanguageScope scope(list->language);
    DropMissing(*list->files, list->codePage);
    for (int i = Count(*list->files); i >= longestList; --i)
        list->files->RemoveFile(static_cast<unsigned>(i - 1), /*save=*/false);
    list->files->AddFile(narrow.c_str(), LengthOf(path));
    UseFolder(path.substr(0, path.size() - NameOfFile(path).size()));
}

void RecentFiles::UseFolder(const std::wstring& path) {
    std::string folder;
    if (!Narrow(path, folder, CP_UTF8) || folder.size() > longestFolder)
        return;
    const _lastDirList* known = folders.ContainsDir(folder.data());
    // The one that was used last stands in front of others of the same second.
    if (known != nullptr)
        folderPaths.erase(std::find(folderPaths.begin(), folderPaths.end(), known->path));
    folderPaths.insert(folderPaths.begin(), known != nullptr ? known->path : folder);
    folders.UpdateOrAdd(folder.data(), _time64(nullptr), known != nullptr ? known->value + 1 : 1,
                        /*reposition=*/1);
}

void RecentFiles::Remove(const std::wstring& path) {
    for (const List& list : lists) {
        const LanguageScope scope(list.language);
        std::string narrow;
        const int index =
            Narrow(path, narrow, list.codePage) ? list.files->IndexOf(narrow.c_str()) : -1;
        if (index < 0)
            continue;
        list.files->RemoveFile(static_cast<unsigned>(index), /*save=*/false);
        DropMissing(*list.files, list.codePage);
        list.files->RemoveFile(static_cast<unsigned>(Count(*list.files)), /*save=*/true);
    }
}

void RecentFiles::Clear() {
    for (const List& list : lists) {
        const LanguageScope scope(list.language);
        list.files->ClearMRUList(/*save=*/true);
    }
    folders.DeleteAll();
    folderPaths.clear();
}

std::vector<RecentFiles::File> RecentFiles::Files() const {
    std::vector<File> result;
    for (const List& list : lists) {
        for (int i = 0; i < Count(*list.files); ++i) {
            const _MRUData file = list.files->GetMRUItem(static_cast<unsigned>(i));
            const std::wstring path = Widen(file.path, list.codePage);
            result.push_back({path, file.lastLength, TimeOfTicks(file.lastTime), Exists(path)});
        }
    }
    std::stable_sort(result.begin(), result.end(), [](const File& a, const File& b) {
        return CompareFileTime(&a.used, &b.used) > 0;
    });
    if (result.size() > longestList)
        result.resize(longestList);
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
        result.push_back({Widen(entry->path, CP_UTF8), TimeOfSeconds(entry->time), entry->value});
    return result;
}

} // namespace gallery
