#ifndef VTRUTILS_TESTS_XML_XMLMODEL_H
#define VTRUTILS_TESTS_XML_XMLMODEL_H

#include "utilities/xml/XMLFile.h"

#include <string>

/// A tree as text: `name#number(attribute=value;)["text"#number child#...]`, null as "~".
std::string Shown(const CXMLNode& node);

/// The same of the tree that the rules give for the text, read byte by byte and recursively.
/// Requires: small texts.
std::string ShownModel(const std::string& text, unsigned maxTokens = 999'999);

#endif
