#ifndef VTRUTILS_TEXT_LANGUAGE_LANGUAGESTATE_H
#define VTRUTILS_TEXT_LANGUAGE_LANGUAGESTATE_H

#include "utilities/text/language/StringCache.h"

#include <windows.h>

/// The process-wide state behind the language strings: made when the library is loaded, freed when
/// it is unloaded. Private to the library. `stringLock` guards look-ups; paths are set
/// before look-ups start.

namespace vtr {

struct LanguageState {
    CRITICAL_SECTION stringLock;
    /// Null until the first text is kept.
    StringCache* stringCache;
    /// "" until set.
    char stringFile[MAX_PATH];
    char backupStringFile[MAX_PATH];
    /// The host's folder, with a trailing backslash; "" when its path does not fit.
    char masterLanguageFolder[MAX_PATH];
    char languageFolder[MAX_PATH];
    /// The library's own texts: "utility-strings.ini" in the host's folder; "" when that does not
    /// fit.
    char utilitiesStringFile[MAX_PATH];
    unsigned char currentCharset;
};

/// Valid from load to unload.
LanguageState& Language();

void CreateLanguageState();
void FreeLanguageState();

} // namespace vtr

#endif
