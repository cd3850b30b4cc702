#ifndef VTRUTILS_TESTS_SUPPORT_IMPORTPATCH_H
#define VTRUTILS_TESTS_SUPPORT_IMPORTPATCH_H

#include <windows.h>

/// While it lives, one module calls `replacement` where it would call a function that it imports.
/// Other modules are not touched.
class ImportPatch {
public:
    /// Throws when the module does not import the function: a patch that catches nothing would make
    /// its test pass for nothing.
    ImportPatch(HMODULE module, const char* library, const char* function, void* replacement);
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;
    ~ImportPatch();

    /// What the module would have called.
    void* Original() const { return original; }

private:
    void Write(void* address) const;

    void** slot;
    void* original;
};

#endif
