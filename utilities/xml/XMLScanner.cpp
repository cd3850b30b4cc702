#include "utilities/xml/XMLScanner.h"

#include "utilities/base/ByteSearch.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace vtr {

namespace {

constexpr std::size_t npos = std::string_view::npos;

using ByteSet = std::array<bool, 256>;

constexpr ByteSet MakeSet(std::initializer_list<char> bytes) {
    ByteSet set{};
    for (const char c : bytes)
        set[static_cast<unsigned char>(c)] = true;
    return set;
}
constexpr ByteSet mattersInTags = MakeSet({'"', '\'', '>'});
constexpr ByteSet endsPlainNames = MakeSet({' ', '=', '"', '\''});

/// `token`, in upper case, fits with a byte to spare. Multibyte characters never compare equal to
/// ASCII ones, so folding ASCII suffices.
bool BeginsWith(std::string_view text, std::string_view token) {
    if (text.size() <= token.size())
        return false;
    for (std::size_t i = 0; i < token.size(); ++i) {
        const char c = text[i];
        if ((c >= 'a' && c <= 'z' ? c - ('a' - 'A') : c) != token[i])
            return false;
    }
    return true;
}

/// The first space or equals sign outside quotes.
std::size_t FindFieldMark(std::string_view field) {
    bool doubleQuoted = false;
    bool singleQuoted = false;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const char c = field[i];
        if (c == '"')
            doubleQuoted = !doubleQuoted;
        else if (c == '\'')
            singleQuoted = !singleQuoted;
        else if ((c == ' ' || c == '=') && !doubleQuoted && !singleQuoted)
            return i;
    }
    return npos;
}

constexpr std::size_t longestWord = 4094;
constexpr std::size_t longestName = 4095;

/// Reads most fields: nothing before the first space but a name. False for others.
bool ReadPlainField(std::string_view field, XMLToken& token) {
    std::size_t end = 0;
    while (end < field.size() && !endsPlainNames[static_cast<unsigned char>(field[end])])
        ++end;
    if (end == 0 || (end < field.size() && field[end] != ' '))
        return false;
    token.name = field.substr(0, std::min(end, longestWord));
    token.hasMoreFields = end < field.size() && field.find_last_not_of(' ') > end;
    if (!token.hasMoreFields)
        token.name = TrimXMLText(token.name);
    return true;
}

/// Reads the first word of what stands between the tokens. A field that is as a whole one name,
/// equals sign and quoted value has that name; it is left as it is when a quote is missing.
void ReadField(std::string_view field, XMLToken& token) {
    if (ReadPlainField(field, token))
        return;
    const std::size_t wordStart = std::min(field.find_first_not_of(' '), field.size());
    const std::size_t wordEnd = std::min(field.find(' ', wordStart), field.size());
    token.name = field.substr(0, std::min(wordEnd, longestWord));
    const std::size_t mark = FindFieldMark(field);
    const bool atSpace = mark != npos && field[mark] == ' ';
    token.hasMoreFields = atSpace && wordStart < field.size() && field.find_last_not_of(' ') > mark;
    if (token.hasMoreFields)
        return;
    if (mark != npos && mark > 0 && !atSpace) {
        const std::size_t open = field.find_first_of("\"'", mark + 1);
        if (open == npos || field.find(field[open], open + 1) == npos)
            return;
        if (mark <= longestName)
            token.name = field.substr(0, mark);
    }
    token.name = TrimXMLText(token.name);
}

} // namespace

std::size_t AfterXMLStart(std::string_view text, std::size_t at, XMLStart& kind) {
    const std::string_view rest = text.substr(at);
    if (rest.size() < 2 || rest[0] != '<')
        return at;
    if (rest.size() > 2 && rest[1] == '?') {
        kind = XMLStart::declaration;
        return at + 2;
    }
    if (rest.size() > 2 && rest[1] == '/') {
        kind = XMLStart::closing;
        return at + 2;
    }
    if (BeginsWith(rest, docTypeStart)) {
        kind = XMLStart::docType;
        return at + docTypeStart.size();
    }
    kind = XMLStart::element;
    return at + 1;
}

XMLEndPlace FindXMLEnd(std::string_view text, std::size_t from, bool anyQuote) {
    bool doubleQuoted = false;
    bool singleQuoted = false;
    bool apostrophe = false;
    for (std::size_t i = from; i < text.size(); ++i) {
        const char c = text[i];
        if (!mattersInTags[static_cast<unsigned char>(c)])
            continue;
        if (c == '"') {
            doubleQuoted = !doubleQuoted;
        } else if (c == '\'') {
            singleQuoted = anyQuote && !singleQuoted;
            apostrophe = true;
        } else if (!doubleQuoted && !singleQuoted) {
            const char before = i > from ? text[i - 1] : '\0';
            if (before == '?')
                return {i - 1, XMLEnd::declaration, apostrophe};
            if (before == '/')
                return {i - 1, XMLEnd::closed, apostrophe};
            return {i, XMLEnd::open, apostrophe};
        }
    }
    return {npos, XMLEnd::open, apostrophe};
}

std::string_view TrimXMLText(std::string_view text) {
    const auto isTrimmed = [](char c) { return c == ' ' || c == '\r' || c == '\n'; };
    while (!text.empty() && isTrimmed(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isTrimmed(text.back()))
        text.remove_suffix(1);
    return text;
}

std::size_t XMLScanner::AfterComment(std::size_t at) const {
    static constexpr std::string_view start = "<!--";
    static constexpr std::string_view end = "-->";
    // Both are seen only with a byte to spare.
    if (!BeginsWith(text.substr(at), start))
        return at;
    const std::size_t close = text.substr(0, text.size() - 1).find(end, at + start.size());
    return close == npos ? npos : close + end.size();
}

bool XMLScanner::Next(std::size_t from, XMLToken& token) const {
    token.afterComment = false;
    std::size_t afterStart = 0;
    const char* const textEnd = text.data() + text.size();
    for (std::size_t at = from;;) {
        const char* bracket = FindByte(text.data() + at, textEnd, '<');
        if (bracket == nullptr)
            return false;
        at = static_cast<std::size_t>(bracket - text.data());
        const std::size_t afterComment = AfterComment(at);
        if (afterComment == npos)
            return false;
        token.start = at;
        afterStart = AfterXMLStart(text, at, token.startKind);
        if (afterComment == at && afterStart != at)
            break;
        token.afterComment = token.afterComment || afterComment != at;
        at = afterComment != at ? afterComment : at + 1;
    }
    const XMLEndPlace end = FindXMLEnd(text, afterStart, /*anyQuote=*/true);
    if (end.at == npos)
        return false;
    token.endKind = end.kind;
    token.end = end.at + (end.kind == XMLEnd::open ? 1 : 2);
    token.inside = text.substr(afterStart, end.at - afterStart);
    token.hasApostrophe = end.hasApostrophe;
    ReadField(token.inside, token);
    return true;
}

} // namespace vtr
