#include "utilities/base/MultibyteText.h"
#include "utilities/text/strings/StringFunctions.h"

#include <cstring>

namespace {

constexpr std::size_t longestTrimmed = 2047;

template <class Char>
bool IsSpace(Char c, bool alsoLineBreaks) {
    return c == ' ' || (alsoLineBreaks && (c == '\r' || c == '\n'));
}

template <class Char>
std::size_t Length(const Char* text) {
    std::size_t length = 0;
    while (text[length] != 0)
        ++length;
    return length;
}

template <class Char>
void RemoveLeading(Char* text, bool alsoLineBreaks) {
    if (text == nullptr)
        return;
    const Char* start = text;
    while (IsSpace(*start, alsoLineBreaks))
        ++start;
    if (start != text)
        std::memmove(text, start, (Length(start) + 1) * sizeof(Char));
}

template <class Char>
void RemoveTrailing(Char* text, bool alsoLineBreaks) {
    if (text == nullptr)
        return;
    for (std::size_t end = Length(text); end > 0 && IsSpace(text[end - 1], alsoLineBreaks); --end)
        text[end - 1] = 0;
}

bool IsTrimmedWhitespace(char c) {
    return c == ' ' || c == '\t' || c == '\n';
}

/// Writes what [from, to) holds; true when that is something.
bool StoreTrimmed(const char* from, const char* to, char* destination) {
    const std::size_t length = static_cast<std::size_t>(to - from);
    std::memmove(destination, from, length);
    destination[length] = '\0';
    return length > 0;
}

} // namespace

void RemoveLeadingSpacesA(char* text, bool alsoLineBreaks) {
    RemoveLeading(text, alsoLineBreaks);
}

void RemoveLeadingSpacesW(wchar_t* text, bool alsoLineBreaks) {
    RemoveLeading(text, alsoLineBreaks);
}

void RemoveTrailingSpacesA(char* text, bool alsoLineBreaks) {
    RemoveTrailing(text, alsoLineBreaks);
}

void RemoveTrailingSpacesW(wchar_t* text, bool alsoLineBreaks) {
    RemoveTrailing(text, alsoLineBreaks);
}

void RemoveSpacesA(char* text, bool alsoLineBreaks) {
    RemoveLeading(text, alsoLineBreaks);
    RemoveTrailing(text, alsoLineBreaks);
}

void RemoveSpacesW(wchar_t* text, bool alsoLineBreaks) {
    RemoveLeading(text, alsoLineBreaks);
    RemoveTrailing(text, alsoLineBreaks);
}

bool TrimWhitespace(const char* source, char* destination) {
    if (destination == nullptr)
        return false;
    if (source == nullptr)
        source = "";
    const char* end = source + strnlen(source, longestTrimmed);
    while (source < end && IsTrimmedWhitespace(*source))
        ++source;
    while (source < end && IsTrimmedWhitespace(end[-1]))
        --end;
    return StoreTrimmed(source, end, destination);
}

bool TrimChar(char c, const char* source, char* destination, int maxCount) {
    if (destination == nullptr)
        return false;
    if (source == nullptr)
        source = "";
    const char* end = source + strnlen(source, longestTrimmed);
    const vtr::CharacterSteps steps;
    const auto isC = [&](const char* p) {
        return p < end && *p == c && steps.Length(p, static_cast<std::size_t>(end - p)) == 1;
    };
    for (int removed = 0; removed < maxCount && isC(source); ++removed)
        ++source;

    // Only a walk from the start tells a character `c` from a trail byte of the same value.
    const char* runStart = end;
    for (const char* p = source; p < end; p += steps.Length(p, static_cast<std::size_t>(end - p))) {
        if (!isC(p))
            runStart = end;
        else if (runStart == end)
            runStart = p;
    }
    for (int removed = 0; removed < maxCount && end > runStart; ++removed)
        --end;
    return StoreTrimmed(source, end, destination);
}
