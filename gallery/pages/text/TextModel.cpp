#include "gallery/pages/text/TextModel.h"

#include "gallery/text/Text.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/text/html/HtmlText.h"

#include <climits>
#include <cstdlib>
#include <optional>

namespace gallery {

namespace {

/// A copy that the functions may write to, with its terminator.
using Buffer = std::vector<char>;

Buffer BufferOf(const std::string& text) {
    return {text.c_str(), text.c_str() + text.size() + 1};
}

std::wstring Decoded(const std::string& text) {
    Buffer buffer = BufferOf(text);
    DeHTMLifyString(buffer.data(), static_cast<unsigned>(buffer.size()));
    return Widen(buffer.data());
}

std::wstring WithLinks(const std::string& text) {
    Buffer source = BufferOf(text);
    // A link takes 31 bytes beside its word twice, and no word below three bytes becomes one.
    Buffer result(12 * source.size() + 64);
    ParseForHTML(source.data(), static_cast<long>(text.size()), result.data(),
                 static_cast<long>(result.size()));
    return Widen(result.data());
}

/// Of the schemes that links are made with: a link that the text had may run a program.
std::wstring FirstAddress(const std::wstring& withLinks) {
    const std::wstring mark = L"<a href=\"";
    for (std::size_t at = withLinks.find(mark); at != std::wstring::npos;
         at = withLinks.find(mark, at + 1)) {
        const std::size_t begin = at + mark.size();
        const std::wstring address = withLinks.substr(begin, withLinks.find(L'"', begin) - begin);
        for (const wchar_t* scheme : {L"http://", L"https://", L"mailto:"}) {
            if (address.rfind(scheme, 0) == 0)
                return address;
        }
    }
    return {};
}

std::wstring WithCarriageReturns(const std::string& text) {
    Buffer result = BufferOf(text);
    ParseCarriageReturns(text.c_str(), result.data(), static_cast<long>(result.size()));
    return Widen(result.data());
}

/// Empty when there are no digits, other characters, or the number is above `most`.
std::optional<unsigned long> Number(const std::wstring& digits, unsigned long most) {
    unsigned long long number = 0;
    for (const wchar_t digit : digits) {
        number = number * 10 + (digit - L'0');
        if (digit < L'0' || digit > L'9' || number > most)
            return std::nullopt;
    }
    if (digits.empty())
        return std::nullopt;
    return static_cast<unsigned long>(number);
}

std::wstring Length(std::optional<unsigned long> milliseconds, bool showMilliseconds,
                    bool omitHours) {
    char text[18] = "";
    if (milliseconds)
        MakeLengthString(static_cast<long>(*milliseconds), text, showMilliseconds, omitHours);
    return Widen(text);
}

std::wstring Size(std::optional<unsigned long> bytes) {
    char text[11] = "";
    if (bytes)
        MakeFileSizeString(*bytes, text, sizeof text);
    return Widen(text);
}

} // namespace

MadeTexts TextsMadeOf(const TypedTexts& typed) {
    MadeTexts made;
    std::string text;
    made.textFits = Narrow(typed.text, text);
    Buffer words = BufferOf(text);
    made.offends = HasBadWord(words.data());
    const auto milliseconds = Number(typed.milliseconds, LONG_MAX);
    const auto bytes = Number(typed.bytes, ULONG_MAX);
    made.numbersFit = milliseconds && bytes;
    const wchar_t* length = L"MakeLengthString";
    made.rows = {
        {L"DeHTMLifyString", nullptr, Decoded(text)},
        {L"ParseForHTML", nullptr, WithLinks(text)},
        {L"ParseCarriageReturns", nullptr, WithCarriageReturns(text)},
        {length, nullptr, Length(milliseconds, false, false)},
        {length, "WithMilliseconds", Length(milliseconds, true, false)},
        {length, "WithoutHours", Length(milliseconds, false, true)},
        {length, "MillisecondsNoHours", Length(milliseconds, true, true)},
        {L"MakeFileSizeString", nullptr, Size(bytes)},
    };
    made.address = FirstAddress(made.rows[1].result);
    return made;
}

} // namespace gallery
