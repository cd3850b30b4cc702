#ifndef VTRUTILS_XML_XMLBUILDER_H
#define VTRUTILS_XML_XMLBUILDER_H

#include "utilities/base/PtrArray.h"
#include "utilities/xml/XMLNode.h"
#include "utilities/xml/XMLStorage.h"

#include <string_view>

namespace vtr {

/// Makes the nodes and values of one tree. Where memory runs out, results are null or false and the
/// tree is as before. Private to the library. One thread at a time.
class XMLBuilder {
public:
    /// How many items a node holds before its lists become blocks of their own.
    struct Room {
        unsigned children;
        unsigned headerProperties;
        unsigned contentStrings;
    };

    /// A node without name when the name is empty.
    CXMLNode* MakeNode(std::string_view name, Room room);

    /// In place of the present name.
    static bool SetName(CXMLNode& node, std::string_view name);

    bool AddHeaderProperty(CXMLNode& node, std::string_view name, std::string_view value);

    /// A null name stays null. The text takes the node's next sequence number.
    bool AddContent(CXMLNode& node, const char* fieldName, std::string_view text);

    /// The child takes the node's next sequence number; if not appended, it stays the caller's.
    static bool AddChild(CXMLNode& node, CXMLNode* child);

    /// Copies all that `source` holds and is. Requires: a target that has just been made.
    void CopyTree(const CXMLNode& source, CXMLNode& target);

private:
    /// A text that may be null, which is another thing than empty.
    struct Text {
        Text(const char* terminated);
        Text(std::string_view text) : start(text.data()), length(text.size()) {}

        std::size_t Room() const { return start != nullptr ? length + 1 : 0; }
        /// A copy in `room`, null for null; `room` moves past it.
        char* CopyTo(char*& room) const;

        const char* start;
        std::size_t length;
    };

    static bool Append(Pointers<CXMLValue> list, CXMLValue* value);
    CXMLValue* MakeValue(Text fieldName, Text value);
    void CopyValues(ConstPointers<CXMLValue> source, Pointers<CXMLValue> target);
    void CopyOwn(const CXMLNode& source, CXMLNode& target);
    CXMLNode* CopyChild(const CXMLNode& source, CXMLNode& targetParent);

    // Look-ups go through the nodes only, one after the other.
    XMLStorage nodes;
    XMLStorage values;
};

} // namespace vtr

#endif
