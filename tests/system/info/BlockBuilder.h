#ifndef VTRUTILS_TESTS_SYSTEM_INFO_BLOCKBUILDER_H
#define VTRUTILS_TESTS_SYSTEM_INFO_BLOCKBUILDER_H

#include <string>
#include <vector>
#include <windows.h>

/// Performance data as Windows lays them out.

struct CounterShape {
    DWORD title;
    DWORD size; ///< 4 or 8
};

struct InstanceData {
    std::wstring name; ///< empty: the object has no instances, only values
    std::vector<long long> values;
};

struct ObjectShape {
    DWORD title;
    std::vector<CounterShape> counters;
    std::vector<InstanceData> instances;
};

template <class Record>
std::string BytesOf(const Record& record) {
    return {reinterpret_cast<const char*>(&record), sizeof record};
}

inline std::string InstanceBytes(const ObjectShape& object, const InstanceData& data) {
    std::string bytes, values;
    if (!data.name.empty()) {
        PERF_INSTANCE_DEFINITION header{};
        header.NameOffset = sizeof header;
        header.NameLength = static_cast<DWORD>((data.name.size() + 1) * sizeof(wchar_t));
        header.ByteLength = header.NameOffset + header.NameLength;
        bytes = BytesOf(header);
        bytes.append(reinterpret_cast<const char*>(data.name.c_str()), header.NameLength);
    }
    for (std::size_t i = 0; i < data.values.size(); ++i)
        values += BytesOf(data.values[i]).substr(0, object.counters[i].size);
    const auto length = static_cast<DWORD>(sizeof(PERF_COUNTER_BLOCK) + values.size());
    return bytes + BytesOf(PERF_COUNTER_BLOCK{length}) + values;
}

inline std::string ObjectBytes(const ObjectShape& object) {
    std::string definitions, instances;
    DWORD offset = sizeof(PERF_COUNTER_BLOCK);
    for (const CounterShape& shape : object.counters) {
        PERF_COUNTER_DEFINITION counter{};
        counter.ByteLength = sizeof counter;
        counter.CounterNameTitleIndex = shape.title;
        counter.CounterSize = shape.size;
        counter.CounterOffset = offset;
        offset += shape.size;
        definitions += BytesOf(counter);
    }
    for (const InstanceData& data : object.instances)
        instances += InstanceBytes(object, data);
    PERF_OBJECT_TYPE header{};
    header.HeaderLength = sizeof header;
    header.DefinitionLength = static_cast<DWORD>(sizeof header + definitions.size());
    header.TotalByteLength = static_cast<DWORD>(header.DefinitionLength + instances.size());
    header.ObjectNameTitleIndex = object.title;
    header.NumCounters = static_cast<DWORD>(object.counters.size());
    header.NumInstances = static_cast<LONG>(object.instances.size());
    if (!object.instances.empty() && object.instances[0].name.empty())
        header.NumInstances = PERF_NO_INSTANCES;
    return BytesOf(header) + definitions + instances;
}

inline std::string BlockBytes(long long time, const std::vector<ObjectShape>& objects) {
    std::string rest;
    for (const ObjectShape& object : objects)
        rest += ObjectBytes(object);
    PERF_DATA_BLOCK header{};
    header.HeaderLength = sizeof header;
    header.TotalByteLength = static_cast<DWORD>(sizeof header + rest.size());
    header.NumObjectTypes = static_cast<DWORD>(objects.size());
    header.PerfTime100nSec.QuadPart = time;
    return BytesOf(header) + rest;
}

#endif
