#include "utilities/text/language/StringFile.h"

#include "utilities/base/LanguageSteps.h"
#include "utilities/base/SameText.h"

#include <cstring>

namespace vtr {

namespace {

/// The same in every locale.
bool IsWhiteSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// As a character: in code page 1361 it may be the second byte of one, too.
bool HasEquals(const char* key) {
    if (std::strchr(key, '=') == nullptr)
        return false;
    const LanguageSteps steps;
    while (*key != '\0' && *key != '=')
        key += steps.Length(key);
    return *key != '\0';
}

} // namespace

bool StringFile::Start() {
    constexpr char endOfText = 0x1A;
    at = reinterpret_cast<const char*>(file.Data());
    const void* stop = std::memchr(at, endOfText, file.Size());
    end = stop != nullptr ? static_cast<const char*>(stop) : at + file.Size();
    return true;
}

const char* StringFile::Find(const char* key) {
    const std::size_t keyLength = std::strlen(key);
    // No line has such a key.
    if (HasEquals(key) || (keyLength > 0 && IsWhiteSpace(key[keyLength - 1])))
        return nullptr;
    const char* text = nullptr;
    while (text == nullptr && NextLine())
        text = TextIfKeyIs(key, keyLength);
    return text;
}

bool StringFile::NextLine() {
    const std::size_t left = static_cast<std::size_t>(end - at);
    const void* found = std::memchr(at, '\n', left < lineSize ? left : lineSize);
    const char* lineEnd = found != nullptr ? static_cast<const char*>(found) : end;
    line = at;
    length = static_cast<std::size_t>(lineEnd - line);
    at = found != nullptr ? lineEnd + 1 : end;
    if (found != nullptr && length > 0 && lineEnd[-1] == '\r')
        --length;
    if (length >= lineSize) {
        length = lineSize - 1;
        at = line + length;
    }
    return left > 0;
}

const char* StringFile::TextIfKeyIs(const char* key, std::size_t keyLength) {
    // Texts that are the same are equally long, which rules out most lines.
    std::size_t equals = keyLength;
    while (equals < length && IsWhiteSpace(line[equals]))
        ++equals;
    if (equals >= length || line[equals] != '=' || line[0] == '[' || line[0] == ';')
        return nullptr;
    std::memcpy(copy, line, length);
    copy[length] = '\0';
    copy[keyLength] = '\0';
    if (!SameText(copy, key))
        return nullptr;
    const char* text = copy + equals + 1;
    while (IsWhiteSpace(*text))
        ++text;
    return text;
}

} // namespace vtr
