#ifndef VTRUTILS_TESTS_SUPPORT_LOOKUPS_H
#define VTRUTILS_TESTS_SUPPORT_LOOKUPS_H

#include "tests/support/ImportPatch.h"

#include <map>
#include <string>

/// While it lives, the library finds these functions alone where it looks up one that not every
/// Windows has. What it found it keeps: for a test in a process of its own.
class LookUps {
public:
    explicit LookUps(std::map<std::string, void*> functions = {}) { found = std::move(functions); }

private:
    static FARPROC WINAPI Find(HMODULE, const char* name) {
        const auto function = found.find(name);
        return function != found.end() ? reinterpret_cast<FARPROC>(function->second) : nullptr;
    }

    inline static std::map<std::string, void*> found;
    ImportPatch patch{GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "GetProcAddress",
                      reinterpret_cast<void*>(&Find)};
};

#endif
