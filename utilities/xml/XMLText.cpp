#include "utilities/xml/XMLText.h"

#include "utilities/text/html/HtmlText.h"

#include <cstring>

namespace vtr {

char* CopyXMLText(std::string_view text) {
    char* const copy = AllocateChars<char>(text.size() + 1).release();
    char* place = copy;
    return copy != nullptr ? PutText(text.data(), text.size(), place) : nullptr;
}

void DeHTMLifyXMLText(char* text) {
    if (text != nullptr)
        DeHTMLifyString(text, static_cast<unsigned>(std::strlen(text) + 1));
}

} // namespace vtr
