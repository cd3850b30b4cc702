#ifndef VTRUTILS_BASE_LIBRARYMODULE_H
#define VTRUTILS_BASE_LIBRARYMODULE_H

#include <windows.h>

/// The start of the binary that this is linked into; the linker defines it.
extern "C" IMAGE_DOS_HEADER __ImageBase; // NOLINT(bugprone-reserved-identifier)

namespace vtr {

/// The module with the library's resources. Private to the library. Immutable and safe.
inline HINSTANCE LibraryModule() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

} // namespace vtr

#endif
