#include "utilities/text/StringFile.h"

#include "utilities/text/SameText.h"

#include <cstring>

namespace vtr {

namespace {

/// The same in every locale.
bool IsWhiteSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

bool StringFile::Open(const char* path) {
    if (!file.Read(path))
        return false;
    constexpr char endOfText = 0x1A;
    at = reinterpret_cast<const char*>(file.Data());
    const void* stop = std::memchr(at, endOfText, file.Size());
    end = stop != nullptr ? static_cast<const char*>(stop) : at + file.Size();
    return true;
}

const char* StringFile::Find(const char* key) {
    const char* text = nullptr;
    while (text == nullptr && NextLine())
        text = TextIfKeyIs(key);
    return text;
}

bool StringFile::NextLine() {
    const std::size_t left = static_cast<std::size_t>(end - at);
    const void* found = std::memchr(at, '\n', left < sizeof line ? left : sizeof line);
    const char* lineEnd = static_cast<const char*>(found);
    std::size_t length = lineEnd != nullptr ? static_cast<std::size_t>(lineEnd - at) : left;
    const bool crlf = lineEnd != nullptr && length > 0 && lineEnd[-1] == '\r';
    // Of the line end only its line feed counts for the length of a line.
    const bool whole = length + 1 - crlf < sizeof line;
    const char* next = at + length;
    if (whole) {
        next += lineEnd != nullptr ? 1 : 0;
        length -= crlf;
    } else {
        length = sizeof line - 1;
        next = at + length;
    }
    std::memcpy(line, at, length);
    line[length] = '\0';
    at = next;
    return left > 0;
}

const char* StringFile::TextIfKeyIs(const char* key) {
    if (line[0] == '[' || line[0] == ';')
        return nullptr;
    char* equals = std::strchr(line, '=');
    if (equals == nullptr)
        return nullptr;
    char* keyEnd = equals;
    while (keyEnd > line && IsWhiteSpace(keyEnd[-1]))
        --keyEnd;
    *keyEnd = '\0';
    if (!SameText(line, key))
        return nullptr;
    const char* text = equals + 1;
    while (IsWhiteSpace(*text))
        ++text;
    return text;
}

} // namespace vtr
