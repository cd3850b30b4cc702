#include "utilities/containers/MRUList.h"

#include "common/WidePath.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/Layout.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/PathText.h"
#include "utilities/base/PtrArray.h"
#include "utilities/system/files/FileTimes.h"
#include "utilities/system/files/RegistryStrings.h"
#include "vtrfutls/FileNames.h"
#include "vtrfutls/Log.h"

#include <cstdio>
#include <new>
#include <shlwapi.h>

template <>
struct vtr::Internals<CMRUList> {
    static_assert(sizeof(CMRUList) == vtr::ByPointer(424, 408));
    VTR_FIELD_AT(CMRUList, entries, 0);
    VTR_FIELD_AT(CMRUList, root, 16, 12);
    VTR_FIELD_AT(CMRUList, subKey, 24, 16);
    VTR_FIELD_AT(CMRUList, pathFormat, 32, 20);
    VTR_FIELD_AT(CMRUList, lengthFormat, 160, 148);
    VTR_FIELD_AT(CMRUList, timeFormat, 288, 276);
    VTR_FIELD_AT(CMRUList, initialized, 416, 404);

    static void Load(CMRUList& list, HKEY pathRoot, const char* pathSubkey);
    static void Save(const CMRUList& list);
};

using Internals = vtr::Internals<CMRUList>;
using Entries = vtr::Pointers<_MRUData>;

