#include "utilities/text/language/LanguageState.h"

#include "vtrfutls/FileNames.h"

#include <cstdio>
#include <cstring>

namespace vtr {

namespace {

LanguageState state;

/// The folder of the running program, with a trailing backslash, or "".
void FindHostFolder(char (&folder)[MAX_PATH]) {
    char program[MAX_PATH];
    const DWORD length = GetModuleFileNameA(/*hModule=*/nullptr, program, sizeof program);
    if (length == 0 || length >= sizeof program ||
        !ExtractDirectory(program, folder, sizeof folder))
        folder[0] = '\0';
}

} // namespace

LanguageState& Language() {
    return state;
}

void CreateLanguageState() {
    state = {};
    InitializeCriticalSection(&state.stringLock);
    FindHostFolder(state.masterLanguageFolder);
    std::memcpy(state.languageFolder, state.masterLanguageFolder, sizeof state.languageFolder);

    static constexpr char fileName[] = "utility-strings.ini";
    const char* folder = state.masterLanguageFolder;
    if (folder[0] != '\0' &&
        std::strlen(folder) + sizeof fileName <= sizeof state.utilitiesStringFile)
        std::snprintf(state.utilitiesStringFile, sizeof state.utilitiesStringFile, "%s%s", folder,
                      fileName);
}

void FreeLanguageState() {
    delete state.stringCache;
    DeleteCriticalSection(&state.stringLock);
}

} // namespace vtr
