#include "common/RunTimeMemory.h"
#include "utilities/base/ThreadMark.h"
#include "utilities/text/language/LanguageState.h"

/// What happens when a process loads and unloads the library, and nothing more: no other library
/// may be loaded and nothing may be waited for here.
extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_ATTACH) {
        vtr::CreateLanguageState();
    } else if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) {
        vtr::FreeLanguageState();
        vtr::FreeThreadMarks();
        vtr::FreeRunTimeMemory();
    }
    return TRUE;
}
