#include "utilities/base/MultibyteText.h"
#include "utilities/text/strings/StringFunctions.h"

#include <cctype>
#include <cstring>
#include <cwctype>
#include <mbstring.h>

namespace {

class NarrowReader {
public:
    explicit NarrowReader(const char* text) : next(text) {}

    /// The code of the next character, 0 at the end.
    unsigned Read() {
        unsigned code = 0;
        for (std::size_t bytes = steps.Length(next); bytes > 0 && *next != '\0'; --bytes)
            code = code << 8 | static_cast<unsigned char>(*next++);
        return code;
    }

    static bool IsDigit(unsigned code) { return _ismbcdigit(code) != 0; }

private:
    vtr::CharacterSteps steps;
    const char* next;
};

class WideReader {
public:
    explicit WideReader(const wchar_t* text) : next(text) {}
    unsigned Read() { return *next == L'\0' ? 0u : static_cast<unsigned>(*next++); }
    static bool IsDigit(unsigned code) { return std::iswdigit(static_cast<wint_t>(code)) != 0; }

private:
    const wchar_t* next;
};

template <class Reader>
bool IsNumber(Reader reader, bool pointAllowed) {
    bool digits = false;
    bool first = true;
    for (unsigned c = reader.Read(); c != 0; c = reader.Read(), first = false) {
        if (c == '.' && pointAllowed)
            pointAllowed = false;
        else if (Reader::IsDigit(c))
            digits = true;
        else if (c != '-' || !first)
            return false;
    }
    return digits;
}

/// 0 to 15, or -1.
int HexDigit(char ch) {
    if (ch >= '0' && ch <= '9')
        return ch - '0';
    if (ch >= 'a' && ch <= 'f')
        return ch - 'a' + 10;
    if (ch >= 'A' && ch <= 'F')
        return ch - 'A' + 10;
    return -1;
}

} // namespace

bool StringIsNumericA(const char* text) {
    return text != nullptr && IsNumber(NarrowReader(text), /*pointAllowed=*/false);
}

bool StringIsNumericW(const wchar_t* text) {
    return text != nullptr && IsNumber(WideReader(text), /*pointAllowed=*/false);
}

bool StringIsFloatA(const char* text) {
    return text != nullptr && IsNumber(NarrowReader(text), /*pointAllowed=*/true);
}

bool StringIsFloatW(const wchar_t* text) {
    return text != nullptr && IsNumber(WideReader(text), /*pointAllowed=*/true);
}

int HexStringToInt(const char* text) {
    if (text == nullptr || *text == '\0')
        return -1;
    const std::size_t length = std::strlen(text);
    unsigned value = 0;
    for (std::size_t i = 0; i < length; ++i) {
        const int digit = HexDigit(text[i]);
        if (digit < 0)
            return -1;
        const unsigned fromEnd = static_cast<unsigned>(length - 1 - i);
        value += static_cast<unsigned>(digit) * (fromEnd == 0 ? 1 : fromEnd * 16);
    }
    return static_cast<int>(value);
}

bool IsHexCharacter(char ch) {
    return HexDigit(ch) >= 0;
}

void MakeLowerCase(char* text) {
    for (; text != nullptr && *text != '\0'; ++text)
        *text = static_cast<char>(std::tolower(static_cast<unsigned char>(*text)));
}

void MakeUpperCase(char* text) {
    for (; text != nullptr && *text != '\0'; ++text)
        *text = static_cast<char>(std::toupper(static_cast<unsigned char>(*text)));
}
