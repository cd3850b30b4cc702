#ifndef VTRUTILS_BASE_RESERVEDCHARACTERS_H
#define VTRUTILS_BASE_RESERVEDCHARACTERS_H

namespace vtr {

/// Replaces in place the characters that no file name may have: < > : " / \ | ? *. Steps as over
/// a path. Private to the library. One thread at a time.
void ReplaceReservedCharacters(char* text, char replacement);

} // namespace vtr

#endif
