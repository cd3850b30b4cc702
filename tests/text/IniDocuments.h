#ifndef VTRUTILS_TESTS_TEXT_INIDOCUMENTS_H
#define VTRUTILS_TESTS_TEXT_INIDOCUMENTS_H

#include "utilities/text/IniFileReader.h"

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A document as plain data, for comparing.
struct IniSectionText {
    std::string name;
    std::vector<std::pair<std::string, std::string>> pairs;
    bool operator==(const IniSectionText&) const = default;
};
using IniText = std::vector<IniSectionText>;

/// `{A: k=v; l=} {B: ...}`, with null values shown as "".
inline std::string Shown(const IniText& sections) {
    std::string shown;
    for (const IniSectionText& section : sections) {
        shown += "{" + section.name + ":";
        for (const auto& [key, value] : section.pairs)
            shown += " " + key + "=" + value + ";";
        shown += "}";
    }
    return shown;
}

inline void PrintTo(const IniText& sections, std::ostream* stream) {
    *stream << Shown(sections);
}

inline IniText Content(CIniFileReader& document) {
    IniText sections;
    for (int s = 0; s < static_cast<int>(document.NumSections()); ++s) {
        IniSectionText section{document.SectionName(static_cast<unsigned>(s)), {}};
        for (int v = 0; v < document.GetNumValues(s); ++v) {
            const CIniValue* pair = document.GetValue(s, v);
            section.pairs.emplace_back(pair->Key() != nullptr ? pair->Key() : "",
                                       pair->Value() != nullptr ? pair->Value() : "");
        }
        sections.push_back(std::move(section));
    }
    return sections;
}

inline bool Load(CIniFileReader& document, std::string_view text, bool sort = false) {
    return document.InitFromBuffer(reinterpret_cast<const unsigned char*>(text.data()),
                                   static_cast<unsigned>(text.size()), sort);
}

inline std::string Get(const CIniFileReader& document, const char* section, const char* key,
                       const char* defaultValue = "(none)") {
    char buffer[1024];
    document.GetString(section, key, defaultValue, buffer, sizeof buffer);
    return buffer;
}

#endif
