#include "utilities/xml/XMLTagText.h"

#include <algorithm>

namespace vtr {

namespace {

constexpr std::size_t npos = std::string_view::npos;
constexpr std::size_t longestText = 4095;

void RemoveUpTo(std::string_view& text, std::size_t end) {
    text.remove_prefix(std::min(end, text.size()));
}

} // namespace

XMLAttributes::XMLAttributes(std::string_view text) {
    const std::size_t start = text.find('<');
    if (start == npos)
        return;
    XMLStart startKind;
    XMLEnd endKind;
    const std::size_t first = BehindXMLStart(text, start, startKind);
    const std::size_t end = FindXMLEnd(text, first, /*anyQuote=*/false, endKind);
    if (first == start || end == npos)
        return;
    rest = text.substr(first, end - first);
    RemoveUpTo(rest, rest.find(' '));
}

bool XMLAttributes::Next(std::string_view& name, std::string_view& value) {
    if (rest.empty())
        return false;
    RemoveUpTo(rest, rest.find_first_not_of(' '));
    name = Take('=');
    RemoveUpTo(rest, rest.find('"'));
    RemoveUpTo(rest, 1);
    value = Take('"');
    RemoveUpTo(rest, 1);
    return true;
}

/// The text up to the next `stop`, cut and trimmed.
std::string_view XMLAttributes::Take(char stop) {
    const std::size_t end = std::min(rest.find(stop), rest.size());
    const std::string_view taken = rest.substr(0, std::min(end, longestText));
    rest.remove_prefix(end);
    return TrimXMLText(taken);
}

XMLDocTypeItems::XMLDocTypeItems(std::string_view text) : length(0) {
    XMLStart kind = XMLStart::element;
    std::size_t at = text.find('<');
    while (at != npos && (BehindXMLStart(text, at, kind) == at || kind != XMLStart::docType))
        at = text.find('<', at + 1);
    RemoveUpTo(text, at);
    RemoveUpTo(text, docTypeStart.size());
    RemoveUpTo(text, text.find(' '));
    rest = text;
}

bool XMLDocTypeItems::Next(std::string_view& given) {
    length = 0;
    char quote = '\0';
    for (; !rest.empty(); rest.remove_prefix(1)) {
        const char c = rest.front();
        const bool isQuote = c == '"' || c == '\'';
        if (quote != '\0' ? c == quote : (c == ' ' || isQuote) && length > 0) {
            // A quote that ends a word begins the next item.
            if (quote != '\0' || c == ' ')
                rest.remove_prefix(1);
            given = std::string_view(item, length);
            return true;
        }
        if (quote == '\0' && isQuote)
            quote = c;
        else if (quote != '\0' || c != ' ')
            Add(c);
    }
    return false;
}

void XMLDocTypeItems::Add(char c) {
    if (c != '\r' && c != '\n' && length < sizeof item)
        item[length++] = c;
}

} // namespace vtr
