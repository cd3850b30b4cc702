#include "utilities/text/html/HtmlText.h"

#include "utilities/base/OwnedText.h"
#include "utilities/text/strings/StringFunctions.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace {

/// What follows the "&", in lower case, and what it gives.
struct NamedReference {
    std::string_view name;
    char replacement;
};

constexpr NamedReference plainReferences[] = {{"amp;", '&'},  {"apos;", '\''}, {"quot;", '"'},
                                              {"nbsp;", ' '}, {"lt", '<'},     {"gt", '>'}};

/// The characters 161 to 255 of ISO-8859-1. Case is ignored, so that most letters stand for both.
constexpr std::string_view latinNames[] = {
    "iexcl;",  "cent;",   "pound;",  "curren;", "yen;",    "brvbar;", "sect;",   "uml;",
    "copy;",   "ordf;",   "laquo;",  "not;",    "shy;",    "reg;",    "macr;",   "deg;",
    "plusmn;", "sup2;",   "sup3;",   "acute;",  "micro;",  "para;",   "middot;", "cedil;",
    "sup1;",   "ordm;",   "raquo;",  "frac14;", "frac12;", "frac34;", "iquest;", "agrave;",
    "aacute;", "acirc;",  "atilde;", "auml;",   "aring;",  "aelig;",  "ccedil;", "egrave;",
    "eacute;", "ecirc;",  "euml;",   "igrave;", "iacute;", "icirc;",  "iuml;",   "eth;",
    "ntilde;", "ograve;", "oacute;", "ocirc;",  "otilde;", "ouml;",   "times;",  "oslash;",
    "ugrave;", "uacute;", "ucirc;",  "uuml;",   "yacute;", "thorn;",  "szlig;",  "divide;"};
constexpr NamedReference lastReference = {"yuml;", '\xFF'};

constexpr std::size_t longestName = 7;

/// The first bytes of a name as one number, for comparing many names quickly.
struct Key {
    std::uint64_t bytes;
    std::uint64_t mask;
};

constexpr Key MakeKey(std::string_view name) {
    Key key{0, 0};
    for (std::size_t i = 0; i < name.size(); ++i) {
        key.bytes |= std::uint64_t{static_cast<unsigned char>(name[i])} << 8 * i;
        key.mask |= std::uint64_t{0xFF} << 8 * i;
    }
    return key;
}

constexpr std::size_t plainCount = std::size(plainReferences);
constexpr std::size_t referenceCount = plainCount + std::size(latinNames) + 1;

constexpr NamedReference ReferenceAt(std::size_t index) {
    if (index < plainCount)
        return plainReferences[index];
    if (index + 1 < referenceCount)
        return {latinNames[index - plainCount], '?'};
    return lastReference;
}

constexpr std::array<Key, referenceCount> MakeKeys() {
    std::array<Key, referenceCount> keys{};
    for (std::size_t i = 0; i < referenceCount; ++i)
        keys[i] = MakeKey(ReferenceAt(i).name);
    return keys;
}

constexpr std::array<Key, referenceCount> keys = MakeKeys();

/// How much of the text a replacement stands for; 0: the text is not a reference.
struct Decoded {
    std::size_t length;
    char replacement;
};

constexpr Decoded notDecoded{0, '\0'};

Decoded DecodeNumber(const char* at, const char* end) {
    static constexpr std::size_t mostDigits = 15;
    const bool hexadecimal = end - at > 2 && at[2] == 'x';
    const char* first = at + (hexadecimal ? 3 : 2);
    char digits[mostDigits + 1];
    std::size_t count = 0;
    std::uint64_t value = 0;
    const char* p = first;
    for (; p < end && (hexadecimal ? IsHexCharacter(*p) : *p >= '0' && *p <= '9'); ++p) {
        if (count == mostDigits)
            return notDecoded;
        digits[count++] = *p;
        value = value * 10 + static_cast<unsigned>(*p - '0');
    }
    if (count == 0 || p == end || *p != ';')
        return notDecoded;
    digits[count] = '\0';
    if (hexadecimal)
        value = static_cast<std::uint64_t>(HexStringToInt(digits));
    constexpr std::uint64_t byteValues = 256;
    return {static_cast<std::size_t>(p + 1 - at),
            value < byteValues ? static_cast<char>(value) : '?'};
}

Decoded DecodeName(const char* at, const char* end) {
    std::uint64_t text = 0;
    const char* name = at + 1;
    for (std::size_t i = 0; i < longestName && name + i < end; ++i) {
        const char c = name[i];
        const char lower = static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
        text |= std::uint64_t{static_cast<unsigned char>(lower)} << 8 * i;
    }
    for (std::size_t i = 0; i < referenceCount; ++i) {
        if ((text & keys[i].mask) == keys[i].bytes)
            return {ReferenceAt(i).name.size() + 1, ReferenceAt(i).replacement};
    }
    return notDecoded;
}

/// `at` is at a "&" or "%".
Decoded Decode(const char* at, const char* end) {
    if (*at == '%')
        return end - at >= 3 && at[1] == '2' && at[2] == '0' ? Decoded{3, ' '} : notDecoded;
    return end - at > 1 && at[1] == '#' ? DecodeNumber(at, end) : DecodeName(at, end);
}

} // namespace

void DeHTMLifyString(char* text, unsigned size) {
    if (vtr::IsEmptyText(text) || size < 2)
        return;
    const char* end = text + std::strlen(text);
    const char* in = text;
    char* out = text;
    const char* p = text;
    for (;;) {
        while (p < end && *p != '&' && *p != '%')
            ++p;
        const Decoded decoded = p < end ? Decode(p, end) : notDecoded;
        if (p < end && decoded.length == 0) {
            ++p;
            continue;
        }
        const std::size_t before = static_cast<std::size_t>(p - in);
        if (out != in)
            std::memmove(out, in, before);
        out += before;
        if (p == end)
            break;
        *out++ = decoded.replacement;
        p += decoded.length;
        in = p;
    }
    *out = '\0';
}
