#ifndef VTRUTILS_XML_XMLLOADER_H
#define VTRUTILS_XML_XMLLOADER_H

#include "utilities/base/OwnedText.h"
#include "utilities/xml/XMLBuilder.h"
#include "utilities/xml/XMLScanner.h"

namespace vtr {

/// Builds the tree of an XML text below a root that is empty. Goes through the text once, without
/// recursion: open nodes know their parents. Private to the library. One thread at a time.
class XMLLoader {
public:
    XMLLoader(CXMLNode& top, std::string_view whole)
        : text(whole), scanner(whole), root(top), open(&top), position(0), scratchSize(0) {}

    void Run();

private:
    void MeetToken();
    void ReadOwnTag();
    void ReadTexts();
    std::string_view WithoutComments(std::size_t from, std::size_t to);
    bool BeginChild();
    void Complete();
    void Close();

    std::string_view text;
    XMLScanner scanner;
    XMLBuilder builder;
    CXMLNode& root;
    CXMLNode* open;       ///< the innermost open node; null once the root is complete
    std::size_t position; ///< what precedes it has been read
    XMLToken token;
    OwnedText scratch;
    std::size_t scratchSize;
};

} // namespace vtr

#endif
