#include "utilities/containers/LastDirList.h"

#include "utilities/base/PathText.h"
#include "utilities/base/StoreCut.h"

#include <algorithm>
#include <ctime>
#include <memory>
#include <new>

namespace {

constexpr int valueOfNewEntry = 1000;

/// Null for a null path and when memory runs out.
std::unique_ptr<_lastDirList> MakeEntry(const char* path, long long time, int value) {
    std::unique_ptr<_lastDirList> entry(path != nullptr ? new (std::nothrow) _lastDirList{}
                                                        : nullptr);
    if (entry != nullptr) {
        vtr::StoreCut(path, entry->path, sizeof entry->path);
        entry->time = time;
        entry->value = value;
    }
    return entry;
}

/// A path as it would be stored, which is also how it is looked up.
struct StoredPath {
    explicit StoredPath(const char* path) { vtr::StoreCut(path, text, sizeof text); }
    char text[sizeof _lastDirList::path];
};

} // namespace

CLastDirList::CLastDirList() noexcept = default;

CLastDirList::~CLastDirList() {
    DeleteAll();
}

int CLastDirList::Add(char* path, long long time, int value, int unused) {
    std::unique_ptr<_lastDirList> entry = MakeEntry(path, time, value);
    if (AddPtr(entry.get(), unused) != 0)
        (void)entry.release();
    return 1;
}

int CLastDirList::AddPtr(_lastDirList* entry, int /*unused*/) {
    return entry != nullptr && InsertAt(entry, PlaceFor(entry)) ? 1 : 0;
}

int CLastDirList::MoveOrAddToTop(char* path) {
    const int old = IndexOf(path);
    const _lastDirList* known = EntryAt(old);
    const int value = known != nullptr ? known->value : valueOfNewEntry;
    std::unique_ptr<_lastDirList> entry = MakeEntry(path, _time64(nullptr), value);
    if (entry == nullptr || !InsertAt(entry.get(), 0))
        return 0;
    (void)entry.release();
    if (known != nullptr)
        DeleteIndex(old + 1);
    return 1;
}

int CLastDirList::UpdateOrAdd(char* path, long long time, int value, int reposition) {
    const int old = IndexOf(path);
    if (old < 0)
        return Add(path, time, value, /*unused=*/0);
    _lastDirList* entry = EntryAt(old);
    entry->time = time;
    entry->value = value;
    if (reposition != 0) {
        // Its new node comes first, so that it stays where it was when there is no memory for one.
        const int place = PlaceFor(entry);
        if (InsertAt(entry, place))
            entries.RemoveByIndex(place <= old ? old + 1 : old);
    }
    return 1;
}

_lastDirList* CLastDirList::ContainsDir(char* path) noexcept {
    return EntryAt(IndexOf(path));
}

void CLastDirList::DeletePath(char* path) noexcept {
    if (path == nullptr)
        return;
    const StoredPath stored(path);
    for (int i = 0; i < entries.Count();) {
        if (vtr::SamePath(EntryAt(i)->path, stored.text))
            DeleteIndex(i);
        else
            ++i;
    }
}

void CLastDirList::DeleteIndex(int index) noexcept {
    const std::unique_ptr<_lastDirList> entry(EntryAt(index));
    entries.RemoveByIndex(index);
}

void CLastDirList::DeleteAll() noexcept {
    while (entries.Count() > 0)
        DeleteIndex(0);
}

int CLastDirList::Sort() noexcept {
    const std::size_t count = static_cast<std::size_t>(entries.Count());
    const std::unique_ptr<_lastDirList*[]> block(new (std::nothrow) _lastDirList*[count]);
    if (block == nullptr)
        return 0;
    _lastDirList** const first = block.get();
    for (int i = 0; i < entries.Count(); ++i)
        first[i] = EntryAt(i);
    std::stable_sort(first, first + count, [](const _lastDirList* a, const _lastDirList* b) {
        return a->time > b->time;
    });
    for (int i = 0; i < entries.Count(); ++i)
        entries.NodeByIndex(i)->item = first[i];
    return 1;
}

/// Null when out of range.
_lastDirList* CLastDirList::EntryAt(int index) noexcept {
    return static_cast<_lastDirList*>(entries.Index(index, /*valueOut=*/nullptr));
}

/// -1 when it is not in the list.
int CLastDirList::IndexOf(const char* path) noexcept {
    if (path == nullptr)
        return -1;
    const StoredPath stored(path);
    for (int i = 0; i < entries.Count(); ++i) {
        if (vtr::SamePath(EntryAt(i)->path, stored.text))
            return i;
    }
    return -1;
}

/// Where time order puts the entry, which may be in the list already.
int CLastDirList::PlaceFor(const _lastDirList* entry) noexcept {
    int place = 0;
    for (; place < entries.Count(); ++place) {
        const _lastDirList* other = EntryAt(place);
        if (other != entry && other->time < entry->time)
            break;
    }
    return place;
}

/// False when memory runs out.
bool CLastDirList::InsertAt(_lastDirList* entry, int index) {
    const int inserted = index == 0 ? entries.InsertNewHead(entry, /*value=*/0)
                                    : entries.InsertAfter(entry, /*value=*/0, /*index=*/index - 1);
    return inserted >= 0;
}
