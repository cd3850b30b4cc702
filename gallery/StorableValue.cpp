#include "gallery/StorableValue.h"

namespace gallery {

namespace {

constexpr std::size_t longestValue = 8190;

/// Between quotes that the writer adds, everything is kept.
bool IsSavedInQuotes(const std::string& value) {
    return !value.empty() && (value.front() == ' ' || value.back() == ' ');
}

bool LooksQuoted(const std::string& value) {
    const std::size_t last = value.find_last_not_of(" \t");
    return value.front() == '"' && last > 0 && value[last] == '"';
}

} // namespace

const wchar_t* WhyNotStorable(const std::string& value) {
    if (value.find_first_of("\r\n") != std::string::npos)
        return L"A value cannot hold a line break.";
    if (value.find(';') != std::string::npos)
        return L"A value cannot hold \";\": a comment begins there.";
    if (value.size() > longestValue)
        return L"A value cannot be longer than 8,190 bytes.";
    if (value.empty() || IsSavedInQuotes(value))
        return nullptr;
    if (value.front() == '\t')
        return L"A value cannot begin with a tab: it would be lost.";
    if (LooksQuoted(value))
        return L"A value cannot begin and end with a double quote: both would be lost.";
    return nullptr;
}

} // namespace gallery
