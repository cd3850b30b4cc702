#ifndef VTRUTILS_TEXT_LANGUAGE_LIBRARYTEXT_H
#define VTRUTILS_TEXT_LANGUAGE_LIBRARYTEXT_H

#include "utilities/text/language/LanguageState.h"
#include "utilities/text/language/LanguageStrings.h"

namespace vtr {

/// Writes a text that the library itself shows, as `MyLoadString` does with the library's own
/// string file and escapes: "Cancel", "Yes", "No", "DoNotAsk", "DefaultPromoFont" and
/// "DefaultToolTipFont" are there. Private to the library. Locked by itself.
int LibraryText(const char* key, char* buffer, int size);

/// As `MyLoadString` with the current string file and escapes; false when the key has no text, and
/// the buffer then holds the key. Requires: a buffer and a size above 0. Private to the library.
bool LanguageText(const char* key, char* buffer, int size);

} // namespace vtr

#endif
