#ifndef VTRFUTLS_INTERNETHANDLE_H
#define VTRFUTLS_INTERNETHANDLE_H

#include "common/Owner.h"

#include <wininet.h>

/// The owner of what WinINet hands out. Private to this library. One thread at a time.

namespace vtr {

struct InternetKind {
    using Type = HINTERNET;
    static Type None() { return nullptr; }
    static bool Close(Type handle) { return InternetCloseHandle(handle) != FALSE; }
};

using InternetHandle = Owner<InternetKind>;

} // namespace vtr

#endif
