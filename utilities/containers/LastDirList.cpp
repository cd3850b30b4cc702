#include "utilities/containers/LastDirList.h"

#include "common/Require.h"
#include "utilities/base/NodeChain.h"
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

/// The entries as items of the list.
class Entries {
public:
    explicit Entries(vtr::NodeFields<_tNode_t>& nodes) : chain(nodes) {}

    int Count() const { return chain.Count(); }

    /// Null when out of range.
    _lastDirList* At(int index) {
        return static_cast<_lastDirList*>(chain.Index(index, /*valueOut=*/nullptr));
    }

    /// Requires: 0 <= index < Count().
    void Put(int index, _lastDirList* entry) {
        VTR_REQUIRE(index >= 0 && index < Count());
        chain.NodeByIndex(index)->item = entry;
    }

    /// -1 when it is not in the list.
    int IndexOf(const char* path) {
        if (path == nullptr)
            return -1;
        const StoredPath stored(path);
        for (int i = 0; i < Count(); ++i) {
            if (vtr::SamePath(At(i)->path, stored.text))
                return i;
        }
        return -1;
    }

    /// Where time order puts the entry, which may be in the list already.
    int PlaceFor(const _lastDirList* entry) {
        int place = 0;
        for (; place < Count(); ++place) {
            const _lastDirList* other = At(place);
            if (other != entry && other->time < entry->time)
                break;
        }
        return place;
    }

    /// False when memory runs out.
    bool Insert(int index, _lastDirList* entry) {
        const int inserted = index == 0
                                 ? chain.InsertNewHead(entry, /*value=*/0)
                                 : chain.InsertAfter(entry, /*value=*/0, /*index=*/index - 1);
        return inserted >= 0;
    }

    /// The entry stays.
    void Remove(int index) { chain.RemoveByIndex(index); }

private:
    vtr::NodeChain<_tNode_t> chain;
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
    Entries entries(nodes);
    return entry != nullptr && entries.Insert(entries.PlaceFor(entry), entry) ? 1 : 0;
}

int CLastDirList::MoveOrAddToTop(char* path) {
    Entries entries(nodes);
    const int old = entries.IndexOf(path);
    const _lastDirList* known = entries.At(old);
    const int value = known != nullptr ? known->value : valueOfNewEntry;
    std::unique_ptr<_lastDirList> entry = MakeEntry(path, _time64(nullptr), value);
    if (entry == nullptr || !entries.Insert(0, entry.get()))
        return 0;
    (void)entry.release();
    if (known != nullptr)
        DeleteIndex(old + 1);
    return 1;
}

int CLastDirList::UpdateOrAdd(char* path, long long time, int value, int reposition) {
    Entries entries(nodes);
    const int old = entries.IndexOf(path);
    if (old < 0)
        return Add(path, time, value, /*unused=*/0);
    _lastDirList* entry = entries.At(old);
    entry->time = time;
    entry->value = value;
    if (reposition != 0) {
        // Its new node comes first, so that it stays where it was when there is no memory for one.
        const int place = entries.PlaceFor(entry);
        if (entries.Insert(place, entry))
            entries.Remove(place <= old ? old + 1 : old);
    }
    return 1;
}

_lastDirList* CLastDirList::ContainsDir(char* path) noexcept {
    Entries entries(nodes);
    return entries.At(entries.IndexOf(path));
}

void CLastDirList::DeletePath(char* path) noexcept {
    if (path == nullptr)
        return;
    Entries entries(nodes);
    const StoredPath stored(path);
    for (int i = 0; i < entries.Count();) {
        if (vtr::SamePath(entries.At(i)->path, stored.text))
            DeleteIndex(i);
        else
            ++i;
    }
}

void CLastDirList::DeleteIndex(int index) noexcept {
    Entries entries(nodes);
    const std::unique_ptr<_lastDirList> entry(entries.At(index));
    entries.Remove(index);
}

void CLastDirList::DeleteAll() noexcept {
    Entries entries(nodes);
    while (entries.Count() > 0)
        DeleteIndex(0);
}

int CLastDirList::Sort() noexcept {
    Entries entries(nodes);
    const std::size_t count = static_cast<std::size_t>(entries.Count());
    const std::unique_ptr<_lastDirList*[]> block(new (std::nothrow) _lastDirList*[count]);
    if (block == nullptr)
        return 0;
    _lastDirList** const first = block.get();
    for (int i = 0; i < entries.Count(); ++i)
        first[i] = entries.At(i);
    std::stable_sort(first, first + count, [](const _lastDirList* a, const _lastDirList* b) {
        return a->time > b->time;
    });
    for (int i = 0; i < entries.Count(); ++i)
        entries.Put(i, first[i]);
    return 1;
}
