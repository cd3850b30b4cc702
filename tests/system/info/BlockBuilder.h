#ifndef VTRUTILS_TESTS_SYSTEM_INFO_BLOCKBUILDER_H
#define VTRUTILS_TESTS_SYSTEM_INFO_BLOCKBUILDER_H

#include <cstdlib>
#include <string>
#include <vector>
#include <windows.h>

/// Performance data as Windows lays them out.

struct CounterShape {
    DWORD title;
    DWORD size; ///< 4 or 8
};

struct InstanceData {
    std::wstring name;
    std::vector<long long> values;
};

struct ObjectShape {
    DWORD title;
    std::vector<CounterShape> counters;
    /// One with an empty name: the object has no instances, only values.
    std::vector<InstanceData> instances;
};

template <class Record>
void Append(std::string& bytes, const Record& record) {
    bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
}

inline std::string Values(const ObjectShape& object, const std::vector<long long>& values) {
    std::string bytes;
    for (std::size_t i = 0; i < values.size(); ++i)
        bytes.append(reinterpret_cast<const char*>(&values[i]), object.counters[i].size);
    std::string block;
    Append(block,
           PERF_COUNTER_BLOCK{static_cast<DWORD>(sizeof(PERF_COUNTER_BLOCK) + bytes.size())});
    return block + bytes;
}

inline std::string ObjectBytes(const ObjectShape& object) {
    std::string definitions, rest;
    DWORD offset = sizeof(PERF_COUNTER_BLOCK);
    for (const CounterShape& shape : object.counters) {
        PERF_COUNTER_DEFINITION counter{};
        counter.ByteLength = sizeof counter;
        counter.CounterNameTitleIndex = shape.title;
        counter.CounterSize = shape.size;
        counter.CounterOffset = offset;
        offset += shape.size;
        Append(definitions, counter);
    }
    const bool named = object.instances.empty() || !object.instances[0].name.empty();
    for (const InstanceData& data : object.instances) {
        const auto nameBytes = static_cast<DWORD>((data.name.size() + 1) * sizeof(wchar_t));
        if (named) {
            Append(rest, PERF_INSTANCE_DEFINITION{
                             static_cast<DWORD>(sizeof(PERF_INSTANCE_DEFINITION) + nameBytes), 0, 0,
                             PERF_NO_UNIQUE_ID, sizeof(PERF_INSTANCE_DEFINITION), nameBytes});
            rest.append(reinterpret_cast<const char*>(data.name.c_str()), nameBytes);
        }
        rest += Values(object, data.values);
    }
    PERF_OBJECT_TYPE header{};
    header.HeaderLength = sizeof header;
    header.DefinitionLength = static_cast<DWORD>(sizeof header + definitions.size());
    header.TotalByteLength = static_cast<DWORD>(header.DefinitionLength + rest.size());
    header.ObjectNameTitleIndex = object.title;
    header.NumCounters = static_cast<DWORD>(object.counters.size());
    header.NumInstances = named ? static_cast<LONG>(object.instances.size()) : PERF_NO_INSTANCES;
    std::string bytes;
    Append(bytes, header);
    return bytes + definitions + rest;
}

inline std::string BlockBytes(long long time, const std::vector<ObjectShape>& objects) {
    PERF_DATA_BLOCK header{};
    std::string rest, bytes;
    for (const ObjectShape& object : objects)
        rest += ObjectBytes(object);
    header.HeaderLength = sizeof header;
    header.TotalByteLength = static_cast<DWORD>(sizeof header + rest.size());
    header.NumObjectTypes = static_cast<DWORD>(objects.size());
    header.PerfTime100nSec.QuadPart = time;
    Append(bytes, header);
    return bytes + rest;
}

#endif
