#include "utilities/xml/XMLText.h"

#include "utilities/text/html/HtmlText.h"

#include <cstdlib>
#include <cstring>

namespace vtr {

char* CopyXMLText(std::string_view text) {
    char* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (copy == nullptr)
        return nullptr;
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

void ReplaceXMLText(char*& field, bool& inBlock, char* text) {
    if (!inBlock)
        std::free(field);
    field = text;
    inBlock = false;
}

void DeHTMLifyXMLText(char* text) {
    if (text != nullptr)
        DeHTMLifyString(text, static_cast<unsigned>(std::strlen(text) + 1));
}

} // namespace vtr
