#include "gallery/pages/online/WebText.h"

#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "utilities/text/html/HtmlText.h"

#include <cstring>
#include <windows.h>

namespace gallery {

namespace {

bool IsPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           (c != '\0' && std::strchr("-_.~", c) != nullptr);
}

/// Decoded references become text, and whatever stands between "<" and ">" goes.
std::string WithoutTags(const char* html) {
    std::string text;
    bool inTag = false;
    for (const char* c = html; *c != '\0'; ++c) {
        if (*c == '<')
            inTag = std::strchr(c, '>') != nullptr;
        if (!inTag)
            text += *c;
        else if (*c == '>')
            inTag = false;
    }
    DeHTMLifyString(text.data(), static_cast<unsigned>(text.size() + 1));
    return text.c_str();
}

} // namespace

std::string AddressValue(const std::wstring& text) {
    std::string utf8;
    Narrow(text, utf8, CP_UTF8);
    std::string value;
    for (const char c : utf8) {
        constexpr char digits[] = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(c);
        if (IsPlain(c))
            value += c;
        else
            value += {'%', digits[byte / 16], digits[byte % 16]};
    }
    return value;
}

std::wstring LineOfService(const char* utf8) {
    std::wstring line = Widen(utf8, CP_UTF8);
    for (wchar_t& c : line)
        c = c < L' ' ? L' ' : c;
    return line;
}

std::wstring LinesOfService(const char* utf8) {
    std::wstring lines;
    for (const wchar_t c : Widen(WithoutTags(utf8).c_str(), CP_UTF8)) {
        if (c == L'\n')
            lines += L"\r\n";
        else if (c >= L' ')
            lines += c;
    }
    return lines;
}

std::wstring LengthText(long milliseconds) {
    constexpr long hour = 3600000;
    char text[32] = "";
    MakeLengthString(milliseconds, text, /*showMilliseconds=*/0,
                     /*omitHours=*/milliseconds < hour ? 1 : 0);
    return Widen(text);
}

std::wstring RangeText(int first, int count, int total) {
    if (count == 0)
        return {};
    return Text("OnlineRange", {std::to_wstring(first), std::to_wstring(first + count - 1),
                                std::to_wstring(total)});
}

} // namespace gallery
