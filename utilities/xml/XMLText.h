#ifndef VTRUTILS_XML_XMLTEXT_H
#define VTRUTILS_XML_XMLTEXT_H

#include <string_view>

/// Texts that nodes and values of a document own: blocks of their own, or parts of the block that
/// holds the owner. Private to the library. One thread at a time.

namespace vtr {

/// A block of its own; null when memory runs out.
char* CopyXMLText(std::string_view text);

/// Frees the old text, unless it is part of a block, and takes the new one, a block of its own.
void ReplaceXMLText(char*& field, bool& inBlock, char* text);

/// In place; null is ignored.
void DeHTMLifyXMLText(char* text);

} // namespace vtr

#endif
