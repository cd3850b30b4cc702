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

XMLAttributes::XMLAttributes(std::string_view text, const XMLToken& tag) : rest(tag.inside) {
    // The end of a tag is another here when a comment precedes it or an apostrophe hides an end.
    if (tag.afterComment || tag.hasApostrophe) {
        XMLStart startKind = XMLStart::element;
        const std::size_t first = AfterXMLStart(text, text.find('<'), startKind);
        const std::size_t end = FindXMLEnd(text, first, /*anyQuote=*/false).at;
        rest = end != npos ? text.substr(first, end - first) : std::string_view();
    }
    SkipTo(' ');
}

bool XMLAttributes::Next(std::string_view& name, std::string_view& value) {
    if (rest.empty())
        return false;
    RemoveUpTo(rest, rest.find_first_not_of(' '));
    name = Take('=');
    SkipTo('"');
    RemoveUpTo(rest, 1);
    value = Take('"');
    RemoveUpTo(rest, 1);
    return true;
}

/// Most names and values are so short that calling `memchr` takes longer.
void XMLAttributes::SkipTo(char stop) {
    std::size_t end = 0;
    while (end < rest.size() && rest[end] != stop)
        ++end;
    rest.remove_prefix(end);
}

/// The text up to the next `stop`, cut and trimmed.
std::string_view XMLAttributes::Take(char stop) {
    const char* start = rest.data();
    SkipTo(stop);
    const std::size_t length = static_cast<std::size_t>(rest.data() - start);
    return TrimXMLText({start, std::min(length, longestText)});
}

XMLDocTypeItems::XMLDocTypeItems(std::string_view text) : length(0) {
    XMLStart kind = XMLStart::element;
    std::size_t at = text.find('<');
    while (at != npos && (AfterXMLStart(text, at, kind) == at || kind != XMLStart::docType))
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
