#ifndef VTRUTILS_BASE_CODEPAGE_H
#define VTRUTILS_BASE_CODEPAGE_H

namespace vtr {

/// The code page of narrow paths and texts wherever Windows wants UTF-16: that of the language, or
/// 0, as at the start, for the system's ANSI code page. Private to the library. Locked by itself.
unsigned CurrentCodePage();

/// Tells the sibling library too, whose paths are in the same code page.
void SetCurrentCodePage(unsigned codePage);

} // namespace vtr

#endif
