#include "utilities/text/ini/IniParser.h"

#include "utilities/text/ini/IniInternals.h"
#include "utilities/text/strings/StringFunctions.h"

#include <algorithm>
#include <cstring>

namespace vtr {

namespace {

/// Keys and values this long are refused, trimmed or not.
constexpr unsigned longestText = 8191;

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

/// Stored texts end at a zero byte.
const char* EndAtZero(const char* begin, const char* end) {
    const void* zero = std::memchr(begin, 0, static_cast<std::size_t>(end - begin));
    return zero != nullptr ? static_cast<const char*>(zero) : end;
}

} // namespace

IniParser::IniParser(CIniFileReader& target, const char* source, unsigned size)
    : document(target), sections(Internals<CIniFileReader>::Sections(target)), text(source),
      length(size), at(0), unnamed(nullptr), current(nullptr), pendingKey{source, source},
      quoted(false), innerQuotes(0) {}

bool IniParser::Run() {
    unnamed = Internals<CIniFileReader>::AddSection(document, "");
    State state = unnamed != nullptr ? State::lineStart : State::failed;
    while (state != State::done && state != State::failed) {
        switch (state) {
        case State::lineStart:
            state = LineStart();
            break;
        case State::skipLine:
            state = SkipLine();
            break;
        case State::header:
            state = Header();
            break;
        case State::key:
            state = Key();
            break;
        case State::valueStart:
            state = ValueStart();
            break;
        case State::value:
            state = Value();
            break;
        case State::done:
        case State::failed:
            break;
        }
    }
    RemoveEmptySections();
    return state == State::done;
}

IniParser::State IniParser::LineStart() {
    SkipBlanks();
    if (AtEnd())
        return State::done;
    if (text[at] == ';')
        return State::skipLine;
    if (text[at] != '[')
        return State::key;
    ++at;
    return State::header;
}

IniParser::State IniParser::SkipLine() {
    while (!AtEnd() && !AtLineEnd())
        ++at;
    while (!AtEnd() && AtLineEnd())
        ++at;
    return AtEnd() ? State::done : State::lineStart;
}

/// Line ends are characters of the name like any other: a header that is not closed takes the lines
/// up to the next "]".
IniParser::State IniParser::Header() {
    char name[Internals<CIniSection>::nameSize] = "";
    unsigned nameLength = 0;
    while (!AtEnd() && text[at] != ']') {
        for (std::size_t bytes = steps.Length(text + at, length - at); bytes > 0; --bytes, ++at) {
            if (nameLength < sizeof name - 1 && text[at] != '\0')
                name[nameLength++] = text[at];
        }
    }
    if (AtEnd())
        return State::done;
    ++at;
    if (nameLength == 0) {
        current = nullptr;
        return State::skipLine;
    }
    current = SectionForHeader();
    if (current == nullptr)
        return State::failed;
    current->SetName(name);
    return ScanForParents(text + at, text + length, *current) ? State::skipLine : State::failed;
}

bool IniParser::ScanForParents(const char* begin, const char* end, CIniSection& section) {
    enum class State { waiting, armed, inName };
    State state = State::waiting;
    char name[512];
    std::size_t nameLength = 0;
    const CharacterSteps steps;
    for (const char* p = begin; p < end && *p != '\r' && *p != '\n';) {
        const std::size_t bytes = steps.Length(p, static_cast<std::size_t>(end - p));
        if (state == State::waiting) {
            if (*p == ':')
                state = State::armed;
        } else if (state == State::armed) {
            if (*p == '[') {
                state = State::inName;
                nameLength = 0;
            }
        } else if (*p == ']') {
            name[nameLength] = '\0';
            RemoveTrailingSpacesA(name, /*alsoLineBreaks=*/false);
            const int parents = section.NumParents();
            section.AddParent(name);
            if (name[0] != '\0' && section.NumParents() == parents)
                return false;
            state = State::waiting;
        } else if ((*p != ' ' || nameLength > 0) && nameLength + bytes < sizeof name) {
            std::memcpy(name + nameLength, p, bytes);
            nameLength += bytes;
        }
        p += bytes;
    }
    return true;
}

template <class Predicate>
void IniParser::SkipTo(Predicate isEnd) {
    const unsigned limit = length - at > longestText ? at + longestText : length;
    unsigned i = at;
    if (steps.Multibyte()) {
        while (i < limit && !isEnd(text[i]))
            i += static_cast<unsigned>(steps.Length(text + i, length - i));
    } else {
        while (i < limit && !isEnd(text[i]))
            ++i;
    }
    at = i;
}

IniParser::State IniParser::Key() {
    const unsigned start = at;
    SkipTo([](char c) { return c == '=' || c == '\r' || c == '\n'; });
    if (IsTooLong(start))
        return State::failed;
    if (AtEnd())
        return State::done;
    if (AtLineEnd())
        return State::skipLine;
    pendingKey = {text + start, EndAtZero(text + start, text + at)};
    while (pendingKey.Length() > 0 && IsBlank(pendingKey.end[-1]))
        --pendingKey.end;
    ++at;
    return State::valueStart;
}

IniParser::State IniParser::ValueStart() {
    SkipBlanks();
    if (AtEnd() || AtLineEnd()) {
        const State next = AtEnd() ? State::done : State::skipLine;
        if (pendingKey.Length() == 0)
            return next;
        return StorePair({text, text}) == State::failed ? State::failed : next;
    }
    innerQuotes = 0;
    quoted = text[at] == '"' && EndsInQuote(text + at + 1, text + length, innerQuotes);
    if (quoted)
        ++at;
    return State::value;
}

bool IniParser::EndsInQuote(const char* begin, const char* end, int& innerQuotes) {
    bool quoteIsLast = false;
    for (const char* p = begin; p < end && *p != '\r' && *p != '\n'; ++p) {
        if (IsBlank(*p))
            continue;
        if (quoteIsLast)
            ++innerQuotes;
        quoteIsLast = *p == '"';
    }
    return quoteIsLast;
}

/// A ";" ends every value, quoted or not, so no value can hold one.
IniParser::State IniParser::Value() {
    const unsigned start = at;
    SkipTo([this](char c) {
        return c == ';' || c == '\r' || c == '\n' || (c == '"' && quoted && innerQuotes-- == 0);
    });
    if (pendingKey.Length() == 0 || IsTooLong(start))
        return State::failed;
    Slice value{text + start, EndAtZero(text + start, text + at)};
    while (!quoted && value.Length() > 0 && value.end[-1] == ' ')
        --value.end;
    return StorePair(value);
}

void IniParser::SkipBlanks() {
    while (!AtEnd() && IsBlank(text[at]))
        ++at;
}

bool IniParser::IsTooLong(unsigned start) const {
    return at - start >= longestText;
}

CIniSection* IniParser::SectionForHeader() {
    CIniSection* last = sections[sections.Count() - 1];
    if (last == unnamed || last->NumValues() > 0)
        return Internals<CIniFileReader>::AddSection(document, "");
    last->RemoveParents();
    return last;
}

IniParser::State IniParser::StorePair(Slice value) {
    CIniValue* pair = Internals<CIniValue>::Create(pendingKey.begin, pendingKey.Length(),
                                                   value.begin, value.Length());
    if (pair == nullptr)
        return State::failed;
    char* key = Internals<CIniValue>::Key(*pair);
    std::replace(key, key + pendingKey.Length(), '\t', ' ');
    CIniSection* section = current != nullptr ? current : unnamed;
    if (!section->AddValue(pair)) {
        delete pair;
        return State::failed;
    }
    return State::skipLine;
}

void IniParser::RemoveEmptySections() {
    sections.RemoveIf([](const CIniSection* section) { return section->NumValues() == 0; },
                      [](CIniSection* section) { delete section; });
}

} // namespace vtr
