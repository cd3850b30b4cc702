#ifndef VTRUTILS_TESTS_SUPPORT_FREEDMEMORY_H
#define VTRUTILS_TESTS_SUPPORT_FREEDMEMORY_H

#include "tests/support/ImportPatch.h"

/// While it lives, what one module frees is overwritten and kept, so that reading it gives garbage.
/// One at a time in a process.
class FreedMemory {
public:
    explicit FreedMemory(const char* moduleName);
    FreedMemory(const FreedMemory&) = delete;
    FreedMemory& operator=(const FreedMemory&) = delete;
    ~FreedMemory();

    /// How many blocks were freed again or written to after they had been freed.
    unsigned Misused() const;

private:
    ImportPatch free;
    ImportPatch realloc;
};

#endif
