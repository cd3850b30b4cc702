#include "common/RunTimeMemory.h"

#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE /*module*/, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr)
        vtr::FreeRunTimeMemory();
    return TRUE;
}
