#include "utilities/system/info/PerformanceBlock.h"

#include "utilities/base/SameText.h"

#include <algorithm>
#include <iterator>

namespace vtr {

namespace {

/// Records that follow each other, each of which begins with its length.
class RecordWalk {
public:
    RecordWalk(const ByteRange& first, std::size_t count) : rest(first), left(count) {}

    /// The next record: what of it is always there, and the whole. False at the end and for a
    /// record that is shorter than the former or longer than the rest: each one takes a step.
    template <class Record>
    bool Next(DWORD Record::*wholeLength, Record& record, ByteRange& whole) {
        if (left == 0 || !rest.Read(0, record) || record.*wholeLength < sizeof record ||
            !rest.Part(0, record.*wholeLength, whole))
            return false;
        --left;
        rest = rest.From(whole.Length());
        return true;
    }

    ByteRange Rest() const { return rest; }

private:
    ByteRange rest;
    std::size_t left;
};

/// Where in the counter block of an object, or of an instance, a counter has its value.
struct CounterPlace {
    DWORD offset = 0;
    DWORD size = 0;
};

class ObjectData {
public:
    static bool Find(const ByteRange& block, DWORD title, ObjectData& found) {
        PERF_DATA_BLOCK header;
        if (!block.Read(0, header) || header.HeaderLength < sizeof header)
            return false;
        RecordWalk objects(block.From(header.HeaderLength), header.NumObjectTypes);
        while (objects.Next(&PERF_OBJECT_TYPE::TotalByteLength, found.header, found.whole)) {
            if (found.header.ObjectNameTitleIndex == title)
                return found.header.HeaderLength >= sizeof found.header &&
                       found.header.DefinitionLength >= found.header.HeaderLength;
        }
        return false;
    }

    bool Find(DWORD title, CounterPlace& place) const {
        ByteRange definitions;
        if (!whole.Part(0, header.DefinitionLength, definitions))
            return false;
        RecordWalk counters(definitions.From(header.HeaderLength), header.NumCounters);
        PERF_COUNTER_DEFINITION counter;
        ByteRange unused;
        while (counters.Next(&PERF_COUNTER_DEFINITION::ByteLength, counter, unused)) {
            if (counter.CounterNameTitleIndex == title) {
                place = {counter.CounterOffset, counter.CounterSize};
                return true;
            }
        }
        return false;
    }

    bool HasInstances() const { return header.NumInstances != PERF_NO_INSTANCES; }

    /// The counter block, or the first instance.
    ByteRange Values() const { return whole.From(header.DefinitionLength); }

    std::size_t Instances() const {
        return static_cast<std::size_t>(std::max<LONG>(header.NumInstances, 0));
    }

private:
    PERF_OBJECT_TYPE header{};
    ByteRange whole;
};

/// `counters` begins with a counter block.
bool ReadValue(const ByteRange& counters, const CounterPlace& place, long long& value) {
    PERF_COUNTER_BLOCK header;
    ByteRange own;
    if (!counters.Read(0, header) || !counters.Part(0, header.ByteLength, own) ||
        place.offset < sizeof header)
        return false;
    DWORD small = 0;
    if (place.size == sizeof value)
        return own.Read(place.offset, value);
    if (place.size != sizeof small || !own.Read(place.offset, small))
        return false;
    value = small;
    return true;
}

/// The first instance for which `isWanted(definition, whole, counters)`.
template <class IsWanted>
bool FindInstance(const ObjectData& object, const IsWanted& isWanted, ByteRange& counters) {
    ByteRange rest = object.Values();
    for (std::size_t left = object.Instances(); left > 0; --left) {
        PERF_INSTANCE_DEFINITION definition;
        PERF_COUNTER_BLOCK header;
        ByteRange whole;
        RecordWalk instance(rest, 1);
        if (!instance.Next(&PERF_INSTANCE_DEFINITION::ByteLength, definition, whole))
            return false;
        RecordWalk values(instance.Rest(), 1);
        if (!values.Next(&PERF_COUNTER_BLOCK::ByteLength, header, counters))
            return false;
        if (isWanted(definition, whole, counters))
            return true;
        rest = values.Rest();
    }
    return false;
}

/// Names that are longer than any of Windows have no text.
bool HasName(const PERF_INSTANCE_DEFINITION& definition, const ByteRange& whole, const char* name) {
    wchar_t wide[1024];
    char narrow[2 * std::size(wide)];
    ByteRange bytes;
    if (definition.NameOffset < sizeof definition ||
        !whole.Part(definition.NameOffset, definition.NameLength, bytes) ||
        bytes.Length() >= sizeof wide)
        return false;
    std::memcpy(wide, bytes.Data(), bytes.Length());
    wide[bytes.Length() / sizeof *wide] = L'\0';
    return WideCharToMultiByte(CP_ACP, /*dwFlags=*/0, wide, /*cchWideChar=*/-1, narrow,
                               sizeof narrow, /*lpDefaultChar=*/nullptr,
                               /*lpUsedDefaultChar=*/nullptr) > 0 &&
           SameText(narrow, name);
}

/// What of the block is meant to be there.
std::size_t LengthOf(const void* data, std::size_t length) {
    PERF_DATA_BLOCK header;
    return ByteRange(data, length).Read(0, header)
               ? std::min<std::size_t>(length, header.TotalByteLength)
               : 0;
}

} // namespace

PerformanceBlock::PerformanceBlock(const void* data, std::size_t length)
    : block(data, LengthOf(data, length)) {}

bool PerformanceBlock::Time(long long& time) const {
    PERF_DATA_BLOCK header;
    if (!block.Read(0, header))
        return false;
    time = header.PerfTime100nSec.QuadPart;
    return true;
}

bool PerformanceBlock::Counter(const CounterName& name, long long& value) const {
    ObjectData object;
    CounterPlace place;
    return ObjectData::Find(block, name.object, object) && !object.HasInstances() &&
           object.Find(name.counter, place) && ReadValue(object.Values(), place, value);
}

bool PerformanceBlock::OfInstance(const CounterName& name, const char* instance,
                                  long long& value) const {
    ObjectData object;
    CounterPlace place;
    ByteRange counters;
    const auto isWanted = [instance](const PERF_INSTANCE_DEFINITION& definition,
                                     const ByteRange& whole, const ByteRange&) {
        return HasName(definition, whole, instance);
    };
    return instance != nullptr && ObjectData::Find(block, name.object, object) &&
           object.Find(name.counter, place) && FindInstance(object, isWanted, counters) &&
           ReadValue(counters, place, value);
}

bool PerformanceBlock::OfInstance(const CounterName& name, DWORD idCounter, long long id,
                                  long long& value) const {
    ObjectData object;
    CounterPlace place;
    CounterPlace idPlace;
    ByteRange counters;
    const auto isWanted = [&idPlace, id](const PERF_INSTANCE_DEFINITION&, const ByteRange&,
                                         const ByteRange& values) {
        long long found = 0;
        return ReadValue(values, idPlace, found) && found == id;
    };
    return ObjectData::Find(block, name.object, object) && object.Find(name.counter, place) &&
           object.Find(idCounter, idPlace) && FindInstance(object, isWanted, counters) &&
           ReadValue(counters, place, value);
}

} // namespace vtr
