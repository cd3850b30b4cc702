#include "utilities/base/PathText.h"
#include "utilities/base/ReservedCharacters.h"
#include "utilities/system/files/FileFunctions.h"

#include <cstring>

namespace {

constexpr std::size_t longestIsoName = 30;
constexpr std::size_t longestJolietName = 31;

/// Copies `in`; a name with an extension that has `longest` bytes or more is cut in front of the
/// extension to that length, which is then true.
bool CopyShortened(const char* in, char* out, std::size_t longest, bool isPath) {
    const std::size_t length = std::strlen(in);
    const char* extension = std::strrchr(in, '.');
    if (isPath || extension == nullptr || length < longest) {
        std::memmove(out, in, length + 1);
        return false;
    }
    const std::size_t whole = length - static_cast<std::size_t>(extension - in);
    const std::size_t kept = whole < longest ? whole : longest;
    std::memmove(out, in, longest - kept);
    std::memmove(out + (longest - kept), extension, kept);
    out[longest] = '\0';
    return true;
}

/// Replaces what `isAllowed` does not accept, which no lead byte is. Both bytes of a character go:
/// the second alone would be another one, and might be a backslash.
template <class Predicate>
bool ReplaceOthers(const vtr::NameSteps& steps, char* text, char replacement, Predicate isAllowed) {
    bool changed = false;
    while (*text != '\0') {
        const std::size_t length = steps.Length(text);
        if (!isAllowed(*text)) {
            std::memset(text, replacement, length);
            changed = true;
        }
        text += length;
    }
    return changed;
}

char UpperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

bool IsIsoCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '_';
}

bool IsJolietCharacter(char c) {
    constexpr char belowAt[] = "\x1F !\"#$%&'()+,-./0123456789<=>";
    return (c >= 0x40 && static_cast<signed char>(c) > 0) || std::strchr(belowAt, c) != nullptr;
}

} // namespace

bool MakeISO9660FriendlyName(const char* in, char* out, bool isPath, char replacement) {
    if (in == nullptr || out == nullptr)
        return false;
    const vtr::NameSteps steps(in);
    const bool shortened = CopyShortened(in, out, longestIsoName, isPath);
    for (char* p = out; *p != '\0'; p += steps.Length(p))
        *p = UpperCase(*p);
    const bool replaced = ReplaceOthers(steps, out, replacement, [isPath](char c) {
        return IsIsoCharacter(c) || (isPath && IsSeparator(c));
    });
    return shortened || replaced;
}

bool MakeJolietFriendlyName(const char* in, char* out, bool isPath, char replacement) {
    if (in == nullptr || out == nullptr)
        return false;
    const vtr::NameSteps steps(in);
    const bool shortened = CopyShortened(in, out, longestJolietName, isPath);
    const bool replaced = ReplaceOthers(steps, out, replacement, [isPath](char c) {
        return IsJolietCharacter(c) && (isPath || !IsSeparator(c));
    });
    return shortened || replaced;
}

void ValidateFileName(const char* in, char* out, char replacement) {
    if (in == nullptr || out == nullptr)
        return;
    std::memmove(out, in, std::strlen(in) + 1);
    vtr::ReplaceReservedCharacters(out, replacement);
}
