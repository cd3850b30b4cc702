#ifndef VTRUTILS_TESTS_SUPPORT_HEAPUSE_H
#define VTRUTILS_TESTS_SUPPORT_HEAPUSE_H

#include <cstddef>
#include <malloc.h>
#include <windows.h>

/// Bytes in use in the heap of the run-time, which is one for all binaries of a process.
inline std::size_t HeapUse() {
    std::size_t used = 0;
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(reinterpret_cast<HANDLE>(_get_heap_handle()), &entry))
        used += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
    return used;
}

#endif
