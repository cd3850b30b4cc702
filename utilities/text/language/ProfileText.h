#ifndef VTRUTILS_TEXT_LANGUAGE_PROFILETEXT_H
#define VTRUTILS_TEXT_LANGUAGE_PROFILETEXT_H

namespace vtr {

/// What `GetPrivateProfileStringA` gives for the key in the section "Strings", the key standing in
/// for a missing text, with the file found as every path is found. Returns the length of the text;
/// 0 with an empty buffer when memory runs out. Private to the library. Immutable and safe.
/// Requires: `size` > 0.
unsigned ReadProfileText(const char* key, char* buffer, unsigned size, const char* file);

} // namespace vtr

#endif