namespace {

constexpr unsigned longestValue = 512;
constexpr unsigned longestNumber = 64;
constexpr unsigned blanksBehindList = 5;

void DeleteEntry(_MRUData* entry) {
    delete entry;
}

/// Cuts the base name, never the number.
template <std::size_t size>
void MakeFormat(char (&format)[size], const char* baseName, const char* suffix) {
    const int room = static_cast<int>(size - 1 - std::strlen(suffix));
    std::snprintf(format, size, "%.*s%s", room, baseName, suffix);
}

/// The format with the number in place of the "%u" at its end; a base name may hold any characters.
class ValueName {
public:
    ValueName(const char* format, unsigned number) {
        const int prefix = static_cast<int>(std::strlen(format)) - 2;
        std::snprintf(text, sizeof text, "%.*s%u", prefix, format, number);
    }
    operator const char*() const { return text; }

private:
    char text[160];
};

unsigned long long Ticks(const FILETIME& time) {
    return static_cast<unsigned long long>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

/// The path of a remembered file, as the wide calls of Windows want it.
class FoundPath {
public:
    explicit FoundPath(const char* path) : wide(path, vtr::CurrentCodePage()) {}

    bool Exists() const { return PathFileExistsW(wide.Get()) != FALSE; }

    /// 0 for what cannot be opened.
    unsigned long long LastAccess() const {
        FILETIME lastAccess;
        FILETIME lastWrite;
        return vtr::ReadFileTimes(wide.Get(), lastAccess, lastWrite) ? Ticks(lastAccess) : 0;
    }

private:
    vtr::WidePath wide;
};

/// Null for a path that is too long or names nothing, and when memory runs out.
_MRUData* MakeEntry(const char* path) {
    const std::size_t length = strnlen(path, MAX_PATH);
    if (length == 0 || length == MAX_PATH || !FoundPath(path).Exists())
        return nullptr;
    auto* entry = new (std::nothrow) _MRUData{};
    if (entry == nullptr)
        return nullptr;
    std::memcpy(entry->path, path, length + 1);
    entry->exists = DoesFileExist(path) ? 1 : 0;
    return entry;
}

} // namespace

CMRUList::CMRUList(char* baseName) noexcept : root(nullptr), subKey(nullptr), initialized(false) {
    if (baseName == nullptr)
        baseName = const_cast<char*>("");
    MakeFormat(pathFormat, baseName, ".%u");
    MakeFormat(lengthFormat, baseName, "-last-length.%u");
    MakeFormat(timeFormat, baseName, "-last-time.%u");
}

CMRUList::~CMRUList() {
    Entries(entries).Clear(&DeleteEntry);
    std::free(subKey);
}

void CMRUList::Init(HKEY rootKey, const char* subkey) noexcept {
    Log("CMRUList::Init - enter");
    vtr::AssignText(&subKey, subkey);
    const bool copied = subkey != nullptr && (subKey != nullptr || *subkey == '\0');
    root = copied ? rootKey : nullptr;
    ClearMRUList(/*save=*/false);
    Internals::Load(*this, rootKey, subkey);
    initialized = true;
    Log("CMRUList::Init - exit");
}

void CMRUList::LoadFrom(HKEY rootKey, const char* subkey) noexcept {
    Internals::Load(*this, rootKey, subkey);
    Internals::Save(*this);
}

void Internals::Load(CMRUList& list, HKEY pathRoot, const char* pathSubkey) {
    vtr::RegistryStrings paths;
    if (!paths.OpenForReading(pathRoot, pathSubkey))
        return;
    vtr::RegistryStrings own;
    own.OpenForReading(list.root, list.subKey != nullptr ? list.subKey : "");
    char path[longestValue];
    for (unsigned k = 1;
         paths.Read(ValueName(list.pathFormat, k), path, sizeof path) && *path != '\0'; ++k) {
        _MRUData* entry = MakeEntry(path);
        if (entry == nullptr)
            continue;
        char number[longestNumber];
        own.Read(ValueName(list.lengthFormat, k), number, sizeof number);
        entry->lastLength = static_cast<unsigned>(std::strtoll(number, nullptr, 10));
        own.Read(ValueName(list.timeFormat, k), number, sizeof number);
        if (*number != '\0')
            entry->lastTime = std::strtoull(number, nullptr, 10);
        else if (entry->exists)
            entry->lastTime = FoundPath(path).LastAccess();
        if (!Entries(list.entries).Append(entry))
            delete entry;
    }
}

void CMRUList::AddFile(const char* path, unsigned long length) noexcept {
    _MRUData* added = path != nullptr ? MakeEntry(path) : nullptr;
    if (added == nullptr)
        return;
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    added->lastTime = Ticks(now);
    added->lastLength = length;
    Entries files(entries);
    if (!files.Insert(0, added)) {
        delete added;
        return;
    }
    files.RemoveIf(
        [=](const _MRUData* entry) {
            return entry != added && vtr::SamePath(entry->path, added->path);
        },
        &DeleteEntry);
    Internals::Save(*this);
}

void CMRUList::MoveFileToTop(const char* path, unsigned long length) noexcept {
    AddFile(path, length);
}

void CMRUList::RemoveFile(unsigned int index, bool save) noexcept {
    if (index < entries.count)
        delete Entries(entries).Remove(index);
    if (save)
        Internals::Save(*this);
}

void CMRUList::ClearMRUList(bool save) noexcept {
    Entries(entries).Clear(&DeleteEntry);
    if (save)
        Internals::Save(*this);
}

bool CMRUList::Contains(const char* path) noexcept {
    return IndexOf(path) >= 0;
}

int CMRUList::IndexOf(const char* path) noexcept {
    for (unsigned i = 0; i < entries.count; ++i) {
        if (vtr::SamePath(entries.slots[i]->path, path))
            return static_cast<int>(i);
    }
    return -1;
}

const char* CMRUList::GetFileWithPath(unsigned int index) const noexcept {
    const _MRUData* entry = vtr::ConstPointers(entries).At(index);
    return entry != nullptr ? entry->path : nullptr;
}

const char* CMRUList::GetFileNameOnly(unsigned int index) const noexcept {
    const char* path = GetFileWithPath(index);
    return path != nullptr ? vtr::FileNameIn(path) : nullptr;
}

_MRUData CMRUList::GetMRUItem(unsigned int index) noexcept {
    const _MRUData* entry = vtr::ConstPointers(entries).At(index);
    return entry != nullptr ? *entry : _MRUData{};
}

void Internals::Save(const CMRUList& list) {
    Log("CMRUList::void CMRUList::SaveList() - enter");
    vtr::RegistryStrings values;
    if (values.OpenForWriting(list.root, list.subKey != nullptr ? list.subKey : "")) {
        unsigned written = 0;
        for (unsigned i = 0; i < list.entries.count; ++i) {
            const _MRUData& entry = *list.entries.slots[i];
            if (!FoundPath(entry.path).Exists())
                continue;
            char number[longestNumber];
            // Files of the family count paths without gaps, but lengths and times by entry.
            values.Write(ValueName(list.pathFormat, ++written), entry.path);
            std::snprintf(number, sizeof number, "%d", static_cast<int>(entry.lastLength));
            values.Write(ValueName(list.lengthFormat, i + 1), number);
            std::snprintf(number, sizeof number, "%llu", entry.lastTime);
            values.Write(ValueName(list.timeFormat, i + 1), number);
        }
        while (written < list.entries.count + blanksBehindList)
            values.Write(ValueName(list.pathFormat, ++written), "");
    }
    Log("CMRUList::void CMRUList::SaveList() - exit");
}
