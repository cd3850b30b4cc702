#ifndef VTR_COMMON_RUNTIMEMEMORY_H
#define VTR_COMMON_RUNTIMEMEMORY_H

#include <cstddef>

#if defined(__GLIBCXX__)
namespace __gnu_cxx {
// Of the compiler's run-time, which declares it in no header.
void __freeres();
} // namespace __gnu_cxx
#endif

namespace vtr {

/// Called when a DLL is unloaded and throws no more. The compiler's run-time inside it keeps 72 KB
/// for exceptions that are thrown when memory has run out, and would leak them at each unload.
/// Private to the two libraries. One thread at a time.
inline void FreeRunTimeMemory() {
#if defined(__GLIBCXX__)
    __gnu_cxx::__freeres();
#endif
}

} // namespace vtr

#endif
