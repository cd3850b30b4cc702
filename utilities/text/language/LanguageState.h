#ifndef VTRUTILS_TEXT_LANGUAGE_LANGUAGESTATE_H
#define VTRUTILS_TEXT_LANGUAGE_LANGUAGESTATE_H

#include "utilities/text/language/StringCache.h"

#include <windows.h>

/// The process-wide state of the language strings: made when the library is loaded, freed when it
/// is unloaded. Private to the library. `stringLock` guards look-ups; paths are set before look-ups
/// start.

namespace vtr {

struct LanguageState {
    CRITICAL_SECTION stringLock;
    /// Null until the first text is kept.
    StringCache* stringCache;
    /// The host's folder, as the system names it, with a trailing backslash; "" when its path does
    /// not fit.
    wchar_t hostFolder[MAX_PATH];
    /// "" until set.
    char stringFile[MAX_PATH];
    char backupStringFile[MAX_PATH];
    /// With a trailing backslash. "" until set: the host's folder.
    char masterLanguageFolder[MAX_PATH];
    char languageFolder[MAX_PATH];
    /// The library's own texts. Until set: "utility-strings.ini" in the host's folder.
    char utilitiesStringFile[MAX_PATH];
    bool utilitiesStringFileSet;
    unsigned char currentCharset;
};

/// Valid from load to unload.
LanguageState& Language();

void CreateLanguageState();
void FreeLanguageState();

} // namespace vtr

#endif
