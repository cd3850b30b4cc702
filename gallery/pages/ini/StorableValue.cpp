#include "gallery/pages/ini/StorableValue.h"

#include <cstring>

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

const char* WhyNotStorable(const std::string& value) {
    if (value.find_first_of("\r\n") != std::string::npos)
        return "ValueWithLineBreak";
    if (value.find(';') != std::string::npos)
        return "ValueWithComment";
    if (value.size() > longestValue)
        return "ValueTooLong";
    if (value.empty() || IsSavedInQuotes(value))
        return nullptr;
    if (value.front() == '\t')
        return "ValueWithTab";
    if (LooksQuoted(value))
        return "ValueInQuotes";
    return nullptr;
}

const char* WhyNotStorableKey(const std::string& key) {
    constexpr char blanks[] = " \t";
    if (key.empty() || key.size() > longestValue)
        return "KeyEmptyOrLong";
    const bool blankAtEnds =
        std::strchr(blanks, key.front()) != nullptr || std::strchr(blanks, key.back()) != nullptr;
    const bool other = key.front() == ';' || key.front() == '[';
    return other || blankAtEnds || key.find_first_of("=\r\n\t") != std::string::npos
               ? "KeyNotStorable"
               : nullptr;
}

const char* WhyNotStorableName(const std::string& name) {
    constexpr std::size_t longestName = 63;
    if (name.empty() || name.size() > longestName)
        return "NameEmptyOrLong";
    return name.find_first_of("]\r\n") != std::string::npos ? "NameNotStorable" : nullptr;
}

} // namespace gallery
