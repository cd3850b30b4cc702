#ifndef VTRUTILS_XML_XMLTEXT_H
#define VTRUTILS_XML_XMLTEXT_H

#include "utilities/base/BlockText.h"
#include "utilities/base/CaseBit.h"

#include <string_view>

/// Names and texts of a document. Private to the library. One thread at a time.

namespace vtr {

/// A block of its own; null when memory runs out.
char* CopyXMLText(std::string_view text);

/// Start and length of a name: changing case changes no length. 0 for null and "".
inline unsigned short XMLNameKey(std::string_view name) {
    if (name.empty())
        return 0;
    return static_cast<unsigned short>(((name.size() & 0xFF) << 8) | WithoutCase(name.front()));
}

/// False for the keys of names that differ.
inline bool MayBeSameXMLName(unsigned short left, unsigned short right) {
    const unsigned different = left ^ right;
    return different == 0 || (different <= 0xFF && ((left | right) & beyondAscii) != 0);
}

/// In place; null is ignored.
void DeHTMLifyXMLText(char* text);

} // namespace vtr

#endif
