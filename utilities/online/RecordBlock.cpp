#include "utilities/online/RecordBlock.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <malloc.h>

namespace {

constexpr std::size_t largestKept = 4 << 20;

std::atomic<int> users{0};
std::atomic<_osrSndItem*> kept{nullptr};

} // namespace

void vtr::UseRecordBlocks() {
    ++users;
}

void vtr::LeaveRecordBlocks() {
    if (--users == 0)
        std::free(kept.exchange(nullptr));
}

vtr::OwnedChars<_osrSndItem> vtr::MakeRecords(std::size_t count) {
    OwnedChars<_osrSndItem> made(kept.exchange(nullptr));
    if (made != nullptr && _msize(made.get()) / sizeof(_osrSndItem) >= count) {
        std::memset(static_cast<void*>(made.get()), 0, count * sizeof(_osrSndItem));
        return made;
    }
    made.reset(); // before more is asked for
    made.reset(static_cast<_osrSndItem*>(std::calloc(count, sizeof(_osrSndItem))));
    return made;
}

void vtr::GiveRecordsBack(_osrSndItem* records) {
    if (records != nullptr && _msize(records) <= largestKept)
        records = kept.exchange(records);
    std::free(records);
}
