#ifndef VTRUTILS_TEXT_LANGUAGE_LIBRARYTEXT_H
#define VTRUTILS_TEXT_LANGUAGE_LIBRARYTEXT_H

#include "utilities/text/language/LanguageState.h"
#include "utilities/text/language/LanguageStrings.h"

namespace vtr {

/// Writes a text that the library itself shows, as `MyLoadString` does with the library's own
/// string file and escapes: "Cancel", "Yes", "No", "DoNotAsk", "DefaultPromoFont" and
/// "DefaultToolTipFont" are there. Private to the library. Locked by itself.
int LibraryText(const char* key, char* buffer, int size);

} // namespace vtr

#endif
