#ifndef VTRUTILS_TESTS_CONTAINERS_ARRAYLISTRECORD_H
#define VTRUTILS_TESTS_CONTAINERS_ARRAYLISTRECORD_H

#include <cstring>

/// The fields as a host that shares the record sees them.
struct ArrayListRecord {
    void* virtualTable;
    void* block;
    int capacity;
    int count;
    unsigned step;
    bool sorted;
};

template <class List>
ArrayListRecord Look(const List& list) {
    static_assert(sizeof list == sizeof(ArrayListRecord));
    ArrayListRecord record;
    std::memcpy(&record, static_cast<const void*>(&list), sizeof record);
    return record;
}

#endif
