#ifndef VTRUTILS_TESTS_XML_XMLTREES_H
#define VTRUTILS_TESTS_XML_XMLTREES_H

#include "utilities/xml/XMLFile.h"

#include <string>

inline std::string Text(const char* text) {
    return text != nullptr ? text : "~";
}

/// A piece of text: `"field name:text"#number `.
inline std::string Piece(const char* fieldName, const std::string& value, int number) {
    return "\"" + Text(fieldName) + ":" + value + "\"#" + std::to_string(number) + " ";
}

/// A tree as text: `name#number(attribute=value;)["text"#number child#...]`, null as "~".
inline std::string Shown(const CXMLNode& node) {
    std::string shown = Text(node.Name()) + "#" + std::to_string(node.SequenceNumber()) + "(";
    for (unsigned i = 0; i < node.NumHeaderProperties(); ++i)
        shown += Text(node.GetHeaderProperty(i)->FieldName()) + "=" +
                 Text(node.GetHeaderProperty(i)->Value()) + ";";
    shown += ")[";
    for (unsigned i = 0; i < node.NumContentStrings(); ++i)
        shown += Piece(node.GetContent(i)->FieldName(), Text(node.GetContentString(i)),
                       node.GetContent(i)->SequenceNumber());
    for (unsigned i = 0; i < node.NumChildren(); ++i)
        shown += Shown(*node.GetChild(i));
    return shown + "]";
}

#endif
