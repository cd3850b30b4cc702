#ifndef VTRUTILS_XML_XMLTAGTEXT_H
#define VTRUTILS_XML_XMLTAGTEXT_H

#include "utilities/xml/XMLScanner.h"

/// What is in a tag after its name. The text given begins where the search for the tag began and
/// ends with the tag. Private to the library. One thread at a time.

namespace vtr {

/// Attributes with double-quoted values. They are read from the first "<" of the text, also when it
/// begins a comment, which hides the attributes of the tag after it.
class XMLAttributes {
public:
    XMLAttributes(std::string_view text, const XMLToken& tag);

    /// False after the last one. Both are trimmed and may be empty.
    bool Next(std::string_view& name, std::string_view& value);

private:
    std::string_view Take(char stop);
    void SkipTo(char stop);

    std::string_view rest;
};

/// The words and quoted texts of a document type declaration. A word that nothing ends is left out.
class XMLDocTypeItems {
public:
    explicit XMLDocTypeItems(std::string_view text);

    /// False after the last one. Valid until the next call.
    bool Next(std::string_view& item);

private:
    void Add(char c);

    std::string_view rest;
    char item[1023];
    std::size_t length;
};

} // namespace vtr

#endif
