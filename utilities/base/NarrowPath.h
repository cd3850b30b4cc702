#ifndef VTRUTILS_BASE_NARROWPATH_H
#define VTRUTILS_BASE_NARROWPATH_H

#include "utilities/base/CodePage.h"
#include "utilities/base/OwnedText.h"

/// The one place where a path of the system's becomes narrow text. Private to the library.
/// Immutable and safe.

namespace vtr {

/// The text, if all its characters are in the code page; null otherwise and when memory runs out.
OwnedText ExactText(const wchar_t* text, unsigned codePage);

/// The text, with something else in place of what the code page, the ANSI page if it is 0, does not
/// have; null when memory runs out.
OwnedText NearestText(const wchar_t* text, unsigned codePage = 0);

/// A path as text that `WidePath` reads as that path again: in `firstPage` if it can be, else in
/// the language's code page, else in the ANSI page, else its short name. Null when there is no such
/// text and when memory runs out.
OwnedText NarrowPath(const wchar_t* path, unsigned firstPage = CurrentCodePage());

} // namespace vtr

#endif
