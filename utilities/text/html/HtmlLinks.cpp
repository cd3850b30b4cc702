#include "utilities/text/html/HtmlText.h"

#include "common/Require.h"
#include "utilities/base/MultibyteText.h"

#include <cstring>
#include <string_view>

namespace {

/// Collects text in a buffer of fixed size and drops what does not fit.
class Output {
public:
    /// Requires: size > 0.
    Output(char* buffer, std::size_t size) : at(buffer), end(buffer + size - 1) {
        VTR_REQUIRE(size > 0);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() { *at = '\0'; }

    void Append(std::string_view text) {
        const std::size_t room = static_cast<std::size_t>(end - at);
        const std::size_t fitting = text.size() < room ? text.size() : room;
        std::memcpy(at, text.data(), fitting);
        at += fitting;
    }

    void AppendLink(std::string_view scheme, std::string_view address, std::string_view text) {
        Append("<a href=\"");
        Append(scheme);
        Append(address);
        Append("\">");
        Append(text);
        Append("</a>");
    }

private:
    char* at;
    char* end;
};

bool IsWhiteSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Looks into words character by character: "@" and letters can be the second byte of another.
class WordReader {
public:
    bool Contains(std::string_view word, std::string_view part) const {
        return Find(word, part) != word.npos;
    }

    bool IsMailAddress(std::string_view word) const {
        const std::size_t sign = Find(word, "@");
        if (sign == word.npos)
            return false;
        const std::size_t point = word.find('.', sign);
        return point != word.npos && point + 1 < word.size();
    }

private:
    std::size_t Find(std::string_view word, std::string_view part) const {
        if (!steps.Multibyte())
            return word.find(part);
        std::size_t at = 0;
        while (at < word.size() && !word.substr(at).starts_with(part))
            at += steps.Length(word.data() + at, word.size() - at);
        return at < word.size() ? at : word.npos;
    }

    vtr::CharacterSteps steps;
};

void AppendWord(Output& out, std::string_view word, const WordReader& reader) {
    static constexpr std::string_view mailScheme = "mailto:";
    static constexpr std::string_view webScheme = "http://";
    const auto has = [&](std::string_view part) { return reader.Contains(word, part); };
    const bool isLink = has("href");
    const bool isMail = !isLink && reader.IsMailAddress(word);
    if (isMail && word.starts_with(mailScheme))
        out.AppendLink("", word, word.substr(mailScheme.size()));
    else if (isMail)
        out.AppendLink(mailScheme, word, word);
    else if (!isLink && word.starts_with(webScheme))
        out.AppendLink("", word, word);
    else if (!isLink && (word.starts_with("www") || has(".com") || has(".edu") || has(".org")))
        out.AppendLink(webScheme, word, word);
    else
        out.Append(word);
}

/// How many bytes at the front are copied as they are: white space, or a tag.
std::size_t LengthToCopy(std::string_view text) {
    if (text.front() == '<') {
        const std::size_t close = text.find('>');
        return close == text.npos ? text.size() : close + 1;
    }
    std::size_t length = text.front() == '>' ? 1 : 0;
    while (length < text.size() && IsWhiteSpace(text[length]))
        ++length;
    return length;
}

} // namespace

void ParseForHTML(char* source, long length, char* destination, long destinationSize) {
    if (destination == nullptr || destinationSize < 1)
        return;
    const WordReader reader;
    Output out(destination, static_cast<std::size_t>(destinationSize));
    if (source == nullptr || length < 1)
        return;
    const std::size_t limit = static_cast<std::size_t>(length);
    const char* zero = static_cast<const char*>(std::memchr(source, '\0', limit));
    std::string_view text(source,
                          zero != nullptr ? static_cast<std::size_t>(zero - source) : limit);
    while (!text.empty()) {
        const std::size_t copied = LengthToCopy(text);
        out.Append(text.substr(0, copied));
        text.remove_prefix(copied);
        std::size_t word = 0;
        while (word < text.size() && !IsWhiteSpace(text[word]) && text[word] != '<' &&
               text[word] != '>')
            ++word;
        AppendWord(out, text.substr(0, word), reader);
        text.remove_prefix(word);
    }
}
