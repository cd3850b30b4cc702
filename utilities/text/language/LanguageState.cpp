#include "utilities/text/language/LanguageState.h"

#include <cwchar>

namespace vtr {

namespace {

LanguageState state;

/// The folder of the running program, with a trailing backslash, or "".
void FindHostFolder(wchar_t (&folder)[MAX_PATH]) {
    const DWORD length = GetModuleFileNameW(/*hModule=*/nullptr, folder, MAX_PATH);
    wchar_t* backslash = length > 0 && length < MAX_PATH ? std::wcsrchr(folder, L'\\') : nullptr;
    *(backslash != nullptr ? backslash + 1 : folder) = L'\0';
}

} // namespace

LanguageState& Language() {
    return state;
}

void CreateLanguageState() {
    state = {};
    InitializeCriticalSection(&state.stringLock);
    FindHostFolder(state.hostFolder);
}

void FreeLanguageState() {
    delete state.stringCache;
    DeleteCriticalSection(&state.stringLock);
}

} // namespace vtr
