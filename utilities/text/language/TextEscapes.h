#ifndef VTRUTILS_TEXT_LANGUAGE_TEXTESCAPES_H
#define VTRUTILS_TEXT_LANGUAGE_TEXTESCAPES_H

namespace vtr {

/// Replaces, in place, `\r\n` and `\n` by a line feed, `\t` by a tab, and `\"` and `\#` by the
/// character after the backslash, together with all the backslashes right before it. Other
/// backslashes stay. Private to the library. Immutable and safe.
///
/// The result is that of five passes, one for each escape in this order, each of which begins anew
/// after every replacement: only the last two put a character after what may be a backslash that
/// makes an escape of it again.
void ResolveEscapes(char* text);

} // namespace vtr

#endif
